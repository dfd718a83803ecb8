#pragma once

#include <QGuiApplication>

namespace bw {

// The pointer says that the program is at work, for as long as this lives. Not around a message.
class BusyCursor {
 public:
  BusyCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
  ~BusyCursor() { QGuiApplication::restoreOverrideCursor(); }
  BusyCursor(const BusyCursor&) = delete;
  BusyCursor& operator=(const BusyCursor&) = delete;
};

}  // namespace bw
