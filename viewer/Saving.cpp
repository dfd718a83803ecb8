#include "viewer/Saving.h"

#include <unistd.h>

#include <QFileInfo>
#include <QRegularExpression>
#include <QSaveFile>
#include <QStringList>
#include <cerrno>

#include "viewer/CsvExport.h"

namespace bw {
namespace {

// What may not be replaced: why, else "".
QString refusal(const QString& path) {
  const QFileInfo there(path);
  if (there.isDir()) return "there is a folder of that name";
  return there.exists() && !there.isFile() ? "a device or pipe of that name is no file" : "";
}

// Why the file, still open or never opened, could not be written. A full disk takes a part of what
// is written without a word and tells at the next byte.
QString reasonOf(const QSaveFile& file) {
  if (file.error() == QFileDevice::NoError) return "its pages could not be drawn";
  const bool open = file.handle() >= 0;
  return open && ::write(file.handle(), " ", 1) < 0 ? qt_error_string(errno) : file.errorString();
}

template <class Write>
Outcome saveFile(const QString& path, QString& reason, Write write) {
  reason = refusal(path);
  if (!reason.isEmpty()) return Outcome::failed;
  QSaveFile file(path);
  Outcome outcome = Outcome::failed;
  if (file.open(QIODevice::WriteOnly)) {
    file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    outcome = write(file);
    // What is flushed by committing fails without a reason.
    if (outcome == Outcome::done && !(file.flush() && file.commit())) outcome = Outcome::failed;
  }
  if (outcome != Outcome::failed) return outcome;
  reason = reasonOf(file);
  return outcome;
}

// The head of a page: its title and subtitles are centred, its date follows the word.
struct PageHead {
  QStringList centred;
  QString date;
};

PageHead readHead(const PageItems& page) {
  PageHead head;
  QString before;
  for (const PageItem& item : page.items) {
    if (item.kind != ItemKind::text) continue;
    const QString text = QString::fromStdU16String(itemText(item, 1)).trimmed();
    if (item.align == Align::centre && item.bold) head.centred += text;
    if (before == "Date:" && head.date.isEmpty()) head.date = text;
    before = text;
  }
  return head;
}

// From month/day/year, so that names sort by it; anything else stays as it is.
QString sortableDate(const QString& text) {
  static const QRegularExpression pattern("^(\\d\\d)/(\\d\\d)/(\\d\\d)$");
  const QRegularExpressionMatch match = pattern.match(text);
  if (!match.hasMatch()) return text;
  return QString("20%1-%2-%3").arg(match.captured(3), match.captured(1), match.captured(2));
}

}  // namespace

QString reportName(const Document& document) {
  constexpr qsizetype kLongest = 120;  // letters, of the 255 bytes that a name may have
  const PageHead head = readHead(*document.page(1));
  QStringList parts = head.centred.mid(0, 1);
  for (const QString& line : head.centred.mid(1)) {
    if (line.startsWith("Insurance: ")) parts += line.section(": ", 1);
    if (line.startsWith("Lot: ")) parts += "Lot " + line.section(": ", 1);
  }
  parts += sortableDate(head.date);
  parts.removeAll("");
  static const QRegularExpression unfit("[/\\\\:*?\"<>|]");
  const QString name = parts.join(", ").replace(unfit, "-").left(kLongest);
  return name.isEmpty() ? QString("Report") : name;
}

Outcome savePdfFile(const QString& path, const Document& document, const QString& title,
                    const Progress& progress, QString& reason) {
  return saveFile(path, reason,
                  [&](QIODevice& device) { return writePdf(device, document, title, progress); });
}

Outcome saveCsvFile(const QString& path, const Document& document, const Progress& progress,
                    QString& reason) {
  return saveFile(path, reason, [&](QIODevice& device) {
    bool written = true;
    const auto write = [&](std::string_view piece) {
      const auto size = static_cast<qint64>(piece.size());
      written = written && device.write(piece.data(), size) == size;
    };
    if (!exportCsv(document, write, progress)) return Outcome::stopped;
    return written ? Outcome::done : Outcome::failed;
  });
}

}  // namespace bw
