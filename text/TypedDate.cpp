#include "text/TypedDate.h"

#include <array>
#include <utility>
#include <vector>

#include "text/Formats.h"
#include "text/Text.h"

namespace bw {
namespace {

constexpr const char* kPattern = "mm/dd/yyyy";

struct Number {
  int value = 0;
  std::size_t digits = 0;
};
using Numbers = std::vector<Number>;

// Off the front. Digits beyond kMostDigits are counted and not valued.
constexpr std::size_t kMostDigits = 8;
Number takeNumber(std::string_view& text) noexcept {
  Number number;
  for (; number.digits < text.size() && isDigit(text[number.digits]); ++number.digits)
    if (number.digits < kMostDigits) number.value = number.value * 10 + (text[number.digits] - '0');
  text.remove_prefix(number.digits);
  return number;
}

// A separator off the front: one sign, blanks around it, or blanks alone.
bool takeSeparator(std::string_view& text) noexcept {
  const std::size_t before = text.size();
  text = Trim(text);
  if (!text.empty() && std::string_view("/-.").find(text.front()) != std::string_view::npos)
    text = Trim(text.substr(1));
  return text.size() < before;
}

// One to three numbers; none when the text holds anything else.
Numbers takeNumbers(std::string_view text) {
  Numbers numbers;
  do {
    numbers.push_back(takeNumber(text));
    if (numbers.back().digits == 0) return {};
    if (text.empty()) return numbers;
  } while (numbers.size() < 3 && takeSeparator(text));
  return {};
}

int daysIn(int year, int month) noexcept {
  int days = 31;
  while (!makeDate(year, month, days)) --days;
  return days;
}

std::string monthName(int month) {
  constexpr std::array<const char*, 12> kNames{"January",   "February", "March",    "April",
                                               "May",       "June",     "July",     "August",
                                               "September", "October",  "November", "December"};
  return kNames[static_cast<std::size_t>(month - 1)];
}

// The first of the candidates, which go back in time, that is a day and not after the bound.
template <class Candidate>
std::optional<Date> latest(Date bound, int candidates, Candidate candidate) {
  for (int back = 0; back < candidates; ++back) {
    const std::optional<Date> date = candidate(back);
    if (date && *date <= bound) return date;
  }
  return std::nullopt;
}

class Reader {
 public:
  explicit Reader(const DateRules& rules) : rules_(rules), now_(civil(rules.today)) {}

  TypedDate read(std::string_view text) const {
    if (text.empty()) return refuse("There is no date.");
    if (text == "t" || text == "T") return within(rules_.today);
    if (text.front() == '+' || text.front() == '-') return fromToday(text);
    const Numbers numbers = takeNumbers(text);
    switch (numbers.size()) {
      case 1:
        return oneNumber(numbers[0]);
      case 2:
        return latestDayOfYear(numbers[0], numbers[1]);
      case 3:
        return numbers[0].digits == 4 ? whole(numbers[1], numbers[2], numbers[0])
                                      : whole(numbers[0], numbers[1], numbers[2]);
      default:
        return refuse("This is no date.");
    }
  }

 private:
  // With today as the example.
  TypedDate refuse(const std::string& reason) const {
    return {std::nullopt, reason + " Month, day, year: " + Format(rules_.today, kPattern) + "."};
  }

  TypedDate within(std::optional<Date> date) const {
    if (date && *date >= rules_.first && *date <= rules_.last) return {date, {}};
    return {std::nullopt, concat("Only dates from ", Format(rules_.first, kPattern), " to ",
                                 Format(rules_.last, kPattern), " can be taken.")};
  }

  TypedDate fromToday(std::string_view text) const {
    const bool back = text.front() == '-';
    text = Trim(text.substr(1));
    const Number days = takeNumber(text);
    if (days.digits == 0 || !text.empty()) return refuse("This is no date.");
    if (days.digits > kMostDigits) return within({});
    return within(Date{rules_.today.day + (back ? -days.value : days.value)});
  }

  TypedDate oneNumber(const Number& number) const {
    const int n = number.value;
    switch (number.digits) {
      case 1:
      case 2:
        return latestDayOfMonth(n);
      case 6:
        return whole({n / 10000, 2}, {n / 100 % 100, 2}, {n % 100, 2});
      case 8:
        return whole({n / 1000000, 2}, {n / 10000 % 100, 2}, {n % 10000, 4});
      default:
        return refuse(concat(number.digits, " digits are no date, six or eight are."));
    }
  }

  Date bound() const { return Date{rules_.today.day + (rules_.birth ? 0 : 1)}; }

  TypedDate latestDayOfMonth(int day) const {
    if (day < 1 || day > 31) return noDay(concat("No month has a day ", day, "."));
    return within(latest(bound(), 13, [&](int back) {
      const int months = now_.year * 12 + now_.month - back;  // from the month after this one on
      return makeDate(months / 12, months % 12 + 1, day);
    }));
  }

  TypedDate latestDayOfYear(const Number& month, const Number& day) const {
    if (month.digits > 2 || day.digits > 2) return refuse("This is no date.");
    if (auto refused = checkMonth(month.value, day.value)) return *refused;
    constexpr int kLeapYear = 2000;
    if (!makeDate(kLeapYear, month.value, day.value))
      return noDay(concat(monthName(month.value), " has ", daysIn(kLeapYear, month.value),
                          " days at most."));
    constexpr int kYearsBetweenLeapDays = 8;
    return within(latest(bound(), kYearsBetweenLeapDays + 2, [&](int back) {
      return makeDate(now_.year + 1 - back, month.value, day.value);
    }));
  }

  TypedDate whole(const Number& month, const Number& day, const Number& year) const {
    if (month.digits > 2 || day.digits > 2) return refuse("This is no date.");
    if (year.digits != 2 && year.digits != 4) return refuse("A year has two digits or four.");
    if (auto refused = checkMonth(month.value, day.value)) return *refused;
    const auto date = year.digits == 4 ? makeDate(year.value, month.value, day.value)
                                       : latestOfShortYear(month.value, day.value, year.value);
    if (date) return within(date);
    const int told =
        year.digits == 4 ? year.value : yearOf(latestOfShortYear(month.value, 1, year.value));
    if (told < 1) return within({});
    return noDay(
        concat(monthName(month.value), " ", told, " has ", daysIn(told, month.value), " days."));
  }

  std::optional<Date> latestOfShortYear(int month, int day, int shortYear) const {
    const int ahead = rules_.birth ? 0 : 1;
    const Date bound = makeDate(now_.year + ahead, now_.month, now_.day)
                           .value_or(makeDate(now_.year + ahead, 2, 28).value_or(Date{}));
    constexpr int kCenturiesBetweenLeapDays = 8;
    const int next = (now_.year / 100 + 1) * 100 + shortYear;
    return latest(bound, kCenturiesBetweenLeapDays + 2,
                  [&](int back) { return makeDate(next - back * 100, month, day); });
  }

  static int yearOf(std::optional<Date> date) { return date ? civil(*date).year : 0; }

  std::optional<TypedDate> checkMonth(int month, int day) const {
    if (month < 1 || month > 12) return refuse(concat("There is no month ", month, "."));
    if (day < 1) return noDay("No month has a day 0.");
    return std::nullopt;
  }

  static TypedDate noDay(std::string reason) { return {std::nullopt, std::move(reason)}; }

  const DateRules& rules_;
  Civil now_;
};

}  // namespace

TypedDate readTypedDate(std::string_view text, const DateRules& rules) {
  return Reader(rules).read(Trim(text));
}

}  // namespace bw
