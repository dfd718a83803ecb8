#pragma once

#include <string>

namespace bw {

// The statement that gives a server bw_fold(text), which means the same there as fold() does here.
std::string foldFunctionStatement();

}  // namespace bw
