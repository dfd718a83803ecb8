#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "engine/EngineTransaction.h"
#include "engine/LookedUpConditions.h"
#include "engine/LookedUpQuery.h"
#include "engine/Rewriter.h"
#include "records/KeyIndex.h"
#include "text/RuntimeError.h"
#include "text/Text.h"

// Reads the base, then of each table the rows that are named, and puts the columns together.

namespace bw {
namespace {

// Up to so many keys a table is asked for their rows alone, and not for all.
constexpr std::size_t kFewKeys = 2000;

// A table's rows, and where each row of the base finds its own.
struct Parent {
  std::string_view alias;
  std::string_view foreign;  // the column of the base that leads here, first of all
  std::shared_ptr<RowStore> rows;
  KeyIndex index;
};

void orderByKey(RowStore& rows, const LookedUpQuery& query) {
  std::vector<std::size_t> key;
  key.reserve(query.key.size());
  for (const std::string_view column : query.key) key.push_back(rows.indexOf(column));
  rows.orderBy(key);
}

class Reader {
 public:
  Reader(Engine& engine, const LookedUpQuery& query) : engine_(engine), query_(query) {}

  std::shared_ptr<RowStore> read(const std::string& conditions) {
    readTables(conditions);
    parents_.push_back(words());
    orderByKey(*base_, query_);
    return putTogether();
  }

 private:
  // All as of one moment.
  void readTables(const std::string& conditions) {
    std::optional<EngineTransaction> snapshot;
    if (!engine_.inTransaction()) snapshot.emplace(engine_, TransactionKind::snapshot);
    base_ = engine_.read(rewriteStatement(
        concat("SELECT ", columnsFrom(query_.alias, {}), " FROM [", query_.base, "]", conditions),
        engine_.dialect()));
    std::vector<const LookUpTable*> left;
    for (const LookUpTable& table : query_.tables) left.push_back(&table);
    while (!left.empty()) readParents(left);
    if (snapshot) snapshot->end();
  }
  std::string columnsFrom(std::string_view alias, std::string_view key) const;
  bool isNamed(const LookUpTable& table) const;
  void readParents(std::vector<const LookUpTable*>& left);
  const Column& foreignOf(const LookUpTable& table) const;
  EngineStatement statementOf(const LookUpTable& table) const;
  Parent parentOf(const LookUpTable& table, std::shared_ptr<RowStore> rows) const;
  Parent words() const;
  const Parent& parent(std::string_view alias) const;
  std::shared_ptr<RowStore> putTogether();

