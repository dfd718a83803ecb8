#include <QApplication>
#include <cstdlib>

#include "controls/DarkOutlines.h"
#include "controls/EventGuard.h"
#include "controls/MessageBox.h"
#include "controls/ProgressWindow.h"
#include "core/Services.h"
#include "reports/StartViewer.h"
#include "shell/Start.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName(bw::kApplicationTitle);
  QApplication::setDesktopFileName("brantiwell");
  bw::installDarkOutlines();
  bw::installMessageBoxes();
  bw::installProgressWindow();
  bw::services().view = bw::startViewer;
  bool started = false;
  bw::guarded([&] { started = bw::start(); });
  return started ? QApplication::exec() : EXIT_FAILURE;
}
