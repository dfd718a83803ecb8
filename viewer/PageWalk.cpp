#include "viewer/PageWalk.h"

#include <QElapsedTimer>
#include <utility>

namespace bw {

namespace {

constexpr qint64 kSliceMilliseconds = 10;

}  // namespace

PageWalk::PageWalk() {
  timer_.setInterval(0);
  QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { goOn(); });
}

void PageWalk::start(std::size_t pages, Visit visit, std::function<void()> finished) {
  next_ = 1;
  pages_ = pages;
  visit_ = std::move(visit);
  finished_ = std::move(finished);
  timer_.start();
}

void PageWalk::stop() { timer_.stop(); }

void PageWalk::goOn() {
  QElapsedTimer clock;
  clock.start();
  while (next_ <= pages_ && visit_(next_)) {
    ++next_;
    if (clock.elapsed() >= kSliceMilliseconds) return;
  }
  stop();
  finished_();
}

}  // namespace bw
