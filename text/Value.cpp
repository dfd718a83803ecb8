#include "text/Value.h"

#include <cmath>
#include <limits>
#include <optional>

#include "text/Conversions.h"
#include "text/DateLiterals.h"
#include "text/Formats.h"
#include "text/RuntimeError.h"

namespace bw {
namespace {

struct DefaultText {
  std::string operator()(std::monostate) const { throw RuntimeError(ErrorNumber::invalidNull); }
  std::string operator()(std::int64_t number) const { return std::to_string(number); }
  std::string operator()(const std::string& text) const { return text; }
  template <class Moment>
  std::string operator()(Moment moment) const {
    return defaultText(moment);
  }
};

template <class Integer>
Value integerValue(const Value& value) {
  double number = 0;
  if (const auto* integer = std::get_if<std::int64_t>(&value)) {
    number = static_cast<double>(*integer);
  } else if (const auto* text = std::get_if<std::string>(&value)) {
    const std::optional<double> parsed = parseNumber(*text);
    if (!parsed) throw RuntimeError(ErrorNumber::wrongType);
    number = std::nearbyint(*parsed);
  } else {
    throw RuntimeError(ErrorNumber::wrongType);
  }
  using Limits = std::numeric_limits<Integer>;
  if (!(number >= Limits::min() && number <= Limits::max()))
    throw RuntimeError(ErrorNumber::multipleStep);
  return static_cast<std::int64_t>(number);
}

// A text as the moment that it tells; other values as they are.
Value momentOf(const Value& value) {
  const auto* text = std::get_if<std::string>(&value);
  if (text == nullptr) return value;
  const std::optional<Value> moment = parseDateLiteral(*text);
  if (!moment) throw RuntimeError(ErrorNumber::wrongType);
  return *moment;
}

// A field that holds a part of a moment takes that part of it.
Value dateValue(const Value& value) {
  if (const auto* moment = std::get_if<DateTime>(&value)) return moment->date;
  if (std::holds_alternative<Date>(value)) return value;
  throw RuntimeError(ErrorNumber::wrongType);
}

Value timeValue(const Value& value) {
  if (const auto* moment = std::get_if<DateTime>(&value)) return moment->time;
  if (std::holds_alternative<TimeOfDay>(value)) return value;
  throw RuntimeError(ErrorNumber::wrongType);
}

Value dateTimeValue(const Value& value) {
  if (const auto* date = std::get_if<Date>(&value)) return DateTime{*date, {}};
  if (const auto* time = std::get_if<TimeOfDay>(&value)) return DateTime{{}, *time};
  if (std::holds_alternative<DateTime>(value)) return value;
  throw RuntimeError(ErrorNumber::wrongType);
}

}  // namespace

std::string textOf(const Value& value) { return std::visit(DefaultText{}, value); }

std::string textOrEmpty(const Value& value) {
  return isNull(value) ? std::string() : textOf(value);
}

Value convertedTo(FieldType type, const Value& value) {
  if (isNull(value)) return {};
  switch (type) {
    case FieldType::untyped:
      break;
    case FieldType::smallint:
      return integerValue<std::int16_t>(value);
    case FieldType::integer:
      return integerValue<std::int32_t>(value);
    case FieldType::text:
      return textOf(value);
    case FieldType::date:
      return dateValue(momentOf(value));
    case FieldType::time:
      return timeValue(momentOf(value));
    case FieldType::dateTime:
      return dateTimeValue(momentOf(value));
  }
  return value;
}

}  // namespace bw
