#include "engine/DamagedRows.h"

#include <sqlite3.h>

#include "engine/Refusals.h"
#include "engine/SqliteHandles.h"
#include "engine/SqliteTrees.h"
#include "text/Text.h"

namespace bw {
namespace {

// How far a table can be read from one of its ends.
struct Reach {
  bool whole = true;
  std::string last;  // the last row read, by its key; "" for none
};

std::string keyOf(sqlite3_stmt* row, const TableTree& table) {
  std::string key;
  for (const std::size_t place : table.key()) {
    const auto* text =
        reinterpret_cast<const char*>(sqlite3_column_text(row, static_cast<int>(place)));
    key += concat(key.empty() ? "" : ", ", table.columns[place].name, " ",
                  text == nullptr ? "" : text);
  }
  return key;
}

// Every column is asked for: what a page cannot hold stands on others.
void readWhole(sqlite3_stmt* row) {
  for (int i = 0; i < sqlite3_column_count(row); ++i) (void)sqlite3_column_bytes(row, i);
}

Reach reachOf(sqlite3& database, const TableTree& table, const char* direction) {
  Reach reach;
  try {
    std::string order = "rowid";
    if (table.inKeyOrder) {
      order.clear();
      for (const std::size_t place : table.key())
        order +=
            concat(order.empty() ? "" : ", ", "\"", table.columns[place].name, "\" ", direction);
    } else {
      order += concat(" ", direction);
    }
    const SqliteStatement rows = prepareSqlite(
        &database, concat("SELECT * FROM \"", table.name, "\" NOT INDEXED ORDER BY ", order));
    while (stepSqlite(rows.get())) {
      readWhole(rows.get());
      reach.last = keyOf(rows.get(), table);
    }
  } catch (const DatabaseRefusal& refusal) {
    if (refusal.why() != Refusal::damaged) throw;
    reach.whole = false;
  }
  return reach;
}

std::string sentence(const TableTree& table, const std::string& before, const std::string& behind) {
  if (before.empty() && behind.empty())
    return concat(table.name, ": none of its rows can be read.");
  return concat(table.name, ": rows cannot be read",
                before.empty() ? "" : concat(" behind the one with ", before),
                before.empty() || behind.empty() ? "" : " and",
                behind.empty() ? "" : concat(" before the one with ", behind), ".");
}

}  // namespace

std::vector<std::string> findUnreadableRows(sqlite3& database) {
  std::vector<std::string> sentences;
  for (const TableTree& table : tableTrees(database)) {
    const Reach forward = reachOf(database, table, "ASC");
    if (!forward.whole)
      sentences.push_back(sentence(table, forward.last, reachOf(database, table, "DESC").last));
  }
  return sentences;
}

std::vector<std::string> findByEngine(sqlite3& database) {
  std::vector<std::string> damage;
  try {
    const SqliteStatement lines = prepareSqlite(&database, "PRAGMA integrity_check");
    while (stepSqlite(lines.get())) {
      const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(lines.get(), 0));
      const std::string_view line = text == nullptr ? "" : text;
      if (line != "ok" && !line.starts_with("CHECK constraint")) damage.emplace_back(line);
    }
  } catch (const DatabaseRefusal& refusal) {
    if (refusal.why() != Refusal::damaged) throw;
    damage.push_back(refusal.text());
  }
  return damage;
}

}  // namespace bw
