#include "data/Definition.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "data/NamedRelations.h"
#include "text/Text.h"

namespace bw {
namespace {

// Texts are empty, the working column and what may name no row are 0; all else must be said.
bool hasStart(const SchemaColumn& column) {
  return column.type == FieldType::text || column.working || column.mayNameNone();
}

// Relations in which 0 names no row are kept by a guard.
std::string relationOf(const Dialect& dialect, const SchemaColumn& column) {
  if (dialect.guard == nullptr || column.parent.empty() || column.mayNameNone()) return {};
  return concat(" REFERENCES ", column.parent, column.parentsPart ? " ON DELETE CASCADE" : "");
}

std::string columnLine(const Dialect& dialect, const SchemaColumn& column) {
  const Dialect::Type& type = dialect.typeOf(column);
  return concat(column.name, " ", type.name, column.optional ? "" : " NOT NULL",
                hasStart(column) ? concat(" DEFAULT ", type.start) : "", type.collate,
                relationOf(dialect, column), "\n    CONSTRAINT ", dialect.named(checkOf(column)),
                " CHECK (", conditionOf(dialect, column), ")");
}

std::string tableOf(const Dialect& dialect, const SchemaTable& table) {
  const bool named = dialect.guard == nullptr;
  std::string text = concat("CREATE TABLE ", table.name, " (");
  for (const SchemaColumn& column : table.columns)
    text += concat("\n  ", columnLine(dialect, column), ",");
  if (named) text += relationColumns(table);
  text += concat("\n  ", named ? concat("CONSTRAINT ", dialect.named(keyNameOf(table)), " ") : "",
                 "PRIMARY KEY (", listOf(table.key()), ")");
  if (!named && !table.owner.empty())
    text += concat(",\n  FOREIGN KEY (", listOf(referencesOf(table).back().columns),
                   ") REFERENCES ", table.owner, "\n    ON UPDATE CASCADE ON DELETE CASCADE");
  return concat(text, "\n)", table.hasRowNumbers ? "" : concat(" ", dialect.inKeyOrder));
}

std::string indexOf(const SchemaTable& table, const SchemaIndex& index) {
  return concat("CREATE INDEX ", index.name, " ON ", table.name, " (", index.columns, ")",
                index.condition.empty() ? "" : " WHERE ", index.condition);
}

// Whether a table has a row under a condition.
std::string exists(std::string_view table, std::string_view condition) {
  return concat("EXISTS (SELECT 1 FROM ", table, " WHERE ", condition, ")");
}

// A record in use: who uses it is told before the relations refuse it without a name, the users of
// charges first.
SchemaGuard inUse(const SchemaTable& parent) {
  SchemaGuard guard{.name = concat(parent.name, "InUse"), .event = "DELETE", .table = parent.name};
  const std::string row = concat(" = OLD.", parent.key().front().name);
  for (const SchemaTable& table : schemaTables()) {
    std::vector<SchemaColumn> columns;
    std::ranges::copy_if(table.columns, std::back_inserter(columns), [&](const SchemaColumn& one) {
      return one.parent == parent.name && !one.parentsPart;
    });
    if (columns.empty()) continue;
    guard.refusals.push_back(
        {inUseSentence(table),
         exists(table.name, joined(columns, " OR ", [&row](const SchemaColumn& column) {
                  return concat(column.name, row);
                }))});
  }
  std::ranges::stable_sort(guard.refusals, {}, &SchemaGuard::Refusal::sentence);
  return guard;
}

// Doubles that a user can bring about. The key refuses them as well, but does not say what stands
// there twice.
std::string sameKey(const SchemaTable& table) {
  return exists(table.name, joined(table.key(), " AND ", [](const SchemaColumn& column) {
                  return concat(column.name, " = NEW.", column.name);
                }));
}

SchemaGuard newDouble(const SchemaTable& table) {
  return {.name = concat(table.name, "Double"),
          .event = "INSERT",
          .table = table.name,
          .refusals = {{std::string(table.twice), sameKey(table)}}};
}

SchemaGuard movedDouble(const SchemaTable& table) {
  const std::string_view column = table.key().front().name;
  return {.name = concat(table.name, "MoveDouble"),
          .event = concat("UPDATE OF ", column),
          .table = table.name,
          .when = concat("NEW.", column, " <> OLD.", column),
          .refusals = {{std::string(table.moved), sameKey(table)}}};
}

SchemaGuard::Refusal astray(const SchemaColumn& column) {
  const SchemaTable& parent = schemaTable(column.parent);
  return {astraySentence(parent),
          concat("NEW.", column.name, " <> 0 AND NOT ",
                 exists(parent.name, concat(parent.key().front().name, " = NEW.", column.name)))};
}

// What relations would refuse, where 0 names no row.
void addAdmission(std::vector<SchemaGuard>& guards, const SchemaTable& table) {
  std::vector<SchemaColumn> columns;
  std::ranges::copy_if(table.columns, std::back_inserter(columns), &SchemaColumn::mayNameNone);
  if (columns.empty()) return;
  SchemaGuard guard{
      .name = concat(table.name, "AdmissionInsert"), .event = "INSERT", .table = table.name};
  std::ranges::transform(columns, std::back_inserter(guard.refusals), astray);
  guards.push_back(guard);
  guard.name = concat(table.name, "AdmissionUpdate");
  guard.event = concat("UPDATE OF ", listOf(columns));
  guards.push_back(std::move(guard));
}

std::vector<SchemaGuard> guards() {
  std::vector<SchemaGuard> guards;
  for (const SchemaTable& table : schemaTables()) {
    // Nothing in the program deletes lookups: their relations do.
    if (SchemaGuard guard = inUse(table); !guard.refusals.empty() && !table.isLookup)
      guards.push_back(std::move(guard));
    if (!table.twice.empty()) guards.push_back(newDouble(table));
    if (!table.moved.empty()) guards.push_back(movedDouble(table));
    addAdmission(guards, table);
  }
  return guards;
}

}  // namespace

std::string conditionOf(const Dialect& dialect, const SchemaColumn& column) {
  const Dialect::Type& type = dialect.typeOf(column);
  const std::string rule = concat(column.optional ? type.noValue : "", type.rule,
                                  column.isNeverZero() ? " AND # <> 0" : "");
  std::string condition;
  for (const char c : rule)
    if (c == '#')
      condition += column.name;
    else
      condition += c;
  return condition;
}

std::vector<std::string> definitionOf(const Dialect& dialect) {
  std::vector<std::string> statements;
  if (dialect.beforehand != nullptr) statements = dialect.beforehand();
  for (const SchemaTable& table : schemaTables()) {
    statements.push_back(tableOf(dialect, table));
    for (const SchemaIndex& index : table.indexes) statements.push_back(indexOf(table, index));
  }
  statements.insert(statements.end(), dialect.hints.begin(), dialect.hints.end());
  if (!dialect.version.empty()) statements.emplace_back(dialect.version);
  if (dialect.guard == nullptr) {
    addNamedRelations(statements, dialect);
    return statements;
  }
  for (const SchemaGuard& guard : guards()) statements.push_back(dialect.guard(guard));
  return statements;
}

}  // namespace bw
