#pragma once

#include <QCoreApplication>
#include <QtGlobal>
#include <cstdlib>
#include <iostream>

namespace bw {

// A message handler for the time in which the application object is made. Without a display the
// toolkit would end the process by abort(), with words for developers. The application's name must
// be set before.
inline void sayThatThereIsNoDisplay(QtMsgType type, const QMessageLogContext&,
                                    const QString& text) {
  if (type != QtFatalMsg) return;
  std::cerr << QCoreApplication::applicationName().toStdString()
            << " cannot show its window, because it finds no display to show it on.\n"
               "Please start it from the desktop, or set DISPLAY to a display that you may use.\n"
            << "The toolkit says: " << text.toStdString() << '\n';
  std::_Exit(EXIT_FAILURE);
}

}  // namespace bw
