#pragma once

#include <exception>

namespace bw {

// The user has broken off what was under way. No RuntimeError, since it is no failure: nobody tells
// it or passes over it. Whoever has begun to change what is on show puts it back and lets it
// through; it ends at the event's handler.
class BrokenOff : public std::exception {
 public:
  const char* what() const noexcept override { return "Broken off by the user."; }
};

}  // namespace bw
