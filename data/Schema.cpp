#include "data/Schema.h"

#include "data/Definition.h"
#include "data/SavedQueries.h"
#include "data/SqlTexts.h"
#include "engine/ChangeLog.h"
#include "engine/EngineTransaction.h"
#include "text/Text.h"

namespace bw {
namespace {

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
  constexpr std::string_view kQuery = "CREATE VIEW ";
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

}  // namespace bw
