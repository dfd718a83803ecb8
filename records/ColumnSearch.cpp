#include "records/ColumnSearch.h"

#include <algorithm>
#include <utility>

#include "text/Text.h"

namespace bw {
namespace {

constexpr std::uint64_t kFarApart = 8;

using Shown = std::pair<std::int64_t, std::uint32_t>;  // a raw value, a row that has it

std::vector<Shown> distinctBySorting(const Column& column, const std::vector<std::uint32_t>& rows) {
  std::vector<Shown> values;
  values.reserve(rows.size());
  for (const std::uint32_t row : rows)
    if (const std::int64_t raw = column.raw(row); raw != Column::kNull)
      values.emplace_back(raw, row);
  std::sort(values.begin(), values.end());
  values.erase(std::unique(values.begin(), values.end(),
                           [](const Shown& a, const Shown& b) { return a.first == b.first; }),
               values.end());
  return values;
}

// In their order.
std::vector<Shown> distinct(const Column& column, const std::vector<std::uint32_t>& rows) {
  const auto [lowest, highest] = column.bounds();
  if (lowest > highest) return {};
  const std::uint64_t range =
      static_cast<std::uint64_t>(highest) - static_cast<std::uint64_t>(lowest);
  if (range / kFarApart > rows.size()) return distinctBySorting(column, rows);
  constexpr std::uint32_t kNone = 0xffffffffU;
  std::vector<std::uint32_t> rowOf(static_cast<std::size_t>(range) + 1, kNone);
  for (const std::uint32_t row : rows)
    if (const std::int64_t raw = column.raw(row); raw != Column::kNull)
      rowOf[static_cast<std::size_t>(raw - lowest)] = row;
  std::vector<Shown> values;
  for (std::size_t i = 0; i < rowOf.size(); ++i)
    if (rowOf[i] != kNone) values.emplace_back(lowest + static_cast<std::int64_t>(i), rowOf[i]);
  return values;
}

}  // namespace

ColumnSearch::ColumnSearch(const Column& column, const std::vector<std::uint32_t>& rows)
    : column_(column) {
  if (column_.isText())
    takeDictionary();
  else
    takeValues(rows);
}

void ColumnSearch::takeDictionary() {
  const TextDictionary& dictionary = column_.dictionary();
  const auto text = [&](std::size_t i) { return dictionary.text(static_cast<std::int64_t>(i)); };
  texts_.reserve(dictionary.size(), dictionary.allTexts().size());
  if (!isAscii(dictionary.allTexts())) {
    for (std::size_t i = 0; i < dictionary.size(); ++i) texts_.add(text(i));
    return;
  }
  for (std::size_t i = 0; i < dictionary.size(); ++i) texts_.addPlain(text(i));
  texts_.makeReady();
}

// Numbers and days lie close together as a rule: their texts stand in a table over the whole range,
// with nothing where no row has the value.
void ColumnSearch::takeValues(const std::vector<std::uint32_t>& rows) {
  const std::vector<Shown> values = distinct(column_, rows);
  if (values.empty()) return;
  base_ = values.front().first;
  const std::uint64_t range =
      static_cast<std::uint64_t>(values.back().first) - static_cast<std::uint64_t>(base_);
  const bool close = range / kFarApart <= values.size();
  constexpr std::size_t kUsualText = 12;  // bytes
  texts_.reserve(close ? static_cast<std::size_t>(range) + 1 : values.size(),
                 values.size() * kUsualText);
  if (!close) sparse_.reserve(values.size());
  for (const auto& [raw, row] : values) {
    if (!close) sparse_.push_back(raw);
    while (close && static_cast<std::int64_t>(texts_.count()) < raw - base_) texts_.add("");
    texts_.add(textOf(column_.value(row)));
  }
}

Hit ColumnSearch::hit(std::uint32_t row) const noexcept {
  const std::int64_t raw = column_.raw(row);
  if (raw == Column::kNull || raw < base_) return Hit::none;
  auto number = static_cast<std::size_t>(raw - base_);
  if (!sparse_.empty()) {
    const auto found = std::lower_bound(sparse_.begin(), sparse_.end(), raw);
    if (found == sparse_.end() || *found != raw) return Hit::none;
    number = static_cast<std::size_t>(found - sparse_.begin());
  }
  return texts_.hit(number);
}

}  // namespace bw
