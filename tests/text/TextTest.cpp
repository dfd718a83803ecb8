#include "text/Text.h"

#include "tests/text/Raised.h"

namespace bw {
namespace {

TEST(Positions, CountCharactersAndGiveWhatThereIs) {
  // clang-format off
  const std::vector<std::pair<std::string, const char*>> cases{
      {Left("ñandú", 2), "ña"}, {Right("ñandú", 2), "dú"}, {Mid("ñandú", 2, 3), "and"},
      {Mid("ñandú", 5), "ú"}, {Left("abc", 5), "abc"}, {Right("abc", 5), "abc"}, {Left("abc", 0), ""},
      {Right("abc", 0), ""}, {Mid("abc", 3, 5), "c"}, {Mid("abc", 4), ""}, {Mid("abc", 99, 2), ""}};
  // clang-format on
  for (const auto& [text, expected] : cases) EXPECT_EQ(text, expected);
  for (const auto& call : {+[] { return Left("abc", -1); }, +[] { return Right("abc", -1); },
                           +[] { return Mid("abc", 1, -1); }, +[] { return Mid("abc", 0); }})
    EXPECT_EQ(raisedBy(call), ErrorNumber::invalidCall);
}

TEST(Positions, OfIllFormedTextCountEachBadByte) {
  // Overlong, surrogate, above the last code point, stray, cut off at the end.
  // clang-format off
  const std::vector<std::pair<const char*, std::size_t>> cases{
      {"Muñoz €𝄞", 8}, {"\xc0\xaf", 2}, {"\xed\xa0\x80", 3}, {"\xf4\x90\x80\x80", 4}, {"a\x80z", 3},
      {"a\xe2\x82", 3}};
  // clang-format on
  for (const auto& [text, characters] : cases) EXPECT_EQ(length(text), characters) << text;
  EXPECT_EQ(Mid("a\xff\xc3\xb1", 3), "ñ");
  EXPECT_EQ(toWindows1252("\xe2\x82"), "??");
}

TEST(InStr, ComparesExactly) {
  EXPECT_EQ(InStr("ñandú", "ú"), 5U);
  EXPECT_EQ(InStr("Names", "names"), 0U);
  EXPECT_EQ(InStr(";12;305;", ";305;"), 4U);
  EXPECT_EQ(InStr("abc", ""), 1U);
  EXPECT_EQ(InStr("", ""), 0U);
}

TEST(Folding, IgnoresCaseOfEveryLetterButKeepsAccents) {
  EXPECT_EQ(fold("PEÑA Éva"), "peña éva");
  EXPECT_EQ(fold("Straße"), "strasse");
  EXPECT_FALSE(sameName("É", "é"));
  EXPECT_TRUE(sameName("[Status]", "[sTATUS]"));
  EXPECT_FALSE(sameName("Status", "Statu"));
  EXPECT_EQ(fold("MASSE é"), fold("Maße É"));
  EXPECT_EQ(fold("K"), fold("\u212A"));  // the Kelvin sign folds to an ASCII letter
}

TEST(CodePage, KeepsWhatItHasAndMarksTheRest) {
  EXPECT_EQ(toWindows1252("plain"), "plain");
  EXPECT_EQ(toWindows1252("ñ€ÿ\u00a0"), "\xf1\x80\xff\xa0");
  EXPECT_EQ(toWindows1252("‘’“”–—™Ÿž…"), "\x91\x92\x93\x94\x96\x97\x99\x9f\x9e\x85");
  EXPECT_EQ(toWindows1252("漢𝄞\u0080\u0081x"), "????x");
}

template <class Piece>
concept Joinable = requires(Piece piece) {
  concat(piece);
};

TEST(Concat, TakesTextsAndWholeNumbersOfEverySize) {
  EXPECT_EQ(concat("a", std::string("b"), std::string_view("c"), std::int16_t{-1}, std::int32_t{2},
                   std::int64_t{-3}, std::size_t{4}, 0),
            "abc-12-340");
  EXPECT_FALSE(Joinable<bool> || Joinable<char> || Joinable<char16_t> || Joinable<float> ||
               Joinable<double>);
}

}  // namespace
}  // namespace bw
