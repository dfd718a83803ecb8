#include "records/KeyIndex.h"

#include <algorithm>

namespace bw {
namespace {

template <class Entry>
std::vector<Entry> entriesOf(const Column& keys) {
  std::vector<Entry> entries;
  entries.reserve(keys.size());
  for (std::uint32_t row = 0; row < keys.size(); ++row)
    if (const std::int64_t key = keys.raw(row); key != Column::kNull)
      entries.emplace_back(key, row);
  return entries;
}

}  // namespace

KeyIndex::KeyIndex(const Column& keys) : KeyIndex(entriesOf<Entry>(keys)) {}

KeyIndex::KeyIndex(std::vector<Entry> entries) {
  if (entries.empty()) return;
  std::sort(entries.begin(), entries.end());
  lowest_ = entries.front().first;
  // Keys are small numbers as a rule; a table over their whole range answers at once.
  constexpr std::uint64_t kAlwaysDense = 1U << 16U;
  constexpr std::uint64_t kFarApart = 8;
  const std::uint64_t range =
      static_cast<std::uint64_t>(entries.back().first) - static_cast<std::uint64_t>(lowest_);
  if (range >= kAlwaysDense && range / kFarApart > entries.size()) {
    sparse_ = std::move(entries);
    return;
  }
  dense_.assign(static_cast<std::size_t>(range) + 1, kNone);
  for (const auto& [key, row] : entries) dense_[static_cast<std::size_t>(key - lowest_)] = row;
}

std::vector<KeyIndex::Entry> KeyIndex::entries() const {
  if (!sparse_.empty()) return sparse_;
  std::vector<Entry> entries;
  for (std::size_t i = 0; i < dense_.size(); ++i)
    if (dense_[i] != kNone) entries.emplace_back(lowest_ + static_cast<std::int64_t>(i), dense_[i]);
  return entries;
}

KeyIndex KeyIndex::through(const Column& foreign, const KeyIndex& next) const {
  std::vector<Entry> found;
  for (const auto& [key, row] : entries())
    if (const std::uint32_t on = next.row(foreign.raw(row)); on != kNone)
      found.emplace_back(key, on);
  return KeyIndex(std::move(found));
}

std::vector<std::uint32_t> KeyIndex::rowsByPlace() const {
  if (!sparse_.empty()) return {};
  std::vector<std::uint32_t> rows = dense_;
  std::ranges::replace(rows, kNone, otherwise_);
  rows.push_back(otherwise_);
  return rows;
}

std::uint32_t KeyIndex::inSparse(std::int64_t key) const noexcept {
  const auto found = std::lower_bound(sparse_.begin(), sparse_.end(), Entry{key, 0});
  return found == sparse_.end() || found->first != key ? otherwise_ : found->second;
}

}  // namespace bw