  Engine& engine_;
  const LookedUpQuery& query_;
  std::shared_ptr<RowStore> base_;
  std::vector<Parent> parents_;
};

// The columns that the query has from there, the key in front.
std::string Reader::columnsFrom(std::string_view alias, std::string_view key) const {
  std::string columns = key.empty() ? std::string() : concat("[", key, "]");
  for (const LookUpField& field : query_.fields)
    if (field.from == alias) columns += concat(columns.empty() ? "[" : ", [", field.column, "]");
  return columns;
}

const Parent& Reader::parent(std::string_view alias) const {
  return *std::find_if(parents_.begin(), parents_.end(),
                       [&](const Parent& one) { return one.alias == alias; });
}

// Whether the rows that name it have been read.
bool Reader::isNamed(const LookUpTable& table) const {
  return table.from == query_.alias ||
         std::ranges::find(parents_, table.from, &Parent::alias) != parents_.end();
}

// Takes those whose rows are known by now out of those that are left.
void Reader::readParents(std::vector<const LookUpTable*>& left) {
  const auto later = std::stable_partition(left.begin(), left.end(),
                                           [this](const auto* table) { return isNamed(*table); });
  std::vector<EngineStatement> statements;
  for (auto table = left.begin(); table != later; ++table)
    statements.push_back(statementOf(**table));
  std::vector<std::shared_ptr<RowStore>> rows = readAll(engine_, statements);
  std::vector<Parent> read;
  for (std::size_t i = 0; i < rows.size(); ++i)
    read.push_back(parentOf(*left[i], std::move(rows[i])));
  std::ranges::move(read, std::back_inserter(parents_));
  left.erase(left.begin(), later);
}

const Column& Reader::foreignOf(const LookUpTable& table) const {
  const RowStore& rows = table.from == query_.alias ? *base_ : *parent(table.from).rows;
  return rows.columns[rows.indexOf(table.foreign)];
}

Parent Reader::parentOf(const LookUpTable& table, std::shared_ptr<RowStore> rows) const {
  KeyIndex index(rows->columns.front());
  if (table.from == query_.alias)
    return {table.alias, table.foreign, std::move(rows), std::move(index)};
  const Parent& before = parent(table.from);
  KeyIndex through = before.index.through(foreignOf(table), index);
  return {table.alias, before.foreign, std::move(rows), std::move(through)};
}

// The distinct values of a column, or none at all when they are many.
std::vector<std::int64_t> fewKeys(const Column& column) {
  constexpr std::size_t kLooked = 16;  // rows a key at most: more are not worth looking at
  std::vector<std::int64_t> keys;
  if (column.size() > kFewKeys * kLooked) return keys;
  for (std::size_t row = 0; row < column.size(); ++row)
    if (const std::int64_t key = column.raw(row); key != Column::kNull) keys.push_back(key);
  std::sort(keys.begin(), keys.end());
  keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
  if (keys.size() > kFewKeys) keys.clear();
  return keys;
}

EngineStatement Reader::statementOf(const LookUpTable& table) const {
  std::string statement =
      concat("SELECT ", columnsFrom(table.alias, table.key), " FROM [", table.table, "]");
  const std::vector<std::int64_t> keys = fewKeys(foreignOf(table));
  if (!keys.empty()) {
    statement += concat(" WHERE [", table.key, "] IN (");
    for (const std::int64_t key : keys) statement += concat(key == keys.front() ? "" : ",", key);
    statement += ")";
  }
  return rewriteStatement(statement, engine_.dialect());
}

Parent Reader::words() const {
  auto rows = std::make_shared<RowStore>();
  Column numbers("number", FieldType::integer);
  Column texts("word", FieldType::untyped);
  for (const std::string_view word : query_.words.words) {
    numbers.appendInteger(static_cast<std::int64_t>(numbers.size()));
    texts.appendText(word);
  }
  KeyIndex index(numbers);
  index.setOtherwise(static_cast<std::uint32_t>(texts.size()));
  texts.appendText("");
  rows->columns.push_back(std::move(texts));
  return {query_.words.alias, query_.words.foreign, std::move(rows), std::move(index)};
}

Column takeColumn(RowStore& rows, std::string_view name) {
  return std::move(rows.columns[rows.indexOf(name)]);
}

std::shared_ptr<RowStore> Reader::putTogether() {
  auto store = std::make_shared<RowStore>();
  store->columns.reserve(query_.fields.size());  // look-ups point to their neighbours
  for (const LookUpField& field : query_.fields)
    store->columns.push_back(
        takeColumn(field.from == query_.alias ? *base_ : *parent(field.from).rows, field.column));
  for (const Parent& one : parents_) {
    const auto lookUp =
        std::make_shared<RowLookUp>(store->columns[store->indexOf(one.foreign)], one.index);
    for (std::size_t i = 0; i < query_.fields.size(); ++i)
      if (query_.fields[i].from == one.alias)
        store->columns[i].lookUp(std::string(query_.fields[i].shown()), lookUp);
  }
  return store;
}

}  // namespace

std::shared_ptr<RowStore> readLookedUp(Engine& engine, const LookedUpQuery& query,
                                       std::string_view statement) {
  const std::optional<LookedUpStatement> parsed = parseLookedUp(query, statement);
  if (!parsed) return nullptr;
  if (parsed->ofBase) return Reader(engine, query).read(*parsed->ofBase);
  std::shared_ptr<RowStore> rows = engine.read(rewriteStatement(statement, engine.dialect()));
  orderByKey(*rows, query);
  return rows;
}

}  // namespace bw
