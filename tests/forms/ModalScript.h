#pragma once

#include <QObject>
#include <QTimer>
#include <QWidget>
#include <chrono>
#include <deque>
#include <functional>
#include <string>

namespace bw {

// What is done in the modal windows that a test opens, in order: each step runs once, in the
// window of its name, when that window has come up. The window must be gone before a step for
// another name is due, unless that other one opens above it. A step that is not reached within the
// deadline closes all windows and fails the test, as do steps left over.
class ModalScript : public QObject {
 public:
  ModalScript();
  ~ModalScript() override;

  using Step = std::function<void(QWidget& window)>;
  void in(const std::string& window, Step step);

 private:
  void poll();
  void giveUp();

  std::deque<std::pair<std::string, Step>> steps_;  // by the window's name
  QTimer timer_;
  std::chrono::steady_clock::time_point lastProgress_;
};

}  // namespace bw
