#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "text/Value.h"

namespace bw {

// A date, a time or both by a pattern such as "mm/dd/yyyy", "yyyy/mm/dd hh:MM:ss", "mm/dd/yy".
// Fields are yyyy, yy, mm, m, dd, d, hh, h, nn, n, ss, s and AM/PM, in any case; m and mm mean
// minutes when the field in front is an hour, else the month. Hours count to 23, with AM/PM to 12.
// Everything else stands for itself.
std::string Format(DateTime moment, std::string_view pattern);
std::string Format(Date date, std::string_view pattern);
std::string Format(TimeOfDay time, std::string_view pattern);
// "" for Null; a number or a text raises 13.
std::string Format(const Value& value, std::string_view pattern);

// At least `digits` digits, zeros in front: Format(12, "0000000000").
std::string zeroFilled(std::int64_t number, int digits);

// Default texts, US settings whatever the locale: "6/15/2003", "2:05:09 PM". A midnight time is
// left out behind a date; day zero is left out in front of a time, and alone it is "12:00:00 AM".
std::string defaultText(Date date);
std::string defaultText(TimeOfDay time);
std::string defaultText(DateTime moment);

// The last `width` code points of that many zeros and the code: (100001, 5) is "00001". A negative
// width raises 5, here and below.
std::string fixedCode(std::int64_t code, int width);

// The first `width` code points of the text and that many blanks.
std::string fixedText(std::string_view text, int width);

}  // namespace bw
