#include "records/RowStore.h"

#include <algorithm>
#include <numeric>

#include "records/RowSort.h"
#include "text/RuntimeError.h"
#include "text/Text.h"

namespace bw {

std::optional<std::size_t> RowStore::find(std::string_view name) const noexcept {
  for (std::size_t i = 0; i < columns.size(); ++i)
    if (sameName(columns[i].name(), name)) return i;
  return std::nullopt;
}

std::size_t RowStore::indexOf(std::string_view name) const {
  const auto found = find(name);
  if (!found) throw RuntimeError(ErrorNumber::noSuchItem);
  return *found;
}

void RowStore::set(std::size_t row, std::size_t column, const Value& value) {
  for (Column& other : columns)
    if (other.isLookedUpBy(columns[column])) other.keep(row);
  columns[column].set(row, value);
}

void RowStore::orderBy(const std::vector<std::size_t>& keys) {
  std::vector<BoundSort> order;
  order.reserve(keys.size());
  for (const std::size_t key : keys) order.push_back({key});
  std::vector<std::uint32_t> rows(rowCount());
  std::iota(rows.begin(), rows.end(), 0U);
  if (std::is_sorted(rows.begin(), rows.end(), RowOrder(*this, order))) return;
  for (auto key = order.rbegin(); key != order.rend(); ++key) sortStably(rows, *this, *key);
  for (Column& column : columns) column = std::move(column).ordered(rows);
}

std::size_t RowStore::bytes() const noexcept {
  std::size_t total = 0;
  for (const Column& column : columns) total += column.bytes();
  return total;
}

}  // namespace bw
