#include "engine/QuickCheck.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <variant>
#include <vector>

#include "engine/Refusals.h"
#include "engine/SqliteHandles.h"
#include "engine/SqliteTrees.h"
#include "text/Text.h"

namespace bw {
namespace {

// What is wrong, as a sentence.
struct Found {
  std::string sentence;
};

struct Leaf {
  int cells = 0;
  std::int64_t payload = 0;  // bytes
};

int lengthOfVarint(std::uint64_t number) noexcept {
  int length = 1;
  while (number >= 0x80 && length < 9) {
    number >>= 7U;
    ++length;
  }
  return length;
}

int lengthOfInteger(std::int64_t number) noexcept {
  if (number == 0 || number == 1) return 0;
  constexpr std::array kLengths{std::pair{8, 1}, std::pair{16, 2}, std::pair{24, 3},
                                std::pair{32, 4}, std::pair{48, 6}};
  const std::int64_t size = number < 0 ? -(number + 1) : number;
  for (const auto& [bits, length] : kLengths)
    if (size >> static_cast<unsigned>(bits - 1) == 0) return length;
  return 8;
}

// The bytes of a record with the values of a row; nothing where they do not tell.
std::optional<std::int64_t> lengthOfRecord(sqlite3_stmt* row) {
  std::int64_t head = 0;
  std::int64_t body = 0;
  for (int i = 0; i < sqlite3_column_count(row); ++i) {
    const int type = sqlite3_column_type(row, i);
    if (type == SQLITE_FLOAT) return {};
    const bool text = type == SQLITE_TEXT || type == SQLITE_BLOB;
    const std::int64_t bytes = text ? sqlite3_column_bytes(row, i)
                               : type == SQLITE_INTEGER
                                   ? lengthOfInteger(sqlite3_column_int64(row, i))
                                   : 0;
    head += text ? lengthOfVarint(static_cast<std::uint64_t>(13 + 2 * bytes)) : 1;
    body += bytes;
  }
  return lengthOfVarint(static_cast<std::uint64_t>(head + 1)) + head + body;
}

bool fits(sqlite3_stmt* row, int column, TreeColumn::Kind kind) {
  const int type = sqlite3_column_type(row, column);
  if (kind == TreeColumn::Kind::other || type == SQLITE_NULL) return true;
  return type == (kind == TreeColumn::Kind::number ? SQLITE_INTEGER : SQLITE_TEXT);
}

std::string_view textOf(sqlite3_stmt* row, int column) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(row, column));
  return text == nullptr ? std::string_view() : std::string_view(text);
}

using KeyValue = std::variant<std::int64_t, std::string>;

// The key of a row, as far as its columns compare without a collation.
std::vector<KeyValue> keyOf(sqlite3_stmt* row, const TableTree& table) {
  std::vector<KeyValue> key;
  for (const std::size_t place : table.key()) {
    const int column = static_cast<int>(place);
    const TreeColumn::Kind kind = table.columns[place].kind;
    if (kind == TreeColumn::Kind::number)
      key.emplace_back(sqlite3_column_int64(row, column));
    else if (kind == TreeColumn::Kind::moment)
      key.emplace_back(std::string(textOf(row, column)));
    else
      break;
  }
  return key;
}

class QuickCheck {
 public:
  explicit QuickCheck(sqlite3& database)
      : database_(database), snapshot_(prepareSqlite(&database, "SELECT 1 FROM sqlite_schema")),
        pages_(prepareSqlite(&database,
                             "SELECT pagetype, ncell, payload FROM dbstat WHERE name = ?1")) {}

  void run() {
    stepSqlite(snapshot_.get());  // all that follows is read as of one moment
    size();
    tables_ = tableTrees(database_);
    numbers_.resize(tables_.size());
    for (std::size_t i = 0; i < tables_.size(); ++i) table(i);
    for (const IndexTree& one : indexTrees(database_)) index(one);
    references();
  }

 private:
  std::int64_t number(const char* statement) const {
    const SqliteStatement prepared = prepareSqlite(&database_, statement);
    stepSqlite(prepared.get());
    return sqlite3_column_int64(prepared.get(), 0);
  }

