#include <QApplication>
#include <QCommandLineParser>
#include <QTimer>
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>

#include "controls/DarkOutlines.h"
#include "controls/EventGuard.h"
#include "controls/MessageBox.h"
#include "controls/NoDisplay.h"
#include "controls/ProgressWindow.h"
#include "controls/QtText.h"
#include "core/ApoyoConeccion.h"
#include "core/ApoyoRegistry.h"
#include "core/Principal.h"
#include "core/Services.h"
#include "data/SavedQueries.h"
#include "printing/ListReports.h"
#include "printing/StartViewer.h"
#include "records/KeptMemory.h"
#include "review/Page.h"
#include "review/PageKind.h"
#include "review/ReviewWindow.h"
#include "text/Text.h"

namespace {

using namespace bw;

int complain(const std::string& sentence) {
  std::fputs(concat("brantiwell-review: ", sentence, "\n").c_str(), stderr);
  return EXIT_FAILURE;
}

std::string pageNames() {
  return joined(pageKinds(), ", ", [](const PageKind* kind) { return kind->name; });
}

void installServices() {
  installDarkOutlines();
  installMessageBoxes();
  installProgressWindow();
  services().view = startViewer;
  // Settings of its own, in the form of the program's.
  services().settingsFolder = [folder = services().settingsFolder()] { return folder / "review"; };
}

// The engine refuses whatever would write.
bool openOffice() {
  DatabasePath = installationText("Database");
  std::string message;
  if (!ConnectDatabase(message, EngineAccess::readOnly)) {
    MsgBox(message);
    return false;
  }
  DatabaseConnection.lookedUpQueries = lookedUpQueries();
  return true;
}

// Without a window: the document is written and opened, and its path told. Messages go to the
// standard error stream.
int printPage(const PageKind& kind) {
  services().message = [](const std::string& text) { complain(text); };
  services().progress = [](const WorkProgress&) {};
  if (!openOffice()) return EXIT_FAILURE;
  int result = EXIT_FAILURE;
  guarded([&] {
    Page page(kind, nullptr);
    if (!page.print()) return;
    result = EXIT_SUCCESS;
    std::puts(documentPath(kind.document).c_str());
  });
  return result;
}

// Printing needs fonts and no screen, and answers need neither.
constexpr std::array<std::string_view, 5> kWithout{"--print", "--help", "-h", "--version", "-v"};
bool needsNoScreen(int argc, char** argv) {
  return std::any_of(argv, argv + argc, [](std::string_view argument) {
    return std::ranges::find(kWithout, argument) != kWithout.end();
  });
}

// The platform is for this program alone: the viewer that it starts shows a window.
std::unique_ptr<QApplication> makeApplication(int& argc, char** argv) {
  const char* platform = "QT_QPA_PLATFORM";
  const bool offscreen = needsNoScreen(argc, argv) && !qEnvironmentVariableIsSet(platform);
  if (offscreen) qputenv(platform, "offscreen");
  const QtMessageHandler usual = qInstallMessageHandler(sayThatThereIsNoDisplay);
  auto application = std::make_unique<QApplication>(argc, argv);
  qInstallMessageHandler(usual);
  if (offscreen) qunsetenv(platform);
  return application;
}

}  // namespace

int main(int argc, char** argv) {
  keepFreedMemory();
  QApplication::setApplicationName("brantiwell-review");
  QApplication::setApplicationVersion(BRANTIWELL_VERSION);
  const std::unique_ptr<QApplication> application = makeApplication(argc, argv);
  QApplication::setDesktopFileName("brantiwell-review");
  QCommandLineParser line;
  line.setApplicationDescription(
      "Shows what an office's charges lack, who is due and what happened. Changes nothing.");
  line.addHelpOption();
  line.addVersionOption();
  const QCommandLineOption page("page", toQt(concat("Begin with that page: ", pageNames(), ".")),
                                "name");
  const QCommandLineOption print("print",
                                 "Print the page into a document and open it, without a window.");
  line.addOptions({page, print});
  line.process(*application);
  const std::string name = fromQt(line.value(page));
  const PageKind* kind = name.empty() ? pageKinds().front() : pageOfName(name);
  if (kind == nullptr)
    return complain(concat("There is no page \"", name, "\". Take one of ", pageNames(), "."));
  installServices();
  if (line.isSet(print)) return printPage(*kind);
  if (!openOffice()) return EXIT_FAILURE;
  ReviewWindow window(name);
  window.show();
  QTimer::singleShot(0, &window, [&window] { guarded([&window] { window.readCurrent(); }); });
  return QApplication::exec();
}
