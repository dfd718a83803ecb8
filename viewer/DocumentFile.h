#pragma once

#include <QDateTime>
#include <QFileSystemWatcher>
#include <QObject>
#include <QString>
#include <QTimer>
#include <memory>

#include "viewer/Document.h"

namespace bw {

// The file behind the document that is shown. Tells when it was written anew: also when it was
// replaced by another file of its name, or removed and made again.
class DocumentFile : public QObject {
  Q_OBJECT

 public:
  explicit DocumentFile(QObject* parent = nullptr);

  // Nothing, and `reason` says why, when it cannot be read; the file before stays the one watched.
  std::shared_ptr<const Document> open(const QString& path, QString& reason);
  std::shared_ptr<const Document> reopen(QString& reason);

  QString path() const { return path_; }  // absolute; "" before the first
  QString name() const;

 signals:
  // The file has been left alone for a moment after a change, and is not empty: a writer cuts it to
  // nothing first.
  void rewritten();

 private:
  struct Stamp {
    QDateTime time;
    qint64 size = -1;
    bool operator==(const Stamp&) const = default;
  };

  Stamp stampNow() const;
  void watch();
  void check();

  QString path_;
  Stamp stamp_;
  QFileSystemWatcher watcher_;
  QTimer quiet_;
};

}  // namespace bw
