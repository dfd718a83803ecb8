#pragma once

#include <functional>
#include <utility>

#include "text/BrokenOff.h"

namespace bw {

// For as long as it lives, whatever reads from a database asks a few times a second, on our side
// and while the server works, whether the user breaks it off. Yes ends it with BrokenOff: nothing
// was read, and a transaction around it can only be rolled back. One at a time.
class BreakableReading {
 public:
  using Asked = std::function<bool()>;  // must not throw

  explicit BreakableReading(Asked isBrokenOff) : asked_(std::move(isBrokenOff)) {
    if (asked_) current_ = &asked_;
  }
  ~BreakableReading() { current_ = nullptr; }
  BreakableReading(const BreakableReading&) = delete;
  BreakableReading& operator=(const BreakableReading&) = delete;

  // Nothing while no reading may be broken off.
  static Asked* current() noexcept { return current_; }

 private:
  inline static Asked* current_ = nullptr;
  Asked asked_;
};

}  // namespace bw
