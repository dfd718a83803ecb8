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

// Does what may be broken off, and puts back what it has changed until then.
template <class Work, class PutBack>
auto orPutBack(Work work, PutBack putBack) {
  try {
    return work();
  } catch (const BrokenOff&) {
    putBack();
    throw;
  }
}

}  // namespace bw
