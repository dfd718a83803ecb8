#include "tests/forms/ModalScript.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <utility>

namespace bw {
namespace {

constexpr std::chrono::milliseconds kPoll{2};
constexpr std::chrono::seconds kDeadline{20};

// Nothing may be thrown through the toolkit's event loop.
void run(const ModalScript::Step& step, QWidget& window) {
  try {
    step(window);
  } catch (const std::exception& error) {
    ADD_FAILURE() << "in " << window.objectName().toStdString() << ": " << error.what();
    window.close();
  }
}

}  // namespace

ModalScript::ModalScript() {
  connect(&timer_, &QTimer::timeout, this, [this] { poll(); });
}

ModalScript::~ModalScript() {
  for (const auto& [window, step] : steps_) ADD_FAILURE() << "never came up: " << window;
}

void ModalScript::in(const std::string& window, Step step) {
  steps_.emplace_back(window, std::move(step));
  lastProgress_ = std::chrono::steady_clock::now();
  timer_.start(kPoll);
}

void ModalScript::poll() {
  QWidget* window = QApplication::activeModalWidget();
  if (steps_.empty() && window == nullptr) return timer_.stop();
  const bool isDue = !steps_.empty() && window != nullptr && window->isVisible() &&
                     window->objectName().toStdString() == steps_.front().first;
  if (!isDue) {
    if (std::chrono::steady_clock::now() - lastProgress_ > kDeadline) giveUp();
    return;
  }
  // Without a window manager nobody gives a window back its turn when the one above it closes.
  if (QApplication::activeWindow() != window) return window->activateWindow();
  lastProgress_ = std::chrono::steady_clock::now();
  Step step = std::move(steps_.front().second);
  steps_.pop_front();
  // In the window's own turn: a step that opens another window must not hold up this timer.
  QMetaObject::invokeMethod(
      window, [step = std::move(step), window] { run(step, *window); }, Qt::QueuedConnection);
}

void ModalScript::giveUp() {
  timer_.stop();
  QWidget* window = QApplication::activeModalWidget();
  ADD_FAILURE() << "stuck"
                << (window == nullptr ? std::string() : " in " + window->objectName().toStdString())
                << (steps_.empty() ? std::string() : ", waiting for " + steps_.front().first);
  steps_.clear();
  while (QWidget* open = QApplication::activeModalWidget()) {
    open->close();
    if (QApplication::activeModalWidget() == open) break;
  }
}

}  // namespace bw
