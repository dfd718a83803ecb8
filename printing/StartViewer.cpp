#include "printing/StartViewer.h"

#include <QCoreApplication>
#include <QProcess>
#include <QStandardPaths>

#include "controls/QtText.h"
#include "text/RuntimeError.h"

namespace bw {

void startViewer(const std::filesystem::path& document) {
  const QString name = "myviewer";
  QString program = QStandardPaths::findExecutable(name, {QCoreApplication::applicationDirPath()});
  if (program.isEmpty()) program = QStandardPaths::findExecutable(name);
  if (program.isEmpty() || !QProcess::startDetached(program, {toQt(document.string())}))
    throw RuntimeError(ErrorNumber::fileNotFound);
}

}  // namespace bw
