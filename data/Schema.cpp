#include "data/Schema.h"

#include <algorithm>

#include "data/SchemaTexts.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace bw {
namespace {

// The text between a parenthesis at `open` and its partner.
std::string_view parenthesised(std::string_view text, std::size_t open) {
  int depth = 0;
  for (std::size_t i = open; i < text.size(); ++i) {
    if (text[i] == '(') ++depth;
    if (text[i] == ')' && --depth == 0) return text.substr(open + 1, i - open - 1);
  }
  return {};
}

// The word that begins at a position.
std::string wordAt(std::string_view text, std::size_t from) {
  const std::size_t end = text.find_first_of(" ,(\n;", from);
  return std::string(text.substr(from, end - from));
}

std::vector<std::string> namesIn(std::string_view list) {
  std::vector<std::string> names;
  while (!list.empty()) {
    const std::size_t comma = std::min(list.find(','), list.size());
    names.emplace_back(Trim(list.substr(0, comma)));
    list.remove_prefix(std::min(comma + 1, list.size()));
  }
  return names;
}

// Calls f with the position behind each occurrence of a phrase.
template <class F>
void forEachBehind(std::string_view text, std::string_view phrase, F f) {
  for (std::size_t i = text.find(phrase); i != std::string_view::npos; i = text.find(phrase, i + 1))
    f(i + phrase.size());
}

constexpr std::string_view kTable = "CREATE TABLE ";
constexpr std::string_view kQuery = "CREATE VIEW ";
constexpr std::string_view kForeignKey = "FOREIGN KEY ";

SchemaReference referenceAt(std::string_view statement, std::size_t parentAt) {
  const std::size_t line = statement.find_first_not_of(' ', statement.rfind('\n', parentAt) + 1);
  const bool ofTable = statement.substr(line).starts_with(kForeignKey);
  return {.columns = ofTable ? namesIn(parenthesised(statement, line + kForeignKey.size()))
                             : std::vector{wordAt(statement, line)},
          .parent = wordAt(statement, parentAt)};
}

SchemaTable tableOf(std::string_view statement) {
  SchemaTable table{.name = wordAt(statement, kTable.size())};
  forEachBehind(statement, "PRIMARY KEY ",
                [&](std::size_t at) { table.key = namesIn(parenthesised(statement, at)); });
  forEachBehind(statement, "CONSTRAINT ", [&](std::size_t at) {
    table.checks.push_back(
        {.name = wordAt(statement, at),
         .condition = std::string(parenthesised(statement, statement.find('(', at)))});
  });
  forEachBehind(statement, "REFERENCES ",
                [&](std::size_t at) { table.references.push_back(referenceAt(statement, at)); });
  return table;
}

// What triggers keep up in place of a relation.
void addAdmission(SchemaTable& patient) {
  for (const auto& [column, parent] :
       {std::pair{"InFacilityCode", "Facility"}, std::pair{"InWardCode", "FacilityWards"},
        std::pair{"InDoctorCode", "Doctors"}})
    patient.references.push_back({.columns = {column}, .parent = parent, .zeroIsNone = true});
}

std::vector<SchemaTable> readTables() {
  std::vector<SchemaTable> tables;
  for (const std::string& statement : splitStatements(kSchemaText))
    if (statement.starts_with(kTable)) tables.push_back(tableOf(statement));
  const auto named = [&tables](std::string_view name) {
    return std::ranges::find(tables, name, &SchemaTable::name);
  };
  addAdmission(*named("Patient"));
  for (SchemaTable& table : tables)
    for (SchemaReference& reference : table.references)
      reference.key = named(reference.parent)->key;
  for (const std::string& statement : splitStatements(kLookupsText))
    forEachBehind(statement, "INSERT INTO ",
                  [&](std::size_t at) { named(wordAt(statement, at))->isLookup = true; });
  return tables;
}

}  // namespace

std::vector<std::string> splitStatements(std::string_view text) {
  std::vector<std::string> statements;
  std::string statement;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (statement.empty() && (line.empty() || line.starts_with("--"))) continue;
    statement.append(statement.empty() ? "" : "\n").append(line);
    const bool trigger = statement.starts_with("CREATE TRIGGER");
    if (trigger ? line == "END;" : line.ends_with(';')) {
      statements.push_back(std::move(statement));
      statement.clear();
    }
  }
  if (!statement.empty()) statements.push_back(std::move(statement));
  return statements;
}

void createSchema(Engine& engine) {
  engine.execute("BEGIN");
  try {
    for (const std::string_view text : {kSchemaText, kLookupsText})
      for (const std::string& statement : splitStatements(text)) engine.execute(statement);
    engine.execute("COMMIT");
  } catch (const RuntimeError&) {
    if (engine.inTransaction()) engine.execute("ROLLBACK");
    throw;
  }
}

const std::vector<SchemaTable>& schemaTables() {
  static const std::vector<SchemaTable> tables = readTables();
  return tables;
}

const std::vector<std::string>& schemaQueries() {
  static const std::vector<std::string> queries = [] {
    std::vector<std::string> names;
    for (const std::string& statement : splitStatements(kSchemaText))
      if (statement.starts_with(kQuery)) names.push_back(wordAt(statement, kQuery.size()));
    return names;
  }();
  return queries;
}

}  // namespace bw
