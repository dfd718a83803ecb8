#include <QFileDialog>
#include <QFileInfo>
#include <QPrinter>
#include <QProgressDialog>
#include <QStatusBar>

#include "viewer/PrintDialog.h"
#include "viewer/Saving.h"
#include "viewer/ViewerWindow.h"

// The window's dialogs: which file to open, where to save, what to print.

namespace bw {
namespace {

constexpr int kToldMilliseconds = 8000;
constexpr int kProgressAfterMilliseconds = 500;

}  // namespace

void ViewerWindow::open() {
  const QString path =
      QFileDialog::getOpenFileName(this, tr("Open report"), QFileInfo(file_.path()).absolutePath(),
                                   tr("Reports (*.myv);;All files (*)"));
  if (!path.isEmpty()) openDocument(path);
}

QString ViewerWindow::askFile(const QString& title, const QString& filter, const QString& ending) {
  const QFileInfo info(file_.path());
  QFileDialog dialog(this, title, info.absolutePath(), filter);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setDefaultSuffix(ending);
  dialog.selectFile(info.completeBaseName() + '.' + ending);
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
  const Outcome outcome =
      withProgress(label, [&](const Progress& progress) { return save(*held, progress, reason); });
  if (outcome == Outcome::failed) tell(tr("\"%1\" could not be written: %2.").arg(path, reason));
  if (outcome != Outcome::done) return false;
  statusBar()->showMessage(tr("Saved as %1").arg(path), kToldMilliseconds);
  return true;
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
  const Outcome outcome = withProgress(tr("Printing pages..."), [&](const Progress& progress) {
    return printPages(printer, *held, pages, progress);
  });
  if (outcome == Outcome::failed) {
    tell(tr("The report could not be printed. Look whether the printer is ready, and try again."));
  }
}

}  // namespace bw
