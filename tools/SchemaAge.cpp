#include "tools/SchemaAge.h"

#include <algorithm>
#include <ostream>
#include <utility>

#include "data/Dialect.h"
#include "text/Text.h"

namespace bw {
namespace {

// Marks of the engine's own parts, which no statement makes.
constexpr std::string_view kParts =
    "SELECT type, name, sql FROM sqlite_schema WHERE sql IS NOT NULL AND name NOT LIKE 'sqlite~_%' "
    "ESCAPE '~' ORDER BY rowid";

std::string withoutBlanks(std::string text) {
  std::erase_if(text, [](char c) { return c == ' ' || c == '\n'; });
  return text;
}

std::int64_t versionOf(Engine& engine) {
  return std::get<std::int64_t>(engine.read("PRAGMA user_version")->columns.front().value(0));
}

std::string hintsOf(Engine& engine) {
  if (!engine.hasTable("sqlite_stat1")) return {};
  std::string text;
  const std::shared_ptr<RowStore> rows =
      engine.read("SELECT tbl, idx, stat FROM sqlite_stat1 ORDER BY tbl, idx, stat");
  for (std::size_t row = 0; row < rows->rowCount(); ++row)
    for (const Column& column : rows->columns) text += textOrEmpty(column.value(row)) + '\t';
  return text;
}

std::string wordOf(const std::string& kind) {
  if (kind == "view") return "saved query";
  return kind == "trigger" ? "guard" : kind;
}

template <class Part>
std::vector<Part> partsOf(Engine& engine) {
  const std::shared_ptr<RowStore> rows = engine.read(std::string(kParts));
  std::vector<Part> parts;
  for (std::size_t row = 0; row < rows->rowCount(); ++row) {
    const auto cell = [&](std::size_t column) {
      return textOrEmpty(rows->columns[column].value(row));
    };
    parts.push_back({.kind = cell(0), .name = cell(1), .statement = cell(2)});
  }
  return parts;
}

}  // namespace

SchemaAge::SchemaAge(Engine& file, Engine& model)
    : version_(versionOf(file)), wanted_(versionOf(model)),
      otherHints_(hintsOf(file) != hintsOf(model)) {
  compare(partsOf<Part>(file), partsOf<Part>(model));
}

void SchemaAge::compare(const std::vector<Part>& ours, std::vector<Part> wanted) {
  for (Part& part : wanted) {
    const auto stands = std::ranges::find_if(ours, [&part](const Part& one) {
      return one.kind == part.kind && sameName(one.name, part.name);
    });
    part.stands = stands != ours.end();
    if (part.stands && withoutBlanks(stands->statement) == withoutBlanks(part.statement)) continue;
    (part.kind == "table" ? tables_ : parts_).push_back(std::move(part));
  }
}

bool SchemaAge::isOld() const noexcept {
  return version_ < wanted_ || otherHints_ || !parts_.empty();
}

bool SchemaAge::lacksTables() const noexcept {
  return !std::ranges::all_of(tables_, &Part::stands);
}

void SchemaAge::tell(std::ostream& out) const {
  for (const Part& table : tables_)
    out << "Note: the table " << table.name
        << (table.stands ? " was made by another version; it stays so.\n"
                         : " is missing. Restore a copy that has it.\n");
  for (const Part& part : parts_)
    out << "Note: the " << wordOf(part.kind) << ' ' << part.name
        << (part.stands ? " has the form of another version of the program.\n" : " is missing.\n");
}

void SchemaAge::bringUpToDate(Engine& file) const {
  for (const Part& part : parts_)
    if (part.stands) file.execute(concat("DROP ", part.kind, " ", part.name));
  for (const Part& part : parts_) file.execute(part.statement);
  const Dialect& dialect = dialectOf(file.dialect());
  if (otherHints_) {
    file.execute("ANALYZE sqlite_schema");
    file.execute("DELETE FROM sqlite_stat1");
    for (const std::string_view hint : dialect.hints) file.execute(std::string(hint));
  }
  file.execute(std::string(dialect.version));
}

}  // namespace bw
