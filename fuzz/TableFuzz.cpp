// Reads any bytes as the file of a table: rows end, cells that are taken are spelled back the same.

#include "fuzz/Check.h"
#include "tools/Commands.h"
#include "tools/TableFile.h"

namespace {

using Rows = std::vector<std::vector<std::string>>;

void checkCell(std::string_view cell) {
  using enum bw::FieldType;
  for (const bw::FieldType type : {text, date, time, dateTime, integer}) {
    const std::optional<bw::Value> value = bw::cellValue(type, cell);
    if (value)
      bw::check(bw::cellValue(type, bw::cellText(*value)) == value, "a value is read back");
  }
}

Rows rowsOf(std::string text, bw::TableFile::Cells cells) {
  Rows rows;
  try {
    bw::TableFile file("file", std::move(text), cells);
    std::size_t line = file.line();
    while (const auto* row = file.next()) {
      bw::check(file.line() > line && file.done() <= 1, "rows follow each other");
      line = file.line();
      rows.emplace_back(row->begin(), row->end());
    }
  } catch (const bw::Refused&) {
    rows.clear();
  }
  return rows;
}

std::string quoted(const Rows& rows) {
  std::string text = "head,head\n";
  for (const auto& row : rows) {
    for (const std::string& cell : row) {
      text += &cell == &row.front() ? "\"" : ",\"";
      for (const char c : cell) text.append(c == '"' ? 2 : 1, c);
      text += '"';
    }
    text += '\n';
  }
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(bw::inputText(data, size));
  for (const auto cells : {bw::TableFile::Cells::plain, bw::TableFile::Cells::quoted}) {
    const Rows rows = rowsOf(text, cells);
    for (const auto& row : rows)
      for (const std::string& cell : row) checkCell(cell);
    bw::check(rowsOf(quoted(rows), bw::TableFile::Cells::quoted) == rows, "rows are read back");
  }
  return 0;
}
