#include "engine/PostgresKeys.h"

#include <algorithm>
#include <charconv>

#include "text/Text.h"

namespace bw {
namespace {

constexpr Oid kFirstOwnTable = 16384;  // below it stand those of the server itself

template <class Number>
Number numberOf(std::string_view text) noexcept {
  Number number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

// "1 2 3"
std::vector<int> numbersOf(std::string_view text) {
  std::vector<int> numbers;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(' '), text.size());
    numbers.push_back(numberOf<int>(text.substr(0, end)));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return numbers;
}

// A row a table with a key, and a row a query that shows all columns of the key of a table behind
// it: of several, that of the longest key, and then of the one whose columns stand in front.
constexpr const char* kKeys =
    "WITH RECURSIVE behind (shown, source) AS ("
    " SELECT oid, oid FROM pg_class WHERE relkind IN ('r', 'v') AND oid >= 16384"
    " UNION SELECT b.shown, d.refobjid FROM behind b JOIN pg_rewrite r ON r.ev_class = b.source"
    " JOIN pg_depend d ON d.classid = 'pg_rewrite'::regclass AND d.objid = r.oid"
    " AND d.refclassid = 'pg_class'::regclass)"
    "SELECT DISTINCT ON (c.oid) c.oid, c.relname, k.numbers, k.columns"
    " FROM behind b JOIN pg_class c ON c.oid = b.shown"
    " JOIN pg_index i ON i.indrelid = b.source AND i.indisprimary"
    " CROSS JOIN LATERAL (SELECT count(*) AS count, min(s.attnum) AS first,"
    " string_agg(s.attnum::text, ' ' ORDER BY p.place) AS numbers,"
    " string_agg(s.attname, ', ' ORDER BY p.place) AS columns"
    " FROM unnest(i.indkey) WITH ORDINALITY AS p (number, place)"
    " JOIN pg_attribute a ON a.attrelid = i.indrelid AND a.attnum = p.number"
    " JOIN pg_attribute s ON s.attrelid = b.shown AND s.attname = a.attname) AS k"
    " WHERE k.count = i.indnatts ORDER BY c.oid, k.count DESC, k.first";

}  // namespace

void PostgresKeys::load(PostgresLink& link) {
  const PostgresResult found = link.query(kKeys);
  const auto text = [&found](int row, int column) { return PQgetvalue(found.get(), row, column); };
  for (int row = 0; row < PQntuples(found.get()); ++row)
    tables_[numberOf<Oid>(text(row, 0))] = {text(row, 1), numbersOf(text(row, 2)), text(row, 3)};
}

const PostgresKeys::Table* PostgresKeys::tableOf(PostgresLink& link, Oid table) {
  if (table < kFirstOwnTable) return nullptr;
  if (!tables_.contains(table)) load(link);
  return &tables_[table];
}

void PostgresKeys::order(PostgresLink& link, const PostgresRows& read, RowStore& rows) {
  const Table* table = tableOf(link, read.table());
  if (table == nullptr) return;
  std::vector<std::size_t> columns;
  for (const int number : table->key) {
    const auto place = std::ranges::find(read.numbers(), number);
    if (place == read.numbers().end()) continue;  // the same in all rows, where order matters
    columns.push_back(static_cast<std::size_t>(place - read.numbers().begin()));
  }
  if (!columns.empty()) rows.orderBy(columns);
}

std::string PostgresKeys::behindItsOrder(PostgresLink& link, const std::string& statement) {
  constexpr std::string_view kWhole = "SELECT * FROM ";
  if (!sameName(std::string_view(statement).substr(0, kWhole.size()), kWhole)) return {};
  const std::string_view rest = std::string_view(statement).substr(kWhole.size());
  const std::string_view name = rest.substr(0, rest.find_first_of(" ,"));
  if (rest.find(" LIMIT ") != std::string_view::npos) return {};
  if (tables_.empty()) load(link);
  for (const auto& [number, table] : tables_)
    if (sameName(table.name, name)) return concat(", ", table.columns);
  return {};
}

bool saysAnOrder(std::string_view statement) {
  constexpr std::string_view kOrder = "ORDER";
  for (std::size_t at = 0; at + kOrder.size() < statement.size(); ++at) {
    if (statement[at] == '\'') {
      at = std::min(statement.find('\'', at + 1), statement.size());
      continue;
    }
    if (sameName(statement.substr(at, kOrder.size()), kOrder) && at > 0 &&
        std::string_view(" \n\t)").find(statement[at - 1]) != std::string_view::npos &&
        std::string_view(" \n\t").find(statement[at + kOrder.size()]) != std::string_view::npos)
      return true;
  }
  return false;
}

}  // namespace bw
