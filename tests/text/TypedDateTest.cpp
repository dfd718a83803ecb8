#include "text/TypedDate.h"

#include <gtest/gtest.h>

#include "text/Formats.h"

namespace bw {
namespace {

// A date is shown in full; "!" and a part of the reason stands for none.
std::string read(const char* typed, Date today, bool birth) {
  const TypedDate result = readTypedDate(typed, {.today = today,
                                                 .first = *makeDate(1800, 1, 1),
                                                 .last = *makeDate(9999, 12, 31),
                                                 .birth = birth});
  EXPECT_NE(result.date.has_value(), !result.reason.empty());
  return result.date ? Format(*result.date, "mm/dd/yyyy") : "!" + result.reason;
}

struct Case {
  const char* typed;
  const char* result;
  const char* birth = nullptr;  // where a date of birth is read in another way
};

// A reason is compared as far as it is told here.
void expectReads(Date today, const std::vector<Case>& cases) {
  for (const auto& [typed, result, birth] : cases) {
    const std::string expected = result;
    const std::string found = read(typed, today, false);
    EXPECT_EQ(expected.front() == '!' ? found.substr(0, expected.size()) : found, expected)
        << typed;
    EXPECT_EQ(read(typed, today, true), birth == nullptr ? found : birth) << typed << ", birth";
  }
}

TEST(TypedDateTest, NoTextIsTakenForAnotherDate) {
  // clang-format off
  expectReads(*makeDate(2026, 11, 25), {
      // As a whole.
      {"12302025", "12/30/2025"}, {"02292024", "02/29/2024"}, {"1/5/2026", "01/05/2026"},
      {"10-1-2025", "10/01/2025"}, {"1.5.26", "01/05/2026"}, {"  3 / 7  1999 ", "03/07/1999"},
      {"2026-01-05", "01/05/2026"},
      // A year of two digits: at most a year ahead.
      {"12/30/25", "12/30/2025"}, {"11/25/27", "11/25/2027", "11/25/1927"}, {"11/26/27", "11/26/1927"},
      {"11/26/26", "11/26/2026", "11/26/1926"}, {"022900", "02/29/2000"},
      // Short: not after tomorrow.
      {"26", "11/26/2026", "10/26/2026"}, {"27", "10/27/2026"}, {"11/27", "11/27/2025"},
      {"2-29", "02/29/2024"}, {"t", "11/25/2026"}, {" T ", "11/25/2026"}, {"+3", "11/28/2026"},
      {"- 10", "11/15/2026"},
      // None.
      {"", "!There is no date. Month, day, year: 11/25/2026."},
      {"123", "!3 digits are no date, six or eight are. Month, day, year: 11/25/2026."},
      {"13012026", "!There is no month 13. Month, day, year: 11/25/2026."},
      {"0/5/2026", "!There is no month 0"}, {"13/5", "!There is no month 13"},
      {"02/29/2023", "!February 2023 has 28 days."}, {"2/29/51", "!February 1951 has 28 days."},
      {"11/31/2026", "!November 2026 has 30 days."}, {"2/30", "!February has 29 days at most."},
      {"1/0/2026", "!No month has a day 0."}, {"32", "!No month has a day 32."},
      {"1/5/202", "!A year has two digits or four."}, {"1/5/", "!This is no date."},
      {"1//5/2026", "!This is no date."}, {"1/5/2026/7", "!This is no date."},
      {"Jan 5", "!This is no date."}, {"+", "!This is no date."}, {"\u0661\u0662", "!This is no date."},
      {"12/31/1799", "!Only dates from 01/01/1800 to 12/31/9999 can be taken."},
      {"+99999999", "!Only dates from"}, {"+000000000001", "!Only dates from"}});
  // clang-format on
}

TEST(TypedDateTest, BoundsThatFallOnTheEndOfAMonthHold) {
  // clang-format off
  expectReads(*makeDate(2024, 2, 29), {
      {"1", "03/01/2024", "02/01/2024"}, {"29", "02/29/2024"}, {"30", "01/30/2024"},
      {"2/28/25", "02/28/2025", "02/28/1925"}, {"3/1/25", "03/01/1925"}, {"2/29", "02/29/2024"},
      {"2/29/00", "02/29/2000"}});
  expectReads(*makeDate(2025, 12, 31), {{"1/1", "01/01/2026", "01/01/2025"}, {"1", "01/01/2026", "12/01/2025"}});
  expectReads(*makeDate(2103, 3, 1), {{"2/29", "02/29/2096"}});
  // clang-format on
}

}  // namespace
}  // namespace bw
