#include "platform/RowSort.h"

#include <algorithm>
#include <array>
#include <limits>

namespace bw {
namespace {

constexpr unsigned kDigitBits = 11;
constexpr std::size_t kDigitValues = std::size_t{1} << kDigitBits;

// One stable pass by a digit of the keys. Keys travel with their rows.
void distribute(const std::vector<std::uint32_t>& rows, const std::vector<std::uint64_t>& keys,
                unsigned shift, std::vector<std::uint32_t>& rowsOut,
                std::vector<std::uint64_t>& keysOut) {
  std::array<std::size_t, kDigitValues> starts{};
  for (const std::uint64_t key : keys) ++starts[(key >> shift) & (kDigitValues - 1)];
  std::size_t sum = 0;
  for (std::size_t& start : starts) {
    const std::size_t count = start;
    start = sum;
    sum += count;
  }
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const std::size_t to = starts[(keys[i] >> shift) & (kDigitValues - 1)]++;
    rowsOut[to] = rows[i];
    keysOut[to] = keys[i];
  }
}

}  // namespace

bool isHeadOf(const std::vector<BoundSort>& keys, const std::vector<BoundSort>& before) {
  if (keys.empty()) return false;
  std::vector<BoundSort> rest(keys.begin() + 1, keys.end());
  std::vector<BoundSort> others;
  std::copy_if(before.begin(), before.end(), std::back_inserter(others),
               [&](const BoundSort& key) { return key.column != keys.front().column; });
  return rest == others;
}

void sortStably(std::vector<std::uint32_t>& rows, const RowStore& store, BoundSort key) {
  const Column& column = store.columns[key.column];
  column.prepareRanks();
  std::vector<std::int64_t> ranks(rows.size());
  std::int64_t lowest = std::numeric_limits<std::int64_t>::max();
  std::int64_t highest = std::numeric_limits<std::int64_t>::min();
  for (std::size_t i = 0; i < rows.size(); ++i) {
    ranks[i] = column.rank(column.raw(rows[i]));
    if (ranks[i] == Column::kNull) continue;
    lowest = std::min(lowest, ranks[i]);
    highest = std::max(highest, ranks[i]);
  }
  if (lowest > highest) return;  // nothing but missing values
  // A missing value becomes 0, the others count from 1 or, descending, from the highest down.
  std::vector<std::uint64_t> keys(rows.size());
  const auto distance = [](std::int64_t from, std::int64_t to) {
    return static_cast<std::uint64_t>(to) - static_cast<std::uint64_t>(from);
  };
  const std::uint64_t range = distance(lowest, highest) + 1;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const std::uint64_t up = ranks[i] == Column::kNull ? 0 : distance(lowest, ranks[i]) + 1;
    keys[i] = key.descending ? range - up : up;
  }
  std::vector<std::uint32_t> rowsOut(rows.size());
  std::vector<std::uint64_t> keysOut(rows.size());
  for (unsigned shift = 0; shift < 64 && range >> shift != 0; shift += kDigitBits) {
    distribute(rows, keys, shift, rowsOut, keysOut);
    rows.swap(rowsOut);
    keys.swap(keysOut);
  }
}

RowOrder::RowOrder(const RowStore& store, const std::vector<BoundSort>& keys)
    : store_(store), keys_(keys) {
  for (const BoundSort& key : keys_) store_.columns[key.column].prepareRanks();
}

bool RowOrder::operator()(std::uint32_t a, std::uint32_t b) const {
  for (const BoundSort& key : keys_) {
    const Column& column = store_.columns[key.column];
    const std::int64_t x = column.rank(column.raw(a));
    const std::int64_t y = column.rank(column.raw(b));
    if (x != y) return key.descending ? x > y : x < y;
  }
  return a < b;
}

}  // namespace bw
