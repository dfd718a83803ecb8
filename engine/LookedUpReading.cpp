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
    for (const LookUpTable& table : query_.tables) parents_.push_back(readParent(table));
    if (snapshot) snapshot->end();
  }
  std::string columnsFrom(std::string_view alias, std::string_view key) const;
  Parent readParent(const LookUpTable& table);
  std::shared_ptr<RowStore> readRows(const LookUpTable& table, const Column& foreign);
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

Parent Reader::readParent(const LookUpTable& table) {
  if (table.from == query_.alias) {
    std::shared_ptr<RowStore> rows = readRows(table, base_->columns[base_->indexOf(table.foreign)]);
    KeyIndex index(rows->columns.front());
    return {table.alias, table.foreign, std::move(rows), std::move(index)};
  }
  const Parent& before = parent(table.from);
  const Column& foreign = before.rows->columns[before.rows->indexOf(table.foreign)];
  std::shared_ptr<RowStore> rows = readRows(table, foreign);
  KeyIndex index = before.index.through(foreign, KeyIndex(rows->columns.front()));
  return {table.alias, before.foreign, std::move(rows), std::move(index)};
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

std::shared_ptr<RowStore> Reader::readRows(const LookUpTable& table, const Column& foreign) {
  std::string statement =
      concat("SELECT ", columnsFrom(table.alias, table.key), " FROM [", table.table, "]");
  const std::vector<std::int64_t> keys = fewKeys(foreign);
  if (!keys.empty()) {
    statement += concat(" WHERE [", table.key, "] IN (");
    for (const std::int64_t key : keys) statement += concat(key == keys.front() ? "" : ",", key);
    statement += ")";
  }
  return engine_.read(rewriteStatement(statement, engine_.dialect()));
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
