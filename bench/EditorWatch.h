#pragma once

#include <QEvent>
#include <QObject>
#include <QTimer>
#include <chrono>
#include <stdexcept>

#include "controls/Dialog.h"

namespace bw::bench {

// Opens an editor and closes it when it has been painted. To be installed as a filter of the
// application's events.
class EditorWatch : public QObject {
 public:
  EditorWatch(const char* name, const Form& (*form)()) : name_(name), form_(form) {}

  // Milliseconds from the command to the painted dialog.
  double load() {
    painted_ = {};
    const auto begin = std::chrono::steady_clock::now();
    form_().showModal();
    if (painted_ < begin) throw std::runtime_error("The editor was not shown.");
    return std::chrono::duration<double, std::milli>(painted_ - begin).count();
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint && watched->objectName() == name_)
      QTimer::singleShot(0, watched, [this, watched] {
        painted_ = std::chrono::steady_clock::now();
        static_cast<Dialog*>(watched)->unload();
      });
    return false;
  }

 private:
  const char* name_;
  const Form& (*form_)();
  std::chrono::steady_clock::time_point painted_;
};

}  // namespace bw::bench
