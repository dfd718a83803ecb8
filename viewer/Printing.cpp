#include "viewer/Printing.h"

#include <QPageRanges>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <algorithm>

#include "viewer/PagePainter.h"

namespace bw {

namespace {

// The writer's page may be up to half an inch larger than the paper that it was made for.
constexpr double kRoundingInches = 0.5;

double scaleFor(const PageSize& page, const QSizeF& paper) {
  const auto fit = [](double wanted, double there) {
    return wanted <= there + kRoundingInches ? 1.0 : there / wanted;
  };
  return std::min(fit(page.width, paper.width()), fit(page.height, paper.height()));
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
  const PageSize size = document.pageSize();
  const QRectF whole(0, 0, size.width * kTwipsPerInch, size.height * kTwipsPerInch);
  for (std::size_t i = 0; i < pages.size(); ++i) {
    if (!progress(i, pages.size())) return Outcome::stopped;
    if (i != 0 && !device.newPage()) return Outcome::failed;
    pagePainter.paint(painter, document.parse(pages[i]), document.pageCount(), whole);
  }
  return painter.end() ? Outcome::done : Outcome::failed;
}

}  // namespace

void preparePrinter(QPrinter& printer, const Document& document, const QString& title) {
  const PageSize size = document.pageSize();
  printer.setPageOrientation(size.width > size.height ? QPageLayout::Landscape
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
  const double scale = scaleFor(document.pageSize(), paper);
  const double unitsPerTwip = scale * printer.resolution() / kTwipsPerInch;
  const Outcome outcome =
      paintSheets(printer, unitsPerTwip, document, sheets(printer, pages), progress);
  if (outcome == Outcome::stopped) printer.abort();
  return outcome;
}

Outcome writePdf(QIODevice& device, const Document& document, const QString& title,
                 const Progress& progress) {
  QPdfWriter writer(&device);
  const PageSize size = document.pageSize();
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
