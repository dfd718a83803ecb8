#include "records/RowSort.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <numeric>

#include "records/RowCodes.h"

namespace bw {
namespace {

// A digit's counters stay in the processor's cache.
constexpr unsigned kMostDigitBits = 16;

// One stable pass by a digit of the keys. Keys travel with their rows, unless nobody asks for them.
template <class Key>
class Digit {
 public:
  Digit(unsigned shift, unsigned bits)
      : shift_(shift), mask_(static_cast<Key>((std::uint64_t{1} << bits) - 1)) {}

  void distribute(const std::vector<std::uint32_t>& rows, const std::vector<Key>& keys,
                  std::vector<std::uint32_t>& rowsOut, std::vector<Key>* keysOut) const {
    std::vector<std::uint32_t> starts(std::size_t{mask_} + 1);
    for (const Key key : keys) ++starts[of(key)];
    std::exclusive_scan(starts.begin(), starts.end(), starts.begin(), 0U);
    for (std::size_t i = 0; i < rows.size(); ++i) {
      const std::uint32_t to = starts[of(keys[i])]++;
      rowsOut[to] = rows[i];
      if (keysOut != nullptr) (*keysOut)[to] = keys[i];
    }
  }

 private:
  std::size_t of(Key key) const noexcept {
    return static_cast<std::size_t>((key >> shift_) & mask_);
  }

  unsigned shift_;
  Key mask_;
};

// Sorts rows by keys below two to the power of `bits`, in as few passes as there may be.
template <class Key>
void sortByKeys(std::vector<std::uint32_t>& rows, std::vector<Key>& keys, unsigned bits) {
  const unsigned passes = (bits + kMostDigitBits - 1) / kMostDigitBits;
  const unsigned digitBits = (bits + passes - 1) / passes;
  std::vector<std::uint32_t> rowsOut(rows.size());
  std::vector<Key> keysOut(passes > 1 ? keys.size() : 0);
  for (unsigned pass = 0; pass < passes; ++pass) {
    Digit<Key>(pass * digitBits, digitBits)
        .distribute(rows, keys, rowsOut, pass + 1 < passes ? &keysOut : nullptr);
    rows.swap(rowsOut);
    keys.swap(keysOut);
  }
}

std::uint64_t distance(std::int64_t from, std::int64_t to) noexcept {
  return static_cast<std::uint64_t>(to) - static_cast<std::uint64_t>(from);
}

// A missing value becomes 0, the others count from 1 or, descending, from the highest down.
template <class Key>
void sortByColumn(std::vector<std::uint32_t>& rows, const Column& column, Column::Bounds bounds,
                  bool descending) {
  const std::uint64_t range = distance(bounds.lowest, bounds.highest) + 1;
  const auto keyOf = [&](std::int64_t raw) {
    const std::int64_t rank = column.rank(raw);
    const std::uint64_t up = rank == Column::kNull ? 0 : distance(bounds.lowest, rank) + 1;
    return static_cast<Key>(descending ? range - up : up);
  };
  std::vector<Key> keys = RowCodes<Key, decltype(keyOf)>(column, keyOf).of(rows);
  sortByKeys(rows, keys, static_cast<unsigned>(std::bit_width(range)));
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
  const Column::Bounds bounds = column.bounds();
  if (bounds.lowest > bounds.highest) return;  // nothing but missing values
  const std::uint64_t range = distance(bounds.lowest, bounds.highest);
  if (range < std::numeric_limits<std::uint16_t>::max())
    sortByColumn<std::uint16_t>(rows, column, bounds, key.descending);
  else if (range < std::numeric_limits<std::uint32_t>::max())
    sortByColumn<std::uint32_t>(rows, column, bounds, key.descending);
  else
    sortByColumn<std::uint64_t>(rows, column, bounds, key.descending);
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
