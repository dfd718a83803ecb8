#include "text/DateLiterals.h"

#include <array>

#include "text/Text.h"

namespace bw {
namespace {

struct Field {
  int number = 0;
  std::size_t digits = 0;
};

// Up to four digits off the front; none gives a field without digits.
Field takeField(std::string_view& text) noexcept {
  Field field;
  while (field.digits < 4 && field.digits < text.size() && isDigit(text[field.digits]))
    field.number = field.number * 10 + (text[field.digits++] - '0');
  text.remove_prefix(field.digits);
  return field;
}

// Three fields with a separator between them, off the front.
std::optional<std::array<Field, 3>> takeFields(std::string_view& text, char separator) noexcept {
  std::array<Field, 3> fields;
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (i > 0) {
      if (text.empty() || text.front() != separator) return std::nullopt;
      text.remove_prefix(1);
    }
    fields[i] = takeField(text);
    if (fields[i].digits == 0) return std::nullopt;
  }
  return fields;
}

std::optional<Date> takeDate(std::string_view& text) noexcept {
  const auto fields = takeFields(text, '/');
  if (!fields) return std::nullopt;
  const auto& [a, b, c] = *fields;
  if (b.digits > 2) return std::nullopt;
  if (a.digits == 4 && c.digits <= 2) return makeDate(a.number, b.number, c.number);
  if (a.digits > 2 || c.digits != 4) return std::nullopt;
  return a.number > 12 ? makeDate(c.number, b.number, a.number)
                       : makeDate(c.number, a.number, b.number);
}

std::optional<TimeOfDay> takeTime(std::string_view& text) noexcept {
  const auto fields = takeFields(text, ':');
  if (!fields) return std::nullopt;
  const auto& [hour, minute, second] = *fields;
  if (hour.digits > 2 || minute.digits != 2 || second.digits != 2) return std::nullopt;
  const std::string_view half = Trim(text);
  const bool am = sameName(half, "AM");
  if (!am && !sameName(half, "PM")) return makeTime(hour.number, minute.number, second.number);
  text = {};
  if (hour.number < 1 || hour.number > 12) return std::nullopt;
  return makeTime(hour.number % 12 + (am ? 0 : 12), minute.number, second.number);
}

}  // namespace

std::optional<Value> parseDateLiteral(std::string_view text) noexcept {
  std::string_view rest = Trim(text);
  std::optional<Date> date;
  if (rest.find('/') != std::string_view::npos) {
    date = takeDate(rest);
    if (!date) return std::nullopt;
    if (rest.empty()) return *date;
    if (rest.front() != ' ') return std::nullopt;
    rest = Trim(rest);
  }
  const std::optional<TimeOfDay> time = takeTime(rest);
  if (!time || !rest.empty()) return std::nullopt;
  if (date) return DateTime{*date, *time};
  return *time;
}

}  // namespace bw
