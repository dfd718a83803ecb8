#include "records/Column.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "records/KeyIndex.h"

namespace bw {
namespace {

constexpr std::int64_t kSecondsOfDay = 86400;

FieldType typeOf(const Value& value) noexcept {
  if (std::holds_alternative<std::string>(value)) return FieldType::text;
  if (std::holds_alternative<Date>(value)) return FieldType::date;
  if (std::holds_alternative<TimeOfDay>(value)) return FieldType::time;
  if (std::holds_alternative<DateTime>(value)) return FieldType::dateTime;
  return FieldType::integer;
}

bool isMoment(FieldType type) noexcept {
  return type == FieldType::date || type == FieldType::time || type == FieldType::dateTime;
}

}  // namespace

// The width for values of that range, and what else a code is read with.
void Column::Block::fit(const std::vector<std::int64_t>& values) {
  std::int64_t lowest = std::numeric_limits<std::int64_t>::max();
  std::int64_t highest = std::numeric_limits<std::int64_t>::min();
  mayHoldNull = false;
  for (const std::int64_t value : values) {
    mayHoldNull |= value == kNull;
    lowest = std::min(lowest, value == kNull ? lowest : value);
    highest = std::max(highest, value);  // Null is the lowest number of all
  }
  base = highest == kNull ? 0 : lowest;
  const std::uint64_t range =
      highest == kNull ? 0
                       : static_cast<std::uint64_t>(highest) - static_cast<std::uint64_t>(lowest);
  const auto bits = static_cast<unsigned>(std::bit_width(range + 1));
  width = static_cast<std::uint8_t>(bits > kMostShifted ? kWhole : bits);
  nullCode = ~std::uint64_t{0} >> (kWhole - width);
}

void Column::Block::pack(const std::vector<std::int64_t>& values) {
  fit(values);
  bytes.assign(values.size() * width / 8 + 2 * sizeof(std::uint64_t), 0);
  bytes.shrink_to_fit();
  std::uint8_t* at = bytes.data();
  std::uint64_t word = 0;
  unsigned used = 0;  // bits of the word
  for (const std::int64_t value : values) {
    const std::uint64_t code = codeOf(value);
    word |= code << used;
    used += width;
    if (used < kWhole) continue;
    std::memcpy(at, &word, sizeof word);
    at += sizeof word;
    used -= kWhole;
    word = used == 0 ? 0 : code >> (width - used);
  }
  std::memcpy(at, &word, sizeof word);
}

std::int64_t Column::Block::highest() const noexcept {
  constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
  const std::uint64_t above = static_cast<std::uint64_t>(kMost) - static_cast<std::uint64_t>(base);
  return nullCode > above ? kMost : base + static_cast<std::int64_t>(nullCode - 1);
}

bool Column::Block::store(std::size_t index, std::int64_t raw) noexcept {
  if (raw != kNull && (raw < base || codeOf(raw) >= nullCode)) return false;
  mayHoldNull |= raw == kNull;
  const std::size_t bit = index * width;
  std::uint64_t word = 0;
  std::memcpy(&word, bytes.data() + bit / 8, sizeof word);
  word = (word & ~(nullCode << bit % 8)) | codeOf(raw) << bit % 8;
  std::memcpy(bytes.data() + bit / 8, &word, sizeof word);
  return true;
}

void Column::seal() {
  blocks_.emplace_back().pack(open_);
  ++sealed_;
  open_.clear();
}

void Column::finish() {
  open_.shrink_to_fit();
  blocks_.shrink_to_fit();
}

void Column::appendInteger(std::int64_t number) {
  if (type_ == FieldType::untyped) type_ = FieldType::integer;
  if (isMoment(type_)) return append(kNull);
  append(isText() ? dictionary_.number(std::to_string(number)) : number);
}

void Column::appendText(std::string_view text) {
  switch (type_) {
    case FieldType::date: {
      const auto date = parseIsoDate(text);
      return append(date ? date->day : kNull);
    }
    case FieldType::time: {
      const auto time = parseIsoTime(text);
      return append(time ? time->second : kNull);
    }
    case FieldType::dateTime: {
      const auto moment = parseIsoDateTime(text);
      return append(moment ? moment->date.day * kSecondsOfDay + moment->time.second : kNull);
    }
    case FieldType::untyped:
      type_ = FieldType::text;
      break;
    case FieldType::text:
      break;
    case FieldType::smallint:
    case FieldType::integer:
      becomeText();
      break;
  }
  append(dictionary_.number(text));
}

void Column::appendTexts(std::span<const std::string_view> texts) {
  std::array<TextDictionary::Place, kMostTexts> places;
  for (std::size_t i = 0; i < texts.size(); ++i) places[i] = dictionary_.findPlace(texts[i]);
  for (std::size_t i = 0; i < texts.size(); ++i)
    append(texts[i].data() == nullptr ? kNull : dictionary_.number(texts[i], places[i]));
}

// An expression that gave numbers so far gives a text now.
void Column::becomeText() {
  std::vector<std::int64_t> raws;
  raws.reserve(size());
  for (std::size_t row = 0; row < size(); ++row) raws.push_back(raw(row));
  blocks_.clear();
  open_.clear();
  sealed_ = 0;
  type_ = FieldType::text;
  for (const std::int64_t raw : raws)
    append(raw == kNull ? kNull : dictionary_.number(std::to_string(raw)));
}

std::size_t Column::size() const noexcept {
  return lookUp_ == nullptr ? heldSize() : lookUp_->key().size();
}

Column Column::ordered(const std::vector<std::uint32_t>& rows) && {
  Column moved(std::move(name_), declared_);
  moved.type_ = type_;
  for (const std::uint32_t row : rows) moved.append(held(row));
  moved.dictionary_ = std::move(dictionary_);
  moved.finish();
  return moved;
}

void Column::lookUp(std::string name, std::shared_ptr<const RowLookUp> rows) {
  name_ = std::move(name);
  lookUp_ = std::move(rows);
}

bool Column::isLookedUpBy(const Column& key) const noexcept {
  return lookUp_ != nullptr && &lookUp_->key() == &key;
}

std::int64_t Column::rawFound(std::uint32_t found) const noexcept {
  return found == KeyIndex::kNone ? kNull : held(found);
}

std::int64_t Column::foundByKey(std::size_t row) const noexcept {
  return rawFound(lookUp_->row(row));
}

std::int64_t Column::lookedUp(std::size_t row) const noexcept {
  if (!written_.empty()) {
    const auto own = written_.find(static_cast<std::uint32_t>(row));
    if (own != written_.end()) return own->second;
  }
  return foundByKey(row);
}

Column::Bounds Column::bounds() const noexcept {
  if (isText()) return {0, static_cast<std::int64_t>(dictionary_.size()) - 1};
  Bounds bounds;
  const auto take = [&bounds](std::int64_t raw) {
    if (raw == kNull) return;
    bounds.lowest = std::min(bounds.lowest, raw);
    bounds.highest = std::max(bounds.highest, raw);
  };
  for (const Block& block : blocks_) {
    take(block.base);
    take(block.highest());
  }
  for (const std::int64_t raw : open_) take(raw);
  for (const auto& [row, raw] : written_) take(raw);
  return bounds;
}

bool Column::mayHoldNull() const noexcept {
  return lookUp_ != nullptr || std::ranges::any_of(blocks_, &Block::mayHoldNull) ||
         std::ranges::find(open_, kNull) != open_.end();
}

Value Column::value(std::size_t row) const {
  const std::int64_t number = raw(row);
  if (number == kNull) return {};
  switch (type_) {
    case FieldType::text:
      return std::string(dictionary_.text(number));
    case FieldType::date:
      return Date{static_cast<std::int32_t>(number)};
    case FieldType::time:
      return TimeOfDay{static_cast<std::int32_t>(number)};
    case FieldType::dateTime:
      return momentOfRaw(number);
    default:
      return number;
  }
}

DateTime Column::momentOfRaw(std::int64_t raw) noexcept {
  std::int64_t day = raw / kSecondsOfDay;
  std::int64_t second = raw % kSecondsOfDay;
  if (second < 0) {
    second += kSecondsOfDay;
    --day;
  }
  return {Date{static_cast<std::int32_t>(day)}, TimeOfDay{static_cast<std::int32_t>(second)}};
}

std::int64_t Column::rawOf(const Value& value) {
  if (bw::isNull(value)) return kNull;
  switch (type_) {
    case FieldType::text:
      return dictionary_.number(std::get<std::string>(value));
    case FieldType::date:
      return std::get<Date>(value).day;
    case FieldType::time:
      return std::get<TimeOfDay>(value).second;
    case FieldType::dateTime: {
      const auto& moment = std::get<DateTime>(value);
      return moment.date.day * kSecondsOfDay + moment.time.second;
    }
    default:
      return std::get<std::int64_t>(value);
  }
}

void Column::set(std::size_t row, const Value& value) {
  if (type_ == FieldType::untyped && !bw::isNull(value)) type_ = typeOf(value);
  const std::int64_t number = rawOf(value);
  if (lookUp_ != nullptr) {
    if (number == foundByKey(row))
      written_.erase(static_cast<std::uint32_t>(row));
    else
      written_[static_cast<std::uint32_t>(row)] = number;
    return;
  }
  const std::size_t block = row / kBlockRows;
  if (block >= sealed_) {
    open_[row % kBlockRows] = number;
    return;
  }
  if (blocks_[block].store(row % kBlockRows, number)) return;
  std::vector<std::int64_t> values(kBlockRows);
  for (std::size_t i = 0; i < kBlockRows; ++i) values[i] = blocks_[block].raw(i);
  values[row % kBlockRows] = number;
  blocks_[block].pack(values);
}

std::size_t Column::bytes() const noexcept {
  std::size_t total = open_.capacity() * sizeof(std::int64_t) + dictionary_.bytes();
  for (const Block& block : blocks_) total += sizeof(Block) + block.bytes.capacity();
  constexpr std::size_t kNode = sizeof(void*) + sizeof(*written_.begin());
  total += written_.size() * kNode + written_.bucket_count() * sizeof(void*);
  return total;
}

}  // namespace bw
