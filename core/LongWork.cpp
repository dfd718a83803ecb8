#include "core/LongWork.h"

#include "core/Services.h"

namespace bw {

LongWork::LongWork(std::string text, std::int64_t total)
    : text_(std::move(text)), total_(total), next_(Clock::now() + services().patience) {}

LongWork::~LongWork() {
  if (told_) services().progress({text_, done_, total_, true});
}

void LongWork::step() {
  constexpr std::chrono::milliseconds kPause{50};
  ++done_;
  const Clock::time_point now = Clock::now();
  if (now < next_) return;
  told_ = true;
  services().progress({text_, done_, total_, false});
  next_ = Clock::now() + kPause;
}

}  // namespace bw
