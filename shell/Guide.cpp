#include "shell/Guide.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

#include "controls/QtText.h"
#include "core/Services.h"
#include "text/Text.h"

namespace bw {

QString besideProgram(const char* path) {
  return QCoreApplication::applicationDirPath() + "/../" + path;
}

void openGuide() {
  const QFileInfo guide(besideProgram("share/doc/brantiwell/html/guide.html"));
  const std::string path = fromQt(guide.absoluteFilePath());
  if (!guide.exists()) return MsgBox("The guide is not on this computer: " + path);
  if (!QDesktopServices::openUrl(QUrl::fromLocalFile(guide.canonicalFilePath())))
    MsgBox("No program that shows web pages could be opened. The guide is the file " + path);
}

}  // namespace bw
