#include "viewer/CsvExport.h"

#include <string>
#include <utility>

namespace bw {

namespace {

// A number with a sign is no formula.
bool isFormula(std::string_view field) {
  constexpr std::string_view kBeginnings = "=+-@";
  constexpr std::string_view kNumber = "0123456789.,";
  if (field.empty() || kBeginnings.find(field.front()) == kBeginnings.npos) return false;
  const bool sign = field.front() == '+' || field.front() == '-';
  return !sign || field.find_first_not_of(kNumber, 1) != field.npos;
}

void appendField(std::string& out, std::string_view field) {
  const bool quoted = field.find_first_of(",;\"\r\n") != field.npos;
  if (quoted) out += '"';
  if (isFormula(field)) out += '\'';
  for (const char c : field) {
    if (c == '"') out += '"';
    out += c;
  }
  if (quoted) out += '"';
}

void appendRecord(std::string& out, const TableRecord& record) {
  for (std::size_t i = 0; i < record.size(); ++i) {
    if (i != 0) out += ',';
    appendField(out, record[i]);
  }
  out += "\r\n";
}

std::string heads(const TableShape& shape) {
  std::string out = "\xEF\xBB\xBF";
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
