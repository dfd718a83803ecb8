// Reads any bytes as a document: index, items, texts, rows and table must neither crash nor run
// away.

#include <cmath>

#include "fuzz/Check.h"
#include "viewer/CsvExport.h"
#include "viewer/Document.h"
#include "viewer/TextRows.h"

namespace {

void checkPage(const bw::Document& document, std::size_t number) {
  const bw::PageItems page = document.parse(number);
  for (const bw::PageItem& item : page.items) {
    const double sum = item.x + item.y + item.width + item.height + item.lineWidth;
    bw::check(std::isfinite(sum), "numbers are finite");
    bw::check(item.kind == bw::ItemKind::shape || (item.fontSize > 0 && item.fontSize <= 500),
              "font sizes can be drawn");
  }
  (void)bw::plainText(bw::textRows(page.items), document.pageCount());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const bw::Document document{bw::DocumentBytes(bw::inputText(data, size))};
  bw::check(document.pageCount() <= bw::DocumentIndex::kMaxPage, "pages are bounded");
  const bool silent = bw::sentences(document.damages()).empty();
  bw::check(silent == document.damages().empty(), "damage is told, and nothing else");
  // Blank pages below a high number are all alike.
  const std::size_t pages = document.pageCount() < 64 ? document.pageCount() : 64;
  for (std::size_t page = 1; page <= pages; ++page) checkPage(document, page);
  if (document.pageCount() > 64) return 0;
  bw::exportCsv(
      document, [](std::string_view) {}, [](std::size_t, std::size_t) { return true; });
  return 0;
}
