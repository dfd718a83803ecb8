#include <QApplication>
#include <QCommandLineParser>
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
  if (!ConnectDatabase(message, Access::readOnly)) {
    MsgBox(message);
    return false;
  }
  DatabaseConnection.lookedUpQueries = lookedUpQueries();
  return true;
}

// Without a window: the document is written and opened. Messages go to the standard error stream.
int printPage(const PageKind& kind) {
  services().message = [](const std::string& text) { complain(text); };
  services().progress = [](const WorkProgress&) {};
  if (!openOffice()) return EXIT_FAILURE;
  int result = EXIT_FAILURE;
  guarded([&] {
    Page page(kind, nullptr);
    result = page.print() ? EXIT_SUCCESS : EXIT_FAILURE;
  });
  return result;
}

}  // namespace

int main(int argc, char** argv) {
  keepFreedMemory();
  QApplication::setApplicationName("brantiwell-review");
  QApplication::setApplicationVersion(BRANTIWELL_VERSION);
  const QtMessageHandler usual = qInstallMessageHandler(sayThatThereIsNoDisplay);
  QApplication application(argc, argv);
  qInstallMessageHandler(usual);
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
  line.process(application);
  const std::string name = fromQt(line.value(page));
  const PageKind* kind = name.empty() ? pageKinds().front() : pageOfName(name);
  if (kind == nullptr)
    return complain(concat("There is no page \"", name, "\". Take one of ", pageNames(), "."));
  installServices();
  if (line.isSet(print)) return printPage(*kind);
  if (!openOffice()) return EXIT_FAILURE;
  ReviewWindow window(name);
  window.show();
  return QApplication::exec();
}
