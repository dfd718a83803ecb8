#include "viewer/CsvExport.h"

#include <string>
#include <utility>

#include "text/CsvText.h"

namespace bw {

namespace {

void appendRecord(std::string& out, const TableRecord& record) {
  appendCsvRecord(out, record, [](const auto& field) { return std::string_view(field); });
}

std::string heads(const TableShape& shape) {
  std::string out(kCsvMark);
  TableRecord names;
  names.reserve(shape.columns.size());
  for (const TableColumn& column : shape.columns) names.push_back(column.name);
  if (!names.empty()) appendRecord(out, names);
  return out;
}

}  // namespace

bool exportCsv(const Document& document, const std::function<void(std::string_view)>& write,
               const Progress& progress) {
  const std::size_t pages = document.pageCount();
  auto shape = tableShape(document,
                          [&](std::size_t done, std::size_t) { return progress(done, pages * 2); });
  if (!shape) return false;
  write(heads(*shape));
  TableReader reader(*std::move(shape));
  std::string out;
  const TableReader::Take take = [&out](const TableRecord& record) { appendRecord(out, record); };
  for (std::size_t page = 1; page <= pages; ++page) {
    if (!progress(pages + page - 1, pages * 2)) return false;
    out.clear();
    reader.read(document.parse(page), pages, take);
    write(out);
  }
  return true;
}

}  // namespace bw
