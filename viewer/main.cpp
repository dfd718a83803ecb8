#include <QApplication>

#include "viewer/Icons.h"
#include "viewer/ViewerWindow.h"

// The only argument is the document to show; without one the window opens empty.
int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setApplicationName("myviewer");
  QApplication::setDesktopFileName("myviewer");
  QApplication::setWindowIcon(bw::actionIcon("myviewer"));
  bw::ViewerWindow window;
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() > 1) window.openDocument(arguments[1]);
  window.show();
  return QApplication::exec();
}
