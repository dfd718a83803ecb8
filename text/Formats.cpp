#include "text/Formats.h"

#include "text/RuntimeError.h"
#include "text/Text.h"

namespace bw {
namespace {

constexpr std::string_view kHalfDay = "AM/PM";

char lower(char c) noexcept { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

struct Parts {
  Civil date;
  ClockTime time;
};

// Whether the pattern has an AM/PM at that place.
bool halfDayAt(std::string_view pattern, std::size_t at) noexcept {
  return sameName(pattern.substr(at, kHalfDay.size()), kHalfDay);
}

bool hasHalfDay(std::string_view pattern) noexcept {
  for (std::size_t at = 0; at < pattern.size(); ++at)
    if (halfDayAt(pattern, at)) return true;
  return false;
}

int hourOfHalfDay(int hour) noexcept { return hour % 12 == 0 ? 12 : hour % 12; }
std::string_view halfDayOf(int hour) noexcept { return hour < 12 ? "AM" : "PM"; }

// The number that a letter, with 'n' for minutes, stands for; -1 for any other letter.
int numberOf(const Parts& parts, char letter, bool halfDays) noexcept {
  switch (letter) {
    case 'y':
      return parts.date.year;
    case 'm':
      return parts.date.month;
    case 'd':
      return parts.date.day;
    case 'h':
      return halfDays ? hourOfHalfDay(parts.time.hour) : parts.time.hour;
    case 'n':
      return parts.time.minute;
    case 's':
      return parts.time.second;
    default:
      return -1;
  }
}

// How many digits a run of that letter asks for; 0 when it is no field and stands for itself.
int digitsOf(char letter, std::size_t run) noexcept {
  if (letter == 'y') return run == 4 || run == 2 ? static_cast<int>(run) : 0;
  return run <= 2 ? static_cast<int>(run) : 0;
}

std::string formatted(const Parts& parts, std::string_view pattern) {
  const bool halfDays = hasHalfDay(pattern);
  std::string out;
  char before = '\0';  // the field in front: m behind an hour means minutes
  std::size_t at = 0;
  while (at < pattern.size()) {
    if (halfDays && halfDayAt(pattern, at)) {
      out += halfDayOf(parts.time.hour);
      at += kHalfDay.size();
      continue;
    }
    char letter = lower(pattern[at]);
    std::size_t run = 1;
    while (at + run < pattern.size() && lower(pattern[at + run]) == letter) ++run;
    if (letter == 'm' && before == 'h') letter = 'n';
    const int number = numberOf(parts, letter, halfDays);
    const int digits = number < 0 ? 0 : digitsOf(letter, run);
    if (digits > 0) {
      out += zeroFilled(letter == 'y' && digits == 2 ? number % 100 : number, digits);
      before = letter;
    } else {
      out += pattern.substr(at, run);
    }
    at += run;
  }
  return out;
}

void requireWidth(int width) {
  if (width < 0) throw RuntimeError(ErrorNumber::invalidCall);
}

struct ByPattern {
  std::string_view pattern;
  std::string operator()(std::monostate) const { return {}; }
  std::string operator()(std::int64_t) const { throw RuntimeError(ErrorNumber::typeMismatch); }
  std::string operator()(const std::string&) const {
    throw RuntimeError(ErrorNumber::typeMismatch);
  }
  template <class Moment>
  std::string operator()(Moment moment) const {
    return Format(moment, pattern);
  }
};

}  // namespace

std::string Format(DateTime moment, std::string_view pattern) {
  return formatted({civil(moment.date), clockTime(moment.time)}, pattern);
}

std::string Format(Date date, std::string_view pattern) {
  return Format(DateTime{date, {}}, pattern);
}

std::string Format(TimeOfDay time, std::string_view pattern) {
  return Format(DateTime{{}, time}, pattern);
}

std::string Format(const Value& value, std::string_view pattern) {
  return std::visit(ByPattern{pattern}, value);
}

std::string zeroFilled(std::int64_t number, int digits) {
  std::string text = std::to_string(number);
  const std::size_t sign = number < 0 ? 1 : 0;
  const std::size_t wanted = digits < 0 ? 0 : static_cast<std::size_t>(digits);
  if (text.size() - sign < wanted) text.insert(sign, wanted - (text.size() - sign), '0');
  return text;
}

std::string defaultText(Date date) { return defaultText(DateTime{date, {}}); }

std::string defaultText(TimeOfDay time) { return Format(time, "h:nn:ss AM/PM"); }

std::string defaultText(DateTime moment) {
  if (moment.date == Date{}) return defaultText(moment.time);
  const std::string text = Format(moment.date, "m/d/yyyy");
  return moment.time == TimeOfDay{} ? text : concat(text, " ", defaultText(moment.time));
}

std::string fixedCode(std::int64_t code, int width) {
  requireWidth(width);
  return Right(concat(std::string(static_cast<std::size_t>(width), '0'), code), width);
}

std::string fixedText(std::string_view text, int width) {
  requireWidth(width);
  return Left(concat(text, std::string(static_cast<std::size_t>(width), ' ')), width);
}

}  // namespace bw
