#pragma once

#include <xcb/xcb.h>

#include <QAbstractNativeEventFilter>
#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <QWindow>
#include <chrono>
#include <cstddef>
#include <functional>
#include <vector>

namespace bw {

// What is typed while a window comes up or goes away waits for the one that takes keys next, in its
// order. The toolkit drops a key that comes to a window which another one blocks, or which has
// gone: of Insert, F9, Ctrl+Enter typed in a row the last one alone would meet the new window, and
// store what nobody meant. A filter of the events of X11, and of the application's for what becomes
// of them.
class TypedAhead : public QObject, public QAbstractNativeEventFilter {
 public:
  using Keys = std::vector<xcb_key_press_event_t>;
  // Sends keys to their windows, so that they come through this filter again, marked as sent.
  // The toolkit has begun with a key after `passing` at the latest: an input method may keep it.
  explicit TypedAhead(std::function<void(const Keys&)> send,
                      std::chrono::milliseconds passing = std::chrono::milliseconds{50});

  bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool keeps(const xcb_key_press_event_t& key);
  bool isBack(const xcb_key_press_event_t& key);
  void sendOn();

  std::function<void(const Keys&)> send_;
  Keys kept_;
  std::size_t returned_ = 0;  // of those, in front: sent to a window that could not take them
  std::size_t onTheirWay_ = 0;
  QElapsedTimer keptSince_;
  QElapsedTimer sentSince_;
  QTimer passing_;  // runs until the toolkit has begun with the key that was let through
};

// Installs one where the program runs under X11; on other displays nothing is known of such keys.
void keepTypedAhead();

}  // namespace bw