  // Pages that the file is too short for stand in the log beside it, or are lost.
  void size() const {
    constexpr std::int64_t kFrameHead = 24;
    const std::int64_t page = number("PRAGMA page_size");
    const std::int64_t pages = number("PRAGMA page_count");
    const std::string path = sqlite3_db_filename(&database_, "main");
    std::error_code none;
    const auto bytes = static_cast<std::int64_t>(std::filesystem::file_size(path, none));
    const auto log = std::filesystem::file_size(path + "-wal", none);
    const std::int64_t logged = none ? 0 : static_cast<std::int64_t>(log) / (page + kFrameHead);
    if (pages - bytes / page > logged) throw Found{"The file is too short: its end is missing."};
    if (number("PRAGMA freelist_count") >= std::max<std::int64_t>(pages, 1))
      throw Found{"The head of the file tells of more free pages than it has."};
  }

  Leaf firstLeaf(const std::string& name) const {
    sqlite3_reset(pages_.get());
    sqlite3_bind_text(pages_.get(), 1, name.c_str(), -1, SQLITE_STATIC);
    while (stepSqlite(pages_.get())) {
      const std::string_view type = textOf(pages_.get(), 0);
      if (type == "leaf")
        return {sqlite3_column_int(pages_.get(), 1), sqlite3_column_int64(pages_.get(), 2)};
      if (type == "corrupted") break;
    }
    throw Found{concat(name, " begins with a page that is none of its pages.")};
  }

  void table(std::size_t place) {
    const TableTree& table = tables_[place];
    const Leaf leaf = firstLeaf(table.name);
    const SqliteStatement rows =
        prepareSqlite(&database_, concat("SELECT * FROM \"", table.name, "\" NOT INDEXED"));
    numbers_[place].resize(table.columns.size());
    std::int64_t length = 0;
    bool sized = table.inKeyOrder || table.key().size() != 1;
    int fitting = 0;
    std::vector<KeyValue> last;
    for (int row = 0; row < leaf.cells && stepSqlite(rows.get()); ++row) {
      fitting += take(place, rows.get()) ? 1 : 0;
      const std::optional<std::int64_t> bytes = lengthOfRecord(rows.get());
      sized = sized && bytes;
      length += bytes.value_or(0);
      if (row + 1 == leaf.cells) last = keyOf(rows.get(), table);
    }
    const bool more = !last.empty() && stepSqlite(rows.get());
    if (more && table.inKeyOrder && keyOf(rows.get(), table) < last)
      throw Found{strange(table.name)};
    for (std::vector<std::int64_t>& numbers : numbers_[place]) {
      std::ranges::sort(numbers);
      numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
    }
    if (leaf.cells > 0 && fitting == 0) throw Found{strange(table.name)};
    // Columns that were added to a table later lack in its older rows: shorter is no fault.
    if (sized && leaf.payload > length) throw Found{strange(table.name)};
  }

  static std::string strange(const std::string& table) {
    return concat(table, " begins with rows that are no rows of it.");
  }

  // Whether the row's values are of the columns' kinds. Its numbers are kept.
  bool take(std::size_t place, sqlite3_stmt* row) {
    bool good = true;
    const std::vector<TreeColumn>& columns = tables_[place].columns;
    for (std::size_t i = 0; i < columns.size(); ++i) {
      const int column = static_cast<int>(i);
      good = good && fits(row, column, columns[i].kind);
      if (sqlite3_column_type(row, column) != SQLITE_INTEGER) continue;
      const std::int64_t number = sqlite3_column_int64(row, column);
      if (std::vector<std::int64_t>& known = numbers_[place][i];
          known.empty() || known.back() != number)
        known.push_back(number);
    }
    return good;
  }

