#include "viewer/Printing.h"

#include <QPageRanges>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <algorithm>
#include <memory>

#include "viewer/PagePainter.h"

namespace bw {

namespace {

double scaleFor(PageSize used, const QSizeF& paper) {
  return std::min({1.0, paper.width() / used.width, paper.height() / used.height});
}

PageFit fitOf(const Document& document) {
  return fitToPaper(document.pageSize(), document.rightEdge());
}

// One entry a sheet, copies included.
std::vector<std::size_t> sheets(const QPrinter& printer, const std::vector<std::size_t>& pages) {
  const int copies = printer.supportsMultipleCopies() ? 1 : std::max(1, printer.copyCount());
  std::vector<std::size_t> all;
  if (printer.collateCopies()) {
    for (int copy = 0; copy < copies; ++copy) all.insert(all.end(), pages.begin(), pages.end());
  } else {
    for (const std::size_t page : pages) {
      all.insert(all.end(), static_cast<std::size_t>(copies), page);
    }
  }
  return all;
}

Outcome paintSheets(QPagedPaintDevice& device, double unitsPerTwip, const Document& document,
                    const std::vector<std::size_t>& pages, const Progress& progress) {
  QPainter painter;
  if (!painter.begin(&device)) return Outcome::failed;
  painter.scale(unitsPerTwip, unitsPerTwip);
  PagePainter pagePainter;
  const PageFit fit = fitOf(document);
  const QRectF whole(0, 0, fit.paperWidth(), fit.paperHeight());
  for (std::size_t i = 0; i < pages.size(); ++i) {
    if (!progress(i, pages.size())) return Outcome::stopped;
    if (i != 0 && !device.newPage()) return Outcome::failed;
    const auto items = std::make_shared<const PageItems>(document.parse(pages[i]));
    pagePainter.paint(painter, fitPage(items, fit, paintedLetters(), document.pageCount()), whole);
  }
  return painter.end() ? Outcome::done : Outcome::failed;
}

}  // namespace

void preparePrinter(QPrinter& printer, const Document& document, const QString& title) {
  const PageSize paper = fitOf(document).paper;
  const auto [narrow, wide] = std::minmax(paper.width, paper.height);
  printer.setPageSize(QPageSize(QSizeF(narrow, wide), QPageSize::Inch));
  printer.setPageOrientation(paper.width > paper.height ? QPageLayout::Landscape
                                                        : QPageLayout::Portrait);
  printer.setFullPage(true);
  printer.setDocName(title);
}

std::vector<std::size_t> chosenPages(const QPrinter& printer, std::size_t pageCount,
                                     std::size_t currentPage) {
  std::vector<std::size_t> pages;
  const QPageRanges ranges = printer.pageRanges();
  for (std::size_t page = 1; page <= pageCount; ++page) {
    const bool wanted = printer.printRange() == QPrinter::CurrentPage ? page == currentPage
                        : printer.printRange() == QPrinter::PageRange
                            ? ranges.isEmpty() || ranges.contains(static_cast<int>(page))
                            : true;
    if (wanted) pages.push_back(page);
  }
  if (printer.pageOrder() == QPrinter::LastPageFirst) std::reverse(pages.begin(), pages.end());
  return pages;
}

Outcome printPages(QPrinter& printer, const Document& document,
                   const std::vector<std::size_t>& pages, const Progress& progress) {
  printer.setFullPage(true);
  const QSizeF paper = printer.pageLayout().fullRect(QPageLayout::Inch).size();
  const double scale = scaleFor(fitOf(document).used, paper);
  const double unitsPerTwip = scale * printer.resolution() / kTwipsPerInch;
  const Outcome outcome =
      paintSheets(printer, unitsPerTwip, document, sheets(printer, pages), progress);
  if (outcome == Outcome::stopped) printer.abort();
  return outcome;
}

Outcome writePdf(QIODevice& device, const Document& document, const QString& title,
                 const Progress& progress) {
  QPdfWriter writer(&device);
  const PageSize size = fitOf(document).paper;
  const QPageSize paper(QSizeF(size.width, size.height), QPageSize::Inch, QString(),
                        QPageSize::ExactMatch);
  writer.setPageLayout(QPageLayout(paper, QPageLayout::Portrait, QMarginsF()));
  writer.setTitle(title);
  writer.setCreator("myviewer");
  writer.setResolution(static_cast<int>(kTwipsPerInch));
  std::vector<std::size_t> pages(document.pageCount());
  for (std::size_t i = 0; i < pages.size(); ++i) pages[i] = i + 1;
  return paintSheets(writer, 1, document, pages, progress);
}

}  // namespace bw
