#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QPrinter>
#include <QProgressDialog>
#include <QStandardPaths>
#include <QStatusBar>

#include "viewer/PrintDialog.h"
#include "viewer/Saving.h"
#include "viewer/ViewerWindow.h"

// The window's dialogs: which file to open, where to save, what to print.

namespace bw {
namespace {

constexpr int kToldMilliseconds = 8000;
constexpr int kProgressAfterMilliseconds = 500;

// The user's, or the home folder where there is none.
QString documentsFolder() {
  const QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  return QFileInfo(folder).isDir() ? folder : QDir::homePath();
}

}  // namespace

void ViewerWindow::open() {
  const QString path =
      QFileDialog::getOpenFileName(this, tr("Open report"), QFileInfo(file_.path()).absolutePath(),
                                   tr("Reports (*.myv);;All files (*)"));
  if (!path.isEmpty()) openDocument(path);
}

QString ViewerWindow::askFile(const QString& title, const QString& filter, const QString& ending) {
  QFileDialog dialog(this, title, documentsFolder(), filter);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setDefaultSuffix(ending);
  dialog.selectFile(reportName(*document_) + '.' + ending);
  return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().front() : QString();
}

void ViewerWindow::savePdf() {
  const QString path = askFile(tr("Save as PDF"), tr("PDF (*.pdf)"), "pdf");
  if (!path.isEmpty()) savePdfAs(path);
}

void ViewerWindow::exportTable() {
  const QString path = askFile(tr("Export table"), tr("Tables (*.csv)"), "csv");
  if (!path.isEmpty()) exportCsvTo(path);
}

bool ViewerWindow::savePdfAs(const QString& path) {
  const QString title = QFileInfo(file_.path()).completeBaseName();
  return save(path, tr("Saving pages..."),
              [&](const Document& document, const Progress& progress, QString& reason) {
                return savePdfFile(path, document, title, progress, reason);
              });
}

bool ViewerWindow::exportCsvTo(const QString& path) {
  return save(path, tr("Exporting pages..."),
              [&](const Document& document, const Progress& progress, QString& reason) {
                return saveCsvFile(path, document, progress, reason);
              });
}

bool ViewerWindow::save(const QString& path, const QString& label, const Save& save) {
  const std::shared_ptr<const Document> held = document_;
  QString reason;
  std::optional<QString> damage;
  const Outcome outcome = withProgress(label, [&](const Progress& progress) {
    damage = damageFound(progress);
    return damage ? save(*held, progress, reason) : Outcome::stopped;
  });
  if (outcome == Outcome::failed) {
    tell(tr("\"%1\" could not be written: %2. Choose another name or folder and save again.")
             .arg(path, reason));
  }
  if (outcome != Outcome::done) return false;
  tellDone(tr("Saved as %1").arg(path), *damage);
  return true;
}

void ViewerWindow::tellDone(const QString& sentence, const QString& damage) {
  statusBar()->showMessage(sentence, kToldMilliseconds);
  tell(damage.isEmpty() ? QString()
                        : tr("%1, but the report is damaged. %2").arg(sentence, damage));
}

Outcome ViewerWindow::withProgress(const QString& label, const Work& work) {
  QProgressDialog dialog(label, tr("Cancel"), 0, 0, this);
  dialog.setWindowModality(Qt::WindowModal);
  dialog.setMinimumDuration(kProgressAfterMilliseconds);
  return work([&dialog](std::size_t done, std::size_t total) {
    dialog.setMaximum(static_cast<int>(total));
    dialog.setValue(static_cast<int>(done));
    return !dialog.wasCanceled();
  });
}

void ViewerWindow::print() {
  const std::shared_ptr<const Document> held = document_;
  QPrinter printer(QPrinter::HighResolution);
  preparePrinter(printer, *held, file_.name());
  PrintDialog dialog(&printer, this);
  dialog.setOptions(QPrintDialog::PrintToFile | QPrintDialog::PrintPageRange |
                    QPrintDialog::PrintCurrentPage | QPrintDialog::PrintCollateCopies);
  dialog.setMinMax(1, static_cast<int>(held->pageCount()));
  if (dialog.exec() != QDialog::Accepted) return;
  const auto pages = chosenPages(printer, held->pageCount(), view_->currentPage());
  if (pages.empty()) {
    tell(tr("None of the pages chosen is in this report, so nothing was printed."));
    return;
  }
  std::optional<QString> damage;
  const Outcome outcome = withProgress(tr("Printing pages..."), [&](const Progress& progress) {
    damage = damageFound(progress);
    return damage ? printPages(printer, *held, pages, progress) : Outcome::stopped;
  });
  if (outcome == Outcome::done) tellDone(tr("Printed"), *damage);
  if (outcome == Outcome::failed) {
    tell(tr("The report could not be printed. Look whether the printer is ready, and try again."));
  }
}

}  // namespace bw