  // The first entries tell of rows that hold the same.
  void index(const IndexTree& index) const {
    constexpr int kEntries = 8;
    const Leaf leaf = firstLeaf(index.name);
    std::string entry;
    std::string equal;
    for (std::size_t i = 0; i + 1 < index.columns.size(); ++i) {
      entry += concat("\"", index.columns[i], "\" AS c", static_cast<long>(i), ", ");
      equal += concat(i == 0 ? "" : " AND ", "t.\"", index.columns[i], "\" IS i.c",
                      static_cast<long>(i));
    }
    const SqliteStatement rows = prepareSqlite(
        &database_,
        concat("WITH i AS MATERIALIZED (SELECT ", entry, "rowid AS r FROM \"", index.table,
               "\" INDEXED BY \"", index.name, "\"", index.condition.empty() ? "" : " WHERE ",
               index.condition, " LIMIT ", std::min(leaf.cells, kEntries),
               ") SELECT count(*) FROM i WHERE NOT EXISTS (SELECT 1 FROM \"", index.table,
               "\" t NOT INDEXED WHERE t.rowid = i.r AND ", equal, ")"));
    stepSqlite(rows.get());
    if (sqlite3_column_int(rows.get(), 0) > 0)
      throw Found{concat(index.name, " begins with entries that are no entries of it.")};
  }

  // Which table's rows stand in a table's place, all of them or those of the first leaf.
  struct Exchange {
    std::size_t one = 0;
    std::size_t other = 0;
    bool leaves = false;

    std::size_t of(std::size_t table) const noexcept {
      return table == one ? other : table == other ? one : table;
    }
    bool touches(const TreeReference& reference) const noexcept {
      return of(reference.table) != reference.table || of(reference.parent) != reference.parent;
    }
  };

  void references() {
    const std::vector<TreeReference> all = treeReferences(database_, tables_);
    std::set<std::size_t> suspects;
    for (const TreeReference& reference : all)
      if (missing(reference, {}) > 0) suspects.insert({reference.table, reference.parent});
    for (const std::size_t suspect : suspects)
      for (std::size_t other = 0; other < tables_.size(); ++other)
        if (other != suspect && tables_[suspect].isLike(tables_[other]))
          for (const bool leaves : {false, true}) exchanged(all, {suspect, other, leaves});
  }

  // Rows name rows that do not exist, but exist all when two tables are taken for each other. Rows
  // that name those of a table without rows were brought in without it.
  void exchanged(const std::vector<TreeReference>& all, const Exchange& exchange) {
    if (numbers_[exchange.one].front().empty() || numbers_[exchange.other].front().empty()) return;
    int now = 0;
    int then = 0;
    for (const TreeReference& reference : all) {
      if (!exchange.touches(reference)) continue;
      now += missing(reference, {});
      then += missing(reference, exchange);
    }
    if (now > 0 && then == 0)
      throw Found{concat(tables_[exchange.one].name, " and ", tables_[exchange.other].name,
                         " stand in each other's place.")};
  }

  int missing(const TreeReference& reference, const Exchange& exchange) {
    int count = 0;
    for (const std::int64_t key : numbers_[exchange.of(reference.table)][reference.column])
      if (!has(reference.parent, exchange, key)) ++count;
    return count;
  }

  bool has(std::size_t place, const Exchange& exchange, std::int64_t key) {
    const std::size_t there = exchange.of(place);
    if (there == place || !exchange.leaves) return has(there, key);
    return leafHas(there, key) || (!leafHas(place, key) && has(place, key));
  }

  bool leafHas(std::size_t place, std::int64_t key) const {
    return std::ranges::binary_search(numbers_[place][tables_[place].key().front()], key);
  }

  bool has(std::size_t place, std::int64_t key) {
    const TableTree& table = tables_[place];
    SqliteStatement& find = finds_[place];
    if (!find)
      find = prepareSqlite(&database_, concat("SELECT 1 FROM \"", table.name, "\" WHERE \"",
                                              table.columns[table.key().front()].name, "\" = ?1"));
    sqlite3_reset(find.get());
    sqlite3_bind_int64(find.get(), 1, key);
    return stepSqlite(find.get());
  }

  sqlite3& database_;
  SqliteStatement snapshot_;
  SqliteStatement pages_;
  std::vector<TableTree> tables_;
  std::vector<std::vector<std::vector<std::int64_t>>> numbers_;  // a column's on the first leaf
  std::map<std::size_t, SqliteStatement> finds_;
};

}  // namespace

std::string findQuickly(sqlite3& database) {
  try {
    QuickCheck(database).run();
  } catch (const Found& found) {
    return found.sentence;
  } catch (const DatabaseRefusal& refusal) {
    if (refusal.why() != Refusal::damaged) throw;
    return refusal.text();
  }
  return {};
}

}  // namespace bw
