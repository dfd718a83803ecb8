#include <algorithm>
#include <ostream>
#include <vector>

#include "data/Tables.h"
#include "engine/EngineMakers.h"
#include "engine/EngineTransaction.h"
#include "files/WholeFile.h"
#include "text/Text.h"
#include "tools/Commands.h"
#include "tools/NewFolder.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

// How a kind of file spells its rows.
struct Spelling {
  std::string_view ending;
  std::string_view begin;  // tells spreadsheets that it is UTF-8
  char separator;
  std::string_view lineEnd;
  bool quotes;
};
constexpr Spelling kTabs{
    .ending = ".tsv", .begin = "", .separator = '\t', .lineEnd = "\n", .quotes = false};
constexpr Spelling kCommas{
    .ending = ".csv", .begin = "\xEF\xBB\xBF", .separator = ',', .lineEnd = "\r\n", .quotes = true};

const Spelling& spellingOf(TableForm form) noexcept {
  return form == TableForm::tabs ? kTabs : kCommas;
}

// A file of a table on its way to the disk.
class TableText {
 public:
  TableText(const fs::path& folder, std::string_view table, const Spelling& spelling)
      : file_(folder / concat(table, spelling.ending),
              fs::perms::owner_read | fs::perms::owner_write),
        spelling_(spelling) {
    file_.append(spelling.begin);
  }

  void number(std::string_view cell) {
    beginCell();
    line_ += cell;
  }

  void text(std::string_view cell) {
    beginCell();
    if (!spelling_.quotes) {
      line_ += cell;
      return;
    }
    line_ += '"';
    for (const char c : cell) line_.append(c == '"' ? 2 : 1, c);
    line_ += '"';
  }

  void endRow() {
    file_.append(line_);
    file_.append(spelling_.lineEnd);
    line_.clear();
    first_ = true;
  }

  void finish() { file_.finish(); }

 private:
  void beginCell() {
    if (!first_) line_ += spelling_.separator;
    first_ = false;
  }

  WholeFile file_;
  const Spelling& spelling_;
  std::string line_;
  bool first_ = true;
};

void writeHead(TableText& file, std::span<const SchemaColumn> columns) {
  for (const SchemaColumn& column : columns) file.text(column.name);
  file.endRow();
}

std::string_view textAt(const Column& column, std::size_t row) {
  return column.isNull(row) ? std::string_view() : column.textOfRaw(column.raw(row));
}

bool needsQuotes(const RowStore& rows) {
  return std::ranges::any_of(rows.columns, [](const Column& column) {
    for (std::size_t row = 0; column.isText() && row < column.size(); ++row)
      if (textAt(column, row).find_first_of("\t\r\n") != std::string_view::npos) return true;
    return false;
  });
}

// Returns the number of rows.
std::size_t exportTable(Engine& engine, const SchemaTable& table, const fs::path& folder,
                        TableForm form, std::ostream& out) {
  const std::shared_ptr<RowStore> rows = engine.read(concat(
      "SELECT ", listOf(table.columns), " FROM ", table.name, " ORDER BY ", listOf(table.key())));
  const Spelling& spelling = needsQuotes(*rows) ? kCommas : spellingOf(form);
  TableText file(folder, table.name, spelling);
  writeHead(file, table.columns);
  for (std::size_t row = 0; row < rows->rowCount(); ++row) {
    for (const Column& column : rows->columns)
      if (column.isText())
        file.text(textAt(column, row));
      else
        file.number(cellText(column.value(row)));
    file.endRow();
  }
  file.finish();
  out << table.name << spelling.ending << ": " << rows->rowCount() << " rows\n";
  return rows->rowCount();
}

}  // namespace

Exit exportTables(const fs::path& path, const fs::path& folder, TableForm form, std::ostream& out) {
  const std::unique_ptr<Engine> engine = openEngine(path.string());
  const NewFolder made(folder);
  EngineTransaction moment(*engine, TransactionKind::snapshot);
  std::size_t total = 0;
  for (const SchemaTable& table : schemaTables())
    total += exportTable(*engine, table, made.draft(), form, out);
  moment.end();
  made.finish();
  out << "Wrote " << total << " rows to " << folder.string()
      << ". They hold patients' data, and only you can read them.\n";
  return Exit::done;
}

Exit writeTemplates(const fs::path& folder, TableForm form, std::ostream& out) {
  const NewFolder made(folder);
  for (const SchemaTable& table : schemaTables()) {
    TableText file(made.draft(), table.name, spellingOf(form));
    std::vector<SchemaColumn> columns;
    std::ranges::copy_if(table.columns, std::back_inserter(columns),
                         [](const SchemaColumn& column) { return !column.working; });
    writeHead(file, columns);
    file.finish();
  }
  made.finish();
  out << "Wrote empty files to " << folder.string() << ". Fill in those that you need.\n";
  return Exit::done;
}

}  // namespace bw
