#include "data/Schema.h"

#include <algorithm>
#include <cctype>
#include <map>

#include "data/Definition.h"
#include "data/SavedQueries.h"
#include "data/SqlTexts.h"
#include "data/Tables.h"
#include "engine/ChangeLog.h"
#include "engine/EngineTransaction.h"
#include "text/Text.h"

namespace bw {
namespace {

constexpr std::string_view kQuery = "CREATE VIEW ";

// The statements of a text, each of which ends with a semicolon at the end of a line. Comments in
// front of a statement count as part of it.
std::vector<std::string> statementsOf(std::string_view text) {
  constexpr std::string_view kEnd = ";\n";
  std::vector<std::string> statements;
  for (std::size_t end = text.find(kEnd); end != std::string_view::npos; end = text.find(kEnd)) {
    statements.emplace_back(text.substr(0, end));
    text.remove_prefix(end + kEnd.size());
  }
  return statements;
}

void makeSchema(Engine& engine) {
  for (const std::string& statement : definitionOf(dialectOf(engine.dialect())))
    engine.execute(statement);
  for (const LookedUpQuery& query : lookedUpQueries()) engine.execute(viewStatement(query));
  for (const std::string_view text : {kQueriesText, kLookupsText})
    for (const std::string& statement : statementsOf(text)) engine.execute(statement);
}

// The saved queries by their names in small letters.
std::map<std::string, std::string, std::less<>> queryDefinitions() {
  std::map<std::string, std::string, std::less<>> queries;
  std::vector<std::string> statements = statementsOf(kQueriesText);
  for (const LookedUpQuery& query : lookedUpQueries()) statements.push_back(viewStatement(query));
  for (const std::string& statement : statements) {
    const std::size_t at = statement.find(kQuery) + kQuery.size();
    const std::size_t end = statement.find(' ', at);
    std::string name = statement.substr(at, end - at);
    makeLower(name);
    queries.emplace(std::move(name), statement.substr(end));
  }
  return queries;
}

bool isOfAName(char c) noexcept { return c == '_' || std::isalnum(static_cast<unsigned char>(c)); }

// The words of a text, each once.
std::set<std::string> wordsOf(std::string_view text) {
  std::set<std::string> words;
  while (!text.empty()) {
    const auto end =
        static_cast<std::size_t>(std::ranges::find_if_not(text, isOfAName) - text.begin());
    std::string word(text.substr(0, end));
    makeLower(word);
    if (!word.empty()) words.insert(std::move(word));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return words;
}

}  // namespace

void createSchema(Engine& engine, const std::function<void(Engine&)>& fill) {
  EngineTransaction transaction(engine);
  makeSchema(engine);
  if (fill) fill(engine);
  transaction.commit();
}

void keepChangeLog(Engine& engine, bool kept) {
  const bool isStopped = engine.hasTable(kChangeLogStopped);
  const bool isThere = engine.hasTable(kChangeLogTable);
  if (kept && !isThere) engine.execute(std::string(dialectOf(engine.dialect()).changeLog));
  if (kept && isStopped) engine.execute(concat("DROP TABLE ", kChangeLogStopped));
  if (!kept && isThere && !isStopped)
    engine.execute(concat("CREATE TABLE ", kChangeLogStopped, " (Sign SMALLINT)"));
}

std::vector<std::string> schemaQueries() {
  std::vector<std::string> names;
  names.reserve(lookedUpQueries().size());
  for (const LookedUpQuery& query : lookedUpQueries()) names.emplace_back(query.name);
  for (std::size_t at = kQueriesText.find(kQuery); at != std::string_view::npos;
       at = kQueriesText.find(kQuery, at)) {
    at += kQuery.size();
    names.emplace_back(kQueriesText.substr(at, kQueriesText.find(' ', at) - at));
  }
  return names;
}

std::set<std::string> tablesBehind(std::string_view statement) {
  static const auto queries = queryDefinitions();
  std::set<std::string> tables;
  for (const std::string& word : wordsOf(statement)) {
    for (const SchemaTable& table : schemaTables())
      if (sameName(table.name, word)) tables.insert(word);
    const auto query = queries.find(word);
    if (query != queries.end()) tables.merge(tablesBehind(query->second));
  }
  return tables;
}

}  // namespace bw
