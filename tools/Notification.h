#pragma once

#include <string>

namespace bw {

// Shows a notification on the user's desktop, where there is one; otherwise does nothing.
void notify(const std::string& title, const std::string& text);

}  // namespace bw
