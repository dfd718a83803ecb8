#include <QApplication>
#include <QFontDatabase>
#include <QTimer>
#include <chrono>
#include <cstdlib>
#include <iostream>

#include "controls/DarkOutlines.h"
#include "controls/EventGuard.h"
#include "controls/MessageBox.h"
#include "controls/ProgressWindow.h"
#include "core/Services.h"
#include "reports/StartViewer.h"
#include "shell/SessionEnd.h"
#include "shell/Start.h"

namespace {

// In force while the application object is made. Without a display the toolkit would end the
// process by abort(), with words for developers.
void sayThatThereIsNoDisplay(QtMsgType type, const QMessageLogContext&, const QString& text) {
  if (type != QtFatalMsg) return;
  std::cerr << "Brantiwell cannot show its window, because it finds no display to show it on.\n"
               "Please start it from the desktop, or set DISPLAY to a display that you may use.\n"
            << "The toolkit says: " << text.toStdString() << '\n';
  std::_Exit(EXIT_FAILURE);
}

constexpr std::chrono::seconds kFontsDelay{1};

void sayWhenThereAreNoFonts() {
  if (QFontDatabase::families().isEmpty())
    std::cerr << "There are no fonts on this computer: every letter shows as a box. Please install "
                 "some, for example the package fonts-dejavu-core.\n";
}

}  // namespace

int main(int argc, char** argv) {
  const QtMessageHandler usual = qInstallMessageHandler(sayThatThereIsNoDisplay);
  QApplication application(argc, argv);
  qInstallMessageHandler(usual);
  QApplication::setApplicationName(bw::kApplicationTitle);
  QApplication::setDesktopFileName("brantiwell");
  bw::installSessionEnd();
  bw::installDarkOutlines();
  bw::installMessageBoxes();
  bw::installProgressWindow();
  bw::services().view = bw::startViewer;
  bool started = false;
  bw::guarded([&] { started = bw::start(); });
  // To ask for the fonts takes as long as a tenth of the start.
  QTimer::singleShot(kFontsDelay, sayWhenThereAreNoFonts);
  return started ? QApplication::exec() : EXIT_FAILURE;
}
