#pragma once

#include <QTimer>
#include <cstddef>
#include <functional>

namespace bw {

// Goes through the pages of a document in slices between events, so that the window stays alive
// however long the document is. A new walk ends the one under way.
class PageWalk {
 public:
  using Visit = std::function<bool(std::size_t page)>;  // from 1; false ends the walk

  PageWalk();

  // `finished` is called behind the last page, and when `visit` ended the walk.
  void start(std::size_t pages, Visit visit, std::function<void()> finished);
  void stop();
  bool active() const { return timer_.isActive(); }

 private:
  void goOn();

  QTimer timer_;
  std::size_t next_ = 1;
  std::size_t pages_ = 0;
  Visit visit_;
  std::function<void()> finished_;
};

}  // namespace bw
