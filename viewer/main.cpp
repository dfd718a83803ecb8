#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>
#include <algorithm>
#include <array>
#include <cstdio>
#include <string_view>

#include "controls/NoDisplay.h"
#include "viewer/Icons.h"
#include "viewer/Saving.h"
#include "viewer/ViewerWindow.h"

namespace {

using namespace bw;

const QCommandLineOption kPdf("pdf", "Save the document as PDF there, without a window.", "file");
const QCommandLineOption kCsv("csv", "Export its rows as a table there, likewise.", "file");

int complain(const QString& sentence) {
  std::fputs(qPrintable("myviewer: " + sentence + '\n'), stderr);
  return EXIT_FAILURE;
}

// Damage is told, and what stands before it is saved, as it is shown in the window.
int saveOnly(const QCommandLineParser& line) {
  if (line.positionalArguments().size() != 1) return complain("Name one document to save.");
  const QString path = line.positionalArguments().front();
  std::error_code error;
  const auto document = Document::open(path.toStdString(), error);
  if (document == nullptr)
    return complain(QString("The document \"%1\" cannot be opened: %2. Look at its name, or print "
                            "the report again.")
                        .arg(path, QString::fromStdString(error.message())));
  const auto goOn = [](std::size_t, std::size_t) { return true; };
  const std::string damage = sentences(allDamages(*document, goOn).value());
  if (!damage.empty()) complain(QString::fromStdString(damage));
  if (document->pageCount() == 0)
    return damage.empty() ? complain("This report has no pages. Print it again.") : EXIT_FAILURE;
  QString reason;
  const auto failed = [&](const QCommandLineOption& option) {
    complain(QString("\"%1\" could not be written: %2. Name another file or folder.")
                 .arg(line.value(option), reason));
  };
  int result = damage.empty() ? EXIT_SUCCESS : EXIT_FAILURE;
  if (line.isSet(kPdf) &&
      savePdfFile(line.value(kPdf), *document, QFileInfo(path).completeBaseName(), goOn, reason) !=
          Outcome::done) {
    failed(kPdf);
    result = EXIT_FAILURE;
  }
  if (line.isSet(kCsv) && saveCsvFile(line.value(kCsv), *document, goOn, reason) != Outcome::done) {
    failed(kCsv);
    result = EXIT_FAILURE;
  }
  return result;
}

// Saving needs fonts and no screen, and telling of itself neither.
bool needsNoScreen(int argc, char** argv) {
  constexpr std::array<std::string_view, 6> kWithout{"--pdf", "--csv",     "--help",
                                                     "-h",    "--version", "-v"};
  return std::any_of(argv, argv + argc, [&kWithout](std::string_view argument) {
    return std::ranges::any_of(
        kWithout, [argument](std::string_view one) { return argument.starts_with(one); });
  });
}

}  // namespace

// Without a document the window opens empty.
int main(int argc, char** argv) {
  if (needsNoScreen(argc, argv)) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication::setApplicationName("myviewer");
  QApplication::setApplicationVersion(BRANTIWELL_VERSION);
  const QtMessageHandler usual = qInstallMessageHandler(sayThatThereIsNoDisplay);
  QApplication app(argc, argv);
  qInstallMessageHandler(usual);
  QApplication::setDesktopFileName("myviewer");
  QCommandLineParser line;
  line.setApplicationDescription("Shows, prints and exports report documents.");
  line.addHelpOption();
  line.addVersionOption();
  line.addOptions({kPdf, kCsv});
  line.addPositionalArgument("document", "The report document to show.", "[document]");
  line.process(app);
  if (line.isSet(kPdf) || line.isSet(kCsv)) return saveOnly(line);
  QApplication::setWindowIcon(actionIcon("myviewer"));
  ViewerWindow window;
  const QStringList documents = line.positionalArguments();
  if (!documents.isEmpty()) window.openDocument(documents.front());
  window.show();
  return QApplication::exec();
}
