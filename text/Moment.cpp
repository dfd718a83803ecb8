#include "text/Moment.h"

#include <array>
#include <cstdio>

namespace bw {
namespace {

constexpr std::int32_t kEpochFromCivil = 693899;  // days from 0000-03-01 to 1899-12-30

// Days since 0000-03-01 of a date of the proleptic Gregorian calendar (years counted from March,
// so that the leap day comes last).
constexpr std::int32_t daysFromCivil(int year, int month, int day) noexcept {
  const int y = month <= 2 ? year - 1 : year;
  const int m = month <= 2 ? month + 9 : month - 3;
  return 365 * y + y / 4 - y / 100 + y / 400 + (153 * m + 2) / 5 + day - 1;
}
static_assert(daysFromCivil(1899, 12, 30) == kEpochFromCivil);

constexpr bool isLeap(int year) noexcept {
  return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

constexpr int daysInMonth(int year, int month) noexcept {
  constexpr std::array<int, 12> days{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return month == 2 && isLeap(year) ? 29 : days[static_cast<std::size_t>(month - 1)];
}

// The number that the digits stand for, or -1.
constexpr int digits(std::string_view text, std::size_t from, std::size_t count) noexcept {
  int number = 0;
  for (std::size_t i = from; i < from + count; ++i) {
    if (text[i] < '0' || text[i] > '9') return -1;
    number = number * 10 + (text[i] - '0');
  }
  return number;
}

}  // namespace

std::optional<Date> makeDate(int year, int month, int day) noexcept {
  if (year < 1 || year > 9999 || month < 1 || month > 12) return std::nullopt;
  if (day < 1 || day > daysInMonth(year, month)) return std::nullopt;
  return Date{daysFromCivil(year, month, day) - kEpochFromCivil};
}

std::optional<TimeOfDay> makeTime(int hour, int minute, int second) noexcept {
  if (hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 || second > 59)
    return std::nullopt;
  return TimeOfDay{(hour * 60 + minute) * 60 + second};
}

Civil civil(Date date) noexcept {
  const std::int32_t days = date.day + kEpochFromCivil;
  const std::int32_t era = days / 146097;
  const std::int32_t dayOfEra = days % 146097;
  const std::int32_t yearOfEra =
      (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
  const std::int32_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  const std::int32_t m = (5 * dayOfYear + 2) / 153;
  const int month = m < 10 ? m + 3 : m - 9;
  return {yearOfEra + era * 400 + (month <= 2 ? 1 : 0), month, dayOfYear - (153 * m + 2) / 5 + 1};
}

ClockTime clockTime(TimeOfDay time) noexcept {
  return {time.second / 3600, time.second / 60 % 60, time.second % 60};
}

std::optional<Date> parseIsoDate(std::string_view text) noexcept {
  if (text.size() != 10 || text[4] != '-' || text[7] != '-') return std::nullopt;
  return makeDate(digits(text, 0, 4), digits(text, 5, 2), digits(text, 8, 2));
}

std::optional<TimeOfDay> parseIsoTime(std::string_view text) noexcept {
  if (text.size() != 8 || text[2] != ':' || text[5] != ':') return std::nullopt;
  return makeTime(digits(text, 0, 2), digits(text, 3, 2), digits(text, 6, 2));
}

std::optional<DateTime> parseIsoDateTime(std::string_view text) noexcept {
  if (text.size() != 19 || text[10] != ' ') return std::nullopt;
  const auto date = parseIsoDate(text.substr(0, 10));
  const auto time = parseIsoTime(text.substr(11));
  if (!date || !time) return std::nullopt;
  return DateTime{*date, *time};
}

std::string isoDate(Date date) {
  const Civil c = civil(date);
  std::array<char, 32> buffer{};
  std::snprintf(buffer.data(), buffer.size(), "%04d-%02d-%02d", c.year, c.month, c.day);
  return buffer.data();
}

std::string isoTime(TimeOfDay time) {
  const ClockTime c = clockTime(time);
  std::array<char, 32> buffer{};
  std::snprintf(buffer.data(), buffer.size(), "%02d:%02d:%02d", c.hour, c.minute, c.second);
  return buffer.data();
}

std::string isoDateTime(DateTime moment) {
  return isoDate(moment.date) + " " + isoTime(moment.time);
}

}  // namespace bw
