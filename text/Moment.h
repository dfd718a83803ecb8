#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace bw {

// Days and whole seconds, never fractions: equality is exact.

// A calendar day, counted from 1899-12-30 (day 0). Years 1 to 9999.
struct Date {
  std::int32_t day = 0;
  auto operator<=>(const Date&) const = default;
};

// A time of day in seconds, 0 to 86399.
struct TimeOfDay {
  std::int32_t second = 0;
  auto operator<=>(const TimeOfDay&) const = default;
};

struct DateTime {
  Date date;
  TimeOfDay time;
  auto operator<=>(const DateTime&) const = default;
};

struct Civil {
  int year = 0;
  int month = 0;  // 1 to 12
  int day = 0;    // 1 to 31
};

struct ClockTime {
  int hour = 0;  // 0 to 23
  int minute = 0;
  int second = 0;
};

// Nothing when there is no such day or time.
std::optional<Date> makeDate(int year, int month, int day) noexcept;
std::optional<TimeOfDay> makeTime(int hour, int minute, int second) noexcept;

Civil civil(Date date) noexcept;
ClockTime clockTime(TimeOfDay time) noexcept;

// The forms in which the database keeps them: 2003-06-15, 14:05:09, 2003-06-15 14:05:09.
// Nothing else is read.
std::optional<Date> parseIsoDate(std::string_view text) noexcept;
std::optional<TimeOfDay> parseIsoTime(std::string_view text) noexcept;
std::optional<DateTime> parseIsoDateTime(std::string_view text) noexcept;
std::string isoDate(Date date);
std::string isoTime(TimeOfDay time);
std::string isoDateTime(DateTime moment);

}  // namespace bw
