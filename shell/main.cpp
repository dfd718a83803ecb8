#include <QApplication>
#include <QFontDatabase>
#include <QTimer>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <string_view>

#include "controls/DarkOutlines.h"
#include "controls/EventGuard.h"
#include "controls/MessageBox.h"
#include "controls/NoDisplay.h"
#include "controls/ProgressWindow.h"
#include "controls/TypedAhead.h"
#include "core/Services.h"
#include "printing/StartViewer.h"
#include "records/KeptMemory.h"
#include "shell/Guide.h"
#include "shell/SessionEnd.h"
#include "shell/Start.h"

namespace {

constexpr std::chrono::seconds kFontsDelay{1};

void sayWhenThereAreNoFonts() {
  if (QFontDatabase::families().isEmpty())
    std::cerr << "There are no fonts on this computer: every letter shows as a box. Please install "
                 "some, for example the package fonts-dejavu-core.\n";
}

// What the program tells of itself needs no display.
const char* answerTo(std::string_view argument) {
  if (argument == "--version") return "brantiwell " BRANTIWELL_VERSION "\n";
  if (argument != "--help" && argument != "-h") return nullptr;
  return "Usage: brantiwell\n"
         "Keeps and posts the charges of a physician's office. It works with the database that is\n"
         "registered on this computer; brantiwell-database makes and registers one.\n"
         "See man brantiwell.\n";
}

}  // namespace

int main(int argc, char** argv) {
  if (const char* answer = argc > 1 ? answerTo(argv[1]) : nullptr) {
    std::cout << answer;
    return EXIT_SUCCESS;
  }
  bw::keepFreedMemory();
  QApplication::setApplicationName(bw::kApplicationTitle);
  const QtMessageHandler usual = qInstallMessageHandler(bw::sayThatThereIsNoDisplay);
  QApplication application(argc, argv);
  qInstallMessageHandler(usual);
  QApplication::setDesktopFileName("brantiwell");
  bw::installSessionEnd();
  bw::installDarkOutlines();
  bw::keepTypedAhead();
  bw::installMessageBoxes();
  bw::installProgressWindow();
  bw::services().view = bw::startViewer;
  bw::services().help = bw::openGuide;
  bool started = false;
  bw::guarded([&] { started = bw::start(); });
  // To ask for the fonts takes as long as a tenth of the start.
  QTimer::singleShot(kFontsDelay, sayWhenThereAreNoFonts);
  return started ? QApplication::exec() : EXIT_FAILURE;
}
