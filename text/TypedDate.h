#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "text/Moment.h"

namespace bw {

// What a date that somebody types is measured by.
struct DateRules {
  Date today;
  Date first;  // of the days that can be taken
  Date last;
  bool birth = false;  // a date of birth: what is left out of it is never filled in beyond today
};

struct TypedDate {
  std::optional<Date> date;
  std::string reason;  // why there is none: a sentence for the user
};

// Reads a date as a whole. Blanks around it and around its parts do not count.
//   12302025, 123025               month, day, year
//   12/30/2025, 1-5-26, 1.5.2026, 1 5 26
//   2025-12-30                     the year first when it has four digits
//   30                             the latest day 30 not after tomorrow
//   12/30                          the latest December 30 not after tomorrow
//   t, +3, -10                     today, three days on, ten days back
// A year of two digits makes the latest such day that is not more than one year after today. For a
// date of birth both bounds are today.
TypedDate readTypedDate(std::string_view text, const DateRules& rules);

}  // namespace bw
