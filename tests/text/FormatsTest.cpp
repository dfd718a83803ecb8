#include "text/Formats.h"

#include <gtest/gtest.h>

#include "tests/text/Raised.h"

namespace bw {
namespace {

const Date kDay = *makeDate(2003, 6, 5);
const TimeOfDay kTime = *makeTime(14, 7, 9);

// Only the first m behind the hour means minutes.
TEST(Format, TellsMinutesFromMonths) {
  // clang-format off
  const std::vector<std::pair<const char*, const char*>> cases{
      {"mm/dd/yyyy", "06/05/2003"}, {"mm/dd/yy", "06/05/03"}, {"m/d/yyyy", "6/5/2003"},
      {"yyyy/mm/dd hh:MM:ss", "2003/06/05 14:07:09"},
      {"YYYY/MM/DD HH:MM:SS", "2003/06/05 14:07:09"}, {"hh:MM:ss", "14:07:09"},
      {"hhmm mm", "1407 06"}, {"h:m:s", "14:7:9"}, {"hh:nn:ss AM/PM", "02:07:09 PM"},
      {"nn mm", "07 06"}, {"[mmm] ddd y yyy", "[mmm] ddd y yyy"}, {"", ""}};
  // clang-format on
  for (const auto& [pattern, text] : cases)
    EXPECT_EQ(Format(DateTime{kDay, kTime}, pattern), text) << pattern;
}

TEST(Format, TakesAnyMomentAndNullButNothingElse) {
  EXPECT_EQ(Format(Value(), "mm/dd/yyyy"), "");
  EXPECT_EQ(Format(Value(kDay), "mm/dd/yyyy hh:nn"), "06/05/2003 00:00");
  EXPECT_EQ(Format(Value(kTime), "yyyy hh"), "1899 14");
  EXPECT_EQ(raisedBy([] { return Format(Value("6/5/2003"), "mm"); }), ErrorNumber::typeMismatch);
}

TEST(DefaultTextOfMoment, LeavesOutWhatIsZero) {
  EXPECT_EQ(defaultText(kDay), "6/5/2003");
  EXPECT_EQ(defaultText(*makeDate(203, 6, 5)), "6/5/0203");  // or it could not be read back
  EXPECT_EQ(defaultText(DateTime{kDay, {}}), "6/5/2003");
  EXPECT_EQ(defaultText(DateTime{kDay, kTime}), "6/5/2003 2:07:09 PM");
  EXPECT_EQ(defaultText(DateTime{{}, kTime}), "2:07:09 PM");
  EXPECT_EQ(defaultText(DateTime{}), "12:00:00 AM");
  EXPECT_EQ(defaultText(*makeTime(12, 0, 0)), "12:00:00 PM");
  EXPECT_EQ(defaultText(*makeTime(0, 5, 0)), "12:05:00 AM");
}

TEST(FixedWidth, CutsAndFillsByCharacters) {
  EXPECT_EQ(zeroFilled(12, 10), "0000000012");
  EXPECT_EQ(zeroFilled(-12, 4), "-0012");
  EXPECT_EQ(zeroFilled(12345, 2), "12345");
  EXPECT_EQ(fixedCode(12, 5), "00012");
  EXPECT_EQ(fixedCode(100001, 5), "00001");
  EXPECT_EQ(fixedText("abc", 5), "abc  ");
  EXPECT_EQ(fixedText("abcdef", 5), "abcde");
  EXPECT_EQ(fixedText("Muñoz é", 6), "Muñoz ");
  EXPECT_EQ(fixedText("ñ", 3), "ñ  ");
  EXPECT_EQ(raisedBy([] { return fixedCode(1, -1); }), ErrorNumber::invalidCall);
}

}  // namespace
}  // namespace bw
