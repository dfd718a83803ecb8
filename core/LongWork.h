#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace bw {

// Work of many steps that may take long. Once it has taken half a second its progress is told to
// services().progress, some twenty times a second, and at last that it has ended; the window stays
// alive meanwhile. Work that is done sooner is not seen.
class LongWork {
 public:
  LongWork(std::string text, std::int64_t total);
  LongWork(const LongWork&) = delete;
  LongWork& operator=(const LongWork&) = delete;
  ~LongWork();

  void step();  // one more is done

 private:
  using Clock = std::chrono::steady_clock;

  std::string text_;
  std::int64_t done_ = 0;
  std::int64_t total_;
  Clock::time_point next_;
  bool told_ = false;
};

}  // namespace bw
