#include "data/NamedRelations.h"

#include <algorithm>

#include "engine/ServerNames.h"
#include "text/Text.h"

namespace bw {
namespace {

struct Relation {
  const SchemaTable* table;
  SchemaReference reference;

  const SchemaColumn& column() const noexcept { return reference.columns.front(); }
  bool isOwners() const noexcept { return reference.columns.size() > 1; }
  bool isPart() const noexcept { return isOwners() || column().parentsPart; }
};

std::vector<Relation> relations() {
  std::vector<Relation> all;
  for (const SchemaTable& table : schemaTables())
    for (const SchemaReference& reference : referencesOf(table)) all.push_back({&table, reference});
  std::ranges::stable_sort(all, {}, [](const Relation& one) { return one.table->users; });
  return all;
}

std::string nameOf(const Relation& relation) {
  return concat(relation.table->name,
                relation.isOwners() ? relation.table->owner : relation.column().name);
}

std::string hidden(const SchemaColumn& column) { return concat(kHiddenColumn, column.name); }

std::string relationStatement(const Relation& relation, const Dialect& dialect) {
  const std::string columns = relation.reference.mayNameNone() ? hidden(relation.column())
                                                               : listOf(relation.reference.columns);
  return concat("ALTER TABLE ", relation.table->name, " ADD CONSTRAINT ",
                dialect.named(nameOf(relation)), " FOREIGN KEY (", columns, ") REFERENCES ",
                relation.reference.parent->name, relation.isOwners() ? " ON UPDATE CASCADE" : "",
                relation.isPart() ? " ON DELETE CASCADE" : "");
}

// For INSERT, UPDATE, DELETE.
std::string sentencesOf(const Relation& relation) {
  const SchemaTable& parent = *relation.reference.parent;
  const std::string astray = relation.reference.mayNameNone() ? astraySentence(parent) : "";
  const bool told = !relation.isPart() && !parent.isLookup;
  return concat(astray, "\n", astray, "\n", told ? inUseSentence(*relation.table) : "");
}

std::string comment(const Dialect& dialect, const SchemaTable& table, std::string_view constraint,
                    std::string_view sentences) {
  return concat("COMMENT ON CONSTRAINT ", dialect.named(constraint), " ON ", table.name, " IS '",
                sentences, "'");
}

// The names in the case of the description, for refusals.
std::string tableComment(const SchemaTable& table) {
  return concat("COMMENT ON TABLE ", table.name, " IS '", table.name, " (", listOf(table.columns),
                ")'");
}

}  // namespace

std::string inUseSentence(const SchemaTable& user) {
  return concat("This record cannot be deleted: ", user.users, " still use it.");
}

std::string astraySentence(const SchemaTable& parent) {
  return concat("This record cannot be stored: its ", parent.one, " does not exist.");
}

std::string keyNameOf(const SchemaTable& table) { return concat(table.name, "Key"); }

std::string relationColumns(const SchemaTable& table) {
  std::string lines;
  for (const SchemaColumn& column : table.columns)
    if (column.mayNameNone())
      lines += concat("\n  ", hidden(column), " int4 GENERATED ALWAYS AS (nullif(", column.name,
                      ", 0)) STORED,");
  return lines;
}

void addNamedRelations(std::vector<std::string>& statements, const Dialect& dialect) {
  for (const Relation& relation : relations()) {
    statements.push_back(relationStatement(relation, dialect));
    statements.push_back(
        comment(dialect, *relation.table, nameOf(relation), sentencesOf(relation)));
  }
  for (const SchemaTable& table : schemaTables()) {
    statements.push_back(tableComment(table));
    if (!table.twice.empty() || !table.moved.empty())
      statements.push_back(
          comment(dialect, table, keyNameOf(table), concat(table.twice, "\n", table.moved, "\n")));
  }
}

}  // namespace bw
