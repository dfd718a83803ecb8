#include <algorithm>
#include <ostream>

#include "data/Tables.h"
#include "records/ColumnRules.h"
#include "text/Text.h"
#include "tools/Commands.h"

namespace bw {
namespace {

std::string noteOf(const SchemaTable& table, const SchemaColumn& column) {
  if (column.working) return concat(column.about, ": 0; may be left out");
  const ColumnRule& rule = ruleOf(column.type);
  const bool isKey = &column < table.key().data() + table.key().size();
  return concat(column.about, ": ", rule.form, rule.limit, column.optional ? ", or empty" : "",
                column.isNeverZero() ? ", not 0" : "",
                column.parent.empty() ? "" : concat("; a row of ", column.parent),
                column.mayNameNone() ? ", or 0 for none" : "", isKey ? "; key" : "");
}

std::string ownerOf(const SchemaTable& table) {
  return concat(listOf(referencesOf(table).back().columns), ": a row of ", table.owner);
}

void print(std::ostream& out, const SchemaTable& table) {
  out << '\n' << table.name << ": " << table.about << '\n';
  const std::size_t width = std::ranges::max(table.columns, {}, [](const SchemaColumn& column) {
                              return column.name.size();
                            }).name.size();
  for (const SchemaColumn& column : table.columns)
    out << "  " << column.name << std::string(width + 2 - column.name.size(), ' ')
        << noteOf(table, column) << '\n';
  if (!table.owner.empty()) out << "  " << ownerOf(table) << '\n';
}

// As the manual page takes it: hyphens that are meant as such.
std::string manualText(std::string_view text) {
  std::string out;
  for (const char c : text) out += c == '-' ? std::string("\\-") : std::string(1, c);
  return out;
}

void printManual(std::ostream& out, const SchemaTable& table) {
  out << ".SS " << table.name << '\n' << "Holds " << table.about << ".\n";
  for (const SchemaColumn& column : table.columns)
    out << ".TP\n.B " << column.name << '\n' << manualText(noteOf(table, column)) << '\n';
  if (!table.owner.empty()) out << ".PP\n" << ownerOf(table) << '\n';
}

}  // namespace

Exit printTables(std::ostream& out) {
  out << "What the columns of each table take, and which rows of other tables they name by their "
         "keys.\n";
  for (const SchemaTable& table : schemaTables()) print(out, table);
  return Exit::done;
}

Exit printTablesManual(std::ostream& out) {
  for (const SchemaTable& table : schemaTables()) printManual(out, table);
  return Exit::done;
}

}  // namespace bw
