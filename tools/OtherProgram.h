#pragma once

#include <string>
#include <vector>

namespace bw {

// Runs a program of the system, which is found by its name, and waits for it. What it says of
// errors goes where ours goes. True when it ends with 0; false otherwise, also when there is none.
bool runProgram(std::vector<std::string> command);

}  // namespace bw
