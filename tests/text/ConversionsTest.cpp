#include "text/Conversions.h"

#include <cmath>
#include <functional>
#include <limits>

#include "tests/text/Raised.h"
#include "text/Value.h"

namespace bw {
namespace {

TEST(TextToInteger, ReadsTheWholeGrammarAndRoundsHalvesToEven) {
  // clang-format off
  const std::vector<std::pair<const char*, std::int16_t>> cases{
      {"7", 7}, {" 7 ", 7}, {"00012", 12}, {"12.5", 12}, {"13.5", 14}, {"-0.5", 0}, {"-13.5", -14},
      {"+5.", 5}, {".6", 1}, {"1,234", 1234}, {"1,2,3", 123}, {"1.5E+2", 150}, {"3d1", 30},
      {"32767.4", 32767}, {"-32768", -32768}, {"&H1f", 31}, {"&o17", 15}, {"&HFFFF", -1},
      {"0000000000000000000000000000000000000000000000000000000000000000000000000000000042", 42},
      {"2.00000000000000000000000000000000000000000000000000000000000000000000000000000001", 2}};
  // clang-format on
  for (const auto& [text, number] : cases) EXPECT_EQ(toInt16(text), number) << text;
}

TEST(TextToInteger, RefusesWhatIsNoNumber) {
  for (const char* text : {"",    " ",    "x",     "7x",    "x7",   "-",   "--7", "- 7", ".",
                           "1 2", "1,",   ",1",    "1,,2",  "1e",   "1e+", "&",   "&H",  "&HG",
                           "&O8", "-&H1", "1.2.3", "1.2,3", "0x10", "nan", "inf", "7\n", "\t7"})
    EXPECT_EQ(raisedBy([&] { return toInt32(text); }), ErrorNumber::typeMismatch) << text;
}

TEST(TextToInteger, RefusesWhatIsOutOfRange) {
  for (const char* text : {"32767.5", "32768", "40000", "-32769", "1e400", "-1e400", "&H10000"})
    EXPECT_EQ(raisedBy([&] { return toInt16(text); }), ErrorNumber::overflow) << text;
  for (const char* text : {"2147483648", "-2147483649", "99999999999999999999", "&H100000000"})
    EXPECT_EQ(raisedBy([&] { return toInt32(text); }), ErrorNumber::overflow) << text;
  EXPECT_EQ(toInt32("2147483647"), std::numeric_limits<std::int32_t>::max());
  EXPECT_EQ(toInt32("-2147483648"), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(toSingle("1e-400"), 0.0F);
  EXPECT_EQ(toSingle("0.1"), 0.1F);
}

TEST(NumberToInteger, RoundsHalvesToEvenAndOverflowsAtTheBounds) {
  EXPECT_EQ(toInt16(8.5), 8);
  EXPECT_EQ(toInt16(9.5), 10);
  EXPECT_EQ(add16(32766, 1), 32767);
  const std::function<void()> overflows[] = {
      [] { toInt16(32767.5); }, [] { toInt32(std::nan("")); },
      [] { toInt32(std::int64_t{1} << 31); }, [] { add16(32767, 1); }, [] { toSingle("1e39"); }};
  for (const auto& call : overflows) EXPECT_EQ(raisedBy(call), ErrorNumber::overflow);
}

TEST(Val, ReadsAsMuchAsThereIsAndNeverFails) {
  // clang-format off
  const std::vector<std::pair<const char*, double>> cases{
      {"", 0}, {"x", 0}, {"20 03x", 2003}, {"1,5", 1}, {" 7 ", 7}, {"-\t1\n2", -12}, {"1.5.5", 1.5},
      {"1e", 1}, {"1e+x", 1}, {"2D2", 200}, {".5", 0.5}, {"-", 0}, {"&H1F", 31}, {"&HFFFF", -1},
      {"&O17", 15}, {"&HG", 0}, {"12;305;", 12}, {"0.1", 0.1}, {"1e-999999999999", 0},
      {"1e999999999999", std::numeric_limits<double>::max()}};
  // clang-format on
  for (const auto& [text, number] : cases) EXPECT_EQ(Val(text), number) << text;
}

TEST(NumberToText, HasNeitherSurplusDigitsNorALocale) {
  // clang-format off
  const std::vector<std::pair<std::string, const char*>> cases{
      {textOf(0.5), "0.5"}, {textOf(-72.0), "-72"}, {textOf(-0.0), "0"}, {textOf(0.1 + 0.2), "0.3"},
      {textOf(1e15), "1E+15"}, {textOf(123456789012345.0), "123456789012345"},
      {textOf(2.5e-7), "2.5E-07"}, {textOf(0.65 * 1440.0), "936"},
      {textOf(0.65F * 1440.0F), "935.9999"}, {textOf(1.0F / 3.0F), "0.3333333"},
      {Str(25000), " 25000"}, {Str(0), " 0"}, {Str(-5), "-5"}};
  // clang-format on
  for (const auto& [text, expected] : cases) EXPECT_EQ(text, expected);
}

TEST(Round, SendsHalvesToTheEvenDigit) {
  EXPECT_EQ(Round(0.125, 2), 0.12);
  EXPECT_EQ(Round(0.375, 2), 0.38);
  EXPECT_EQ(Round(2.5, 0), 2);
  EXPECT_EQ(Round(-3.5, 0), -4);
  EXPECT_EQ(Round(1e300, 9), 1e300);
  EXPECT_EQ(raisedBy([] { return Round(1, -1); }), ErrorNumber::invalidCall);
}

TEST(WriteToField, ConvertsToTheFieldsTypeOrRefuses) {
  using enum FieldType;
  using enum ErrorNumber;
  const Date day = *makeDate(2003, 6, 15);
  const TimeOfDay clock = *makeTime(14, 5, 9);
  const DateTime both{day, clock};
  struct Case {
    FieldType type;
    Value from;
    Value to;
    std::optional<ErrorNumber> refusal = {};
  };
  // clang-format off
  const std::vector<Case> cases{
      {smallint, "00012", std::int64_t{12}}, {integer, " 12.5 ", std::int64_t{12}},
      {FieldType::text, std::int64_t{7}, "7"}, {FieldType::text, both, "6/15/2003 2:05:09 PM"},
      {untyped, clock, clock}, {date, both, day}, {date, "6/15/2003", day}, {time, both, clock},
      {time, "2:05:09 PM", clock}, {dateTime, day, DateTime{day, {}}},
      {dateTime, clock, DateTime{{}, clock}}, {dateTime, "2003/06/15 14:05:09", both},
      {smallint, {}, {}}, {date, {}, {}},
      {integer, "", {}, wrongType}, {integer, Date{5}, {}, wrongType}, {date, "2/30/2003", {}, wrongType},
      {date, TimeOfDay{5}, {}, wrongType}, {time, std::int64_t{5}, {}, wrongType},
      {smallint, "40000", {}, multipleStep}, {smallint, std::int64_t{-32769}, {}, multipleStep},
      {integer, "1e400", {}, multipleStep}};
  // clang-format on
  for (const auto& [type, from, to, refusal] : cases) {
    Value found;
    EXPECT_EQ(raisedBy([&, type = type, &from = from] { found = convertedTo(type, from); }),
              refusal);
    EXPECT_EQ(found, to) << textOrEmpty(from);
  }
}

}  // namespace
}  // namespace bw
