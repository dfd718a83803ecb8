#include "viewer/CsvExport.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "viewer/TextRows.h"
#include "viewer/Windows1252.h"

namespace bw {

namespace {

constexpr double kSameColumnTwips = 20;
// Edges of one column differ by rounding only; many more edges than columns are no table.
constexpr std::size_t kEdgesPerColumn = 8;

using Cells = std::vector<std::string>;

// Left edges of the columns in ascending order; empty when there are too many.
using Columns = std::vector<double>;

std::optional<Columns> findColumns(const Document& document, const Progress& progress) {
  std::set<double> edges;
  const std::size_t pages = document.pageCount();
  for (std::size_t page = 1; page <= pages; ++page) {
    if (!progress(page - 1, pages * 2)) return std::nullopt;
    if (edges.size() > kMaxCsvColumns * kEdgesPerColumn) return Columns();
    for (const PageItem& item : document.parse(page).items) {
      if (isReadable(item)) edges.insert(std::round(item.x));
    }
  }
  Columns columns;
  for (const double edge : edges) {
    if (columns.empty() || edge - columns.back() > kSameColumnTwips) columns.push_back(edge);
  }
  if (columns.size() > kMaxCsvColumns) columns.clear();
  return columns;
}

std::size_t columnOf(const Columns& columns, double x) {
  const auto behind = std::upper_bound(columns.begin(), columns.end(), std::round(x));
  return behind == columns.begin() ? 0 : static_cast<std::size_t>(behind - columns.begin()) - 1;
}

Cells cellsOf(const TextRow& row, const Columns& columns, std::size_t pageTotal) {
  Cells cells(columns.size());
  for (const PageItem* item : row) {
    std::string text = utf8(itemText(*item, pageTotal));
    if (columns.empty()) {
      cells.push_back(std::move(text));
      continue;
    }
    std::string& cell = cells[columnOf(columns, item->x)];
    if (!cell.empty()) cell += ' ';
    cell += text;
  }
  return cells;
}

void appendField(std::string& out, const std::string& field) {
  if (field.find_first_of(",\"\r\n") == field.npos) {
    out += field;
    return;
  }
  out += '"';
  for (const char c : field) {
    if (c == '"') out += '"';
    out += c;
  }
  out += '"';
}

void appendRecord(std::string& out, const Cells& cells) {
  for (std::size_t i = 0; i < cells.size(); ++i) {
    if (i != 0) out += ',';
    appendField(out, cells[i]);
  }
  out += "\r\n";
}

}  // namespace

bool exportCsv(const Document& document, const std::function<void(std::string_view)>& write,
               const Progress& progress) {
  const std::size_t pages = document.pageCount();
  const auto columns = findColumns(document, progress);
  if (!columns) return false;
  write("\xEF\xBB\xBF");
  std::string out;
  for (std::size_t page = 1; page <= pages; ++page) {
    if (!progress(pages + page - 1, pages * 2)) return false;
    const PageItems parsed = document.parse(page);
    out.clear();
    for (const TextRow& row : textRows(parsed.items)) {
      appendRecord(out, cellsOf(row, *columns, pages));
    }
    write(out);
  }
  return true;
}

}  // namespace bw
