// An empty main window, up to its first paint.

#include <QApplication>
#include <QMainWindow>

#include "bench/FirstPaint.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  FirstPaint watch([](const QObject* painted) { return painted->isWidgetType(); });
  application.installEventFilter(&watch);
  QMainWindow window;
  window.resize(433, 433);
  window.show();
  return QApplication::exec();
}
