#include "viewer/Saving.h"

#include <QSaveFile>

#include "viewer/CsvExport.h"

namespace bw {
namespace {

template <class Write>
Outcome saveFile(const QString& path, QString& reason, Write write) {
  QSaveFile file(path);
  Outcome outcome = Outcome::failed;
  if (file.open(QIODevice::WriteOnly)) {
    file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    outcome = write(file);
    if (outcome == Outcome::done && !file.commit()) outcome = Outcome::failed;
  }
  if (outcome == Outcome::failed) reason = file.errorString();
  return outcome;
}

}  // namespace

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
