#pragma once

#include <string>

namespace bw {

// Required texts, shown to the user as they stand.
inline constexpr const char* kUpdateTouchedNothing = "U:IMPACTENT";
inline constexpr const char* kDeleteTouchedNothing = "U:IMPELIENT";

// A message with what the user can do about it below, for texts that tell of it by a code or in the
// words of the database. Others, and messages that have their advice already, come back as they
// are.
std::string withAdvice(const std::string& message);

// The same with an advice of the caller's; "" is none.
std::string withAdvice(const std::string& message, const std::string& advice);

}  // namespace bw
