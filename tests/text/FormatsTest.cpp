#include "text/Formats.h"

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
  // clang-format off
  const std::vector<std::pair<DateTime, const char*>> cases{
      {{kDay, {}}, "6/5/2003"}, {{*makeDate(203, 6, 5), {}}, "6/5/0203"},  // or it could not be read back
      {{kDay, kTime}, "6/5/2003 2:07:09 PM"}, {{{}, kTime}, "2:07:09 PM"}, {{}, "12:00:00 AM"},
      {{{}, *makeTime(12, 0, 0)}, "12:00:00 PM"}, {{{}, *makeTime(0, 5, 0)}, "12:05:00 AM"}};
  // clang-format on
  for (const auto& [moment, text] : cases) EXPECT_EQ(defaultText(moment), text);
}

TEST(FixedWidth, CutsAndFillsByCharacters) {
  // clang-format off
  const std::vector<std::pair<std::string, const char*>> cases{
      {zeroFilled(12, 10), "0000000012"}, {zeroFilled(-12, 4), "-0012"}, {zeroFilled(12345, 2), "12345"},
      {fixedCode(12, 5), "00012"}, {fixedCode(100001, 5), "00001"}, {fixedText("abc", 5), "abc  "},
      {fixedText("abcdef", 5), "abcde"}, {fixedText("Muñoz é", 6), "Muñoz "}, {fixedText("ñ", 3), "ñ  "}};
  // clang-format on
  for (const auto& [text, expected] : cases) EXPECT_EQ(text, expected);
  EXPECT_EQ(raisedBy([] { return fixedCode(1, -1); }), ErrorNumber::invalidCall);
}

}  // namespace
}  // namespace bw
