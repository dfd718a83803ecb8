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

}  // namespace

const std::vector<int>& PostgresKeys::keyOf(PostgresLink& link, Oid table) {
  static const std::vector<int> kNone;
  if (table < kFirstOwnTable) return kNone;
  if (const auto known = keys_.find(table); known != keys_.end()) return known->second;
  const PostgresResult found = link.query(
      "SELECT c.oid, i.indkey FROM pg_class c"
      " LEFT JOIN pg_index i ON i.indrelid = c.oid AND i.indisprimary"
      " WHERE c.relkind IN ('r', 'v') AND c.oid >= 16384");
  for (int row = 0; row < PQntuples(found.get()); ++row)
    keys_[numberOf<Oid>(PQgetvalue(found.get(), row, 0))] =
        numbersOf(PQgetvalue(found.get(), row, 1));
  return keys_[table];
}

void PostgresKeys::order(PostgresLink& link, const PostgresRows& read, RowStore& rows) {
  std::vector<std::size_t> columns;
  for (const int number : keyOf(link, read.table())) {
    const auto place = std::ranges::find(read.numbers(), number);
    if (place == read.numbers().end()) break;
    columns.push_back(static_cast<std::size_t>(place - read.numbers().begin()));
  }
  if (!columns.empty()) rows.orderBy(columns);
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
