#include "engine/PostgresRows.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#include "engine/Refusals.h"
#include "engine/ServerNames.h"
#include "text/Text.h"

namespace bw {
namespace {

constexpr std::int64_t kDayZero = 36526;  // of the server, counted from that of a column
constexpr std::int64_t kSecondsOfDay = 86400;
constexpr std::int64_t kMicroseconds = 1000000;
constexpr Oid kFirstOwnType = 16384;  // of an extension: texts

// A number of the network's order.
template <class Number>
std::int64_t number(const char* bytes) noexcept {
  static_assert(std::endian::native == std::endian::little);
  std::array<char, sizeof(Number)> reversed;
  std::reverse_copy(bytes, bytes + sizeof(Number), reversed.begin());
  return std::bit_cast<Number>(reversed);
}

std::int64_t floorSeconds(std::int64_t microseconds) noexcept {
  const std::int64_t seconds = microseconds / kMicroseconds;
  return microseconds % kMicroseconds < 0 ? seconds - 1 : seconds;
}

}  // namespace

// Those that a program's statements deliver. Counts and the like are 64 bits wide.
PostgresRows::Kind PostgresRows::kindOf(Oid type) {
  using enum Form;
  static constexpr std::array kKinds{
      Kind{16, truth, FieldType::smallint}, Kind{18, text, FieldType::text},
      Kind{19, text, FieldType::text},      Kind{20, int64, FieldType::integer},
      Kind{21, int16, FieldType::smallint}, Kind{23, int32, FieldType::smallint},
      Kind{25, text, FieldType::text},      Kind{26, int32, FieldType::integer},
      Kind{705, text, FieldType::text},     Kind{1042, text, FieldType::text},
      Kind{1043, text, FieldType::text},    Kind{1082, date, FieldType::date},
      Kind{1083, time, FieldType::time},    Kind{1114, stamp, FieldType::dateTime}};
  const auto* kind = std::ranges::find(kKinds, type, &Kind::type);
  if (kind != kKinds.end()) return *kind;
  if (type >= kFirstOwnType) return {type, text, FieldType::text};
  throw DatabaseRefusal(Refusal::statement,
                        concat("The type ", type, " of a column cannot be read."));
}

void PostgresRows::begin(const PGresult& result) {
  store_ = std::make_shared<RowStore>();
  table_ = PQftable(&result, 0);
  for (int place = 0; place < PQnfields(&result); ++place) {
    const std::string_view name = PQfname(&result, place);
    if (name.starts_with(kHiddenColumn)) continue;
    const Kind kind = kindOf(PQftype(&result, place));
    store_->columns.emplace_back(std::string(name), kind.field);
    places_.push_back(place);
    forms_.push_back(kind.form);
    numbers_.push_back(PQftable(&result, place) == table_ ? PQftablecol(&result, place) : 0);
  }
  feeds_ = std::vector<ColumnFeed>(store_->columns.begin(), store_->columns.end());
}

void PostgresRows::take(const PGresult& result) {
  if (!store_ && PQnfields(&result) > 0) begin(result);
  for (int row = 0; row < PQntuples(&result); ++row) feed(result, row);
}

void PostgresRows::feed(const PGresult& result, int row) {
  for (std::size_t i = 0; i < feeds_.size(); ++i) {
    ColumnFeed& feed = feeds_[i];
    if (PQgetisnull(&result, row, places_[i]) != 0) {
      feed.null();
      continue;
    }
    const char* value = PQgetvalue(&result, row, places_[i]);
    switch (forms_[i]) {
      case Form::int16:
        feed.integer(number<std::int16_t>(value));
        break;
      case Form::int32:
        feed.integer(number<std::int32_t>(value));
        break;
      case Form::int64:
        feed.integer(number<std::int64_t>(value));
        break;
      case Form::truth:
        feed.integer(value[0]);
        break;
      case Form::date:
        feed.moment(kDayZero + number<std::int32_t>(value));
        break;
      case Form::time:
        feed.moment(floorSeconds(number<std::int64_t>(value)));
        break;
      case Form::stamp:
        feed.moment(kDayZero * kSecondsOfDay + floorSeconds(number<std::int64_t>(value)));
        break;
      case Form::text:
        feed.text({value, static_cast<std::size_t>(PQgetlength(&result, row, places_[i]))});
        break;
    }
  }
}

std::shared_ptr<RowStore> PostgresRows::finish() {
  for (ColumnFeed& feed : feeds_) feed.flush();
  if (store_)
    for (Column& column : store_->columns) column.finish();
  return std::move(store_);
}

}  // namespace bw
