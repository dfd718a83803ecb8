#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "records/Column.h"

namespace bw {

// Rows of a store by the whole number that is their key.
class KeyIndex {
 public:
  static constexpr std::uint32_t kNone = 0xffffffffU;

  // Row i has the key keys.raw(i); no two rows share one.
  explicit KeyIndex(const Column& keys);
  // The same keys, leading one step on: to the row of `next` that `foreign` names in their own row.
  KeyIndex through(const Column& foreign, const KeyIndex& next) const;

  // The row that stands for every key without one, kNone at first.
  void setOtherwise(std::uint32_t row) noexcept { otherwise_ = row; }

  // Where a key's row stands among rowsByPlace(); in no place there: the last one.
  std::size_t place(std::int64_t key) const noexcept {
    const std::uint64_t place =
        static_cast<std::uint64_t>(key) - static_cast<std::uint64_t>(lowest_);
    return place < dense_.size() ? static_cast<std::size_t>(place) : dense_.size();
  }
  // Nothing when the keys lie far apart.
  std::vector<std::uint32_t> rowsByPlace() const;

  // kNone also for Column::kNull.
  std::uint32_t row(std::int64_t key) const noexcept {
    if (key == Column::kNull) return kNone;
    if (!sparse_.empty()) return inSparse(key);
    const std::uint64_t place =
        static_cast<std::uint64_t>(key) - static_cast<std::uint64_t>(lowest_);
    if (place >= dense_.size()) return otherwise_;
    const std::uint32_t row = dense_[static_cast<std::size_t>(place)];
    return row == kNone ? otherwise_ : row;
  }

 private:
  using Entry = std::pair<std::int64_t, std::uint32_t>;  // key, row

  explicit KeyIndex(std::vector<Entry> entries);
  std::vector<Entry> entries() const;
  std::uint32_t inSparse(std::int64_t key) const noexcept;

  std::int64_t lowest_ = 0;
  std::vector<std::uint32_t> dense_;  // from the lowest key on
  std::vector<Entry> sparse_;         // instead, when the keys lie far apart
  std::uint32_t otherwise_ = kNone;
};

// Finds for each row of a store a row of another one, whose key stands in a column of the first.
class RowLookUp {
 public:
  // The column must outlive this, and stay where it is.
  RowLookUp(const Column& key, KeyIndex rows) : key_(key), rows_(std::move(rows)) {}

  const Column& key() const noexcept { return key_; }
  const KeyIndex& rows() const noexcept { return rows_; }
  std::uint32_t row(std::size_t of) const noexcept { return rows_.row(key_.raw(of)); }

 private:
  const Column& key_;
  KeyIndex rows_;
};

}  // namespace bw
