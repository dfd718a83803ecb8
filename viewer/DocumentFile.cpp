#include "viewer/DocumentFile.h"

#include <QFile>
#include <QFileInfo>
#include <system_error>

namespace bw {

namespace {

constexpr int kQuietMilliseconds = 250;

}  // namespace

DocumentFile::DocumentFile(QObject* parent) : QObject(parent) {
  quiet_.setSingleShot(true);
  quiet_.setInterval(kQuietMilliseconds);
  const auto wait = [this] { quiet_.start(); };
  connect(&watcher_, &QFileSystemWatcher::fileChanged, this, wait);
  connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, wait);
  connect(&quiet_, &QTimer::timeout, this, &DocumentFile::check);
}

std::shared_ptr<const Document> DocumentFile::open(const QString& path, QString& reason) {
  const QString wanted = QFileInfo(path).absoluteFilePath();
  std::error_code error;
  auto document = Document::open(QFile::encodeName(wanted).toStdString(), error);
  if (document == nullptr) {
    reason = QString::fromLocal8Bit(error.message());
    return nullptr;
  }
  path_ = wanted;
  stamp_ = stampNow();
  watch();
  return document;
}

std::shared_ptr<const Document> DocumentFile::reopen(QString& reason) {
  return open(path_, reason);
}

QString DocumentFile::name() const { return QFileInfo(path_).fileName(); }

DocumentFile::Stamp DocumentFile::stampNow() const {
  const QFileInfo info(path_);
  return info.exists() ? Stamp{info.lastModified(), info.size()} : Stamp{};
}

void DocumentFile::watch() {
  const QStringList before = watcher_.files() + watcher_.directories();
  if (!before.isEmpty()) watcher_.removePaths(before);
  watcher_.addPath(path_);
  watcher_.addPath(QFileInfo(path_).absolutePath());
}

// The folder changes with every other file in it; only a change of this one counts.
void DocumentFile::check() {
  const Stamp now = stampNow();
  if (now.size <= 0 || now == stamp_) return;
  stamp_ = now;
  watch();
  emit rewritten();
}

}  // namespace bw
