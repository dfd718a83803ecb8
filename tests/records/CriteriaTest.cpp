#include "records/Criteria.h"

#include "tests/text/Raised.h"
#include "text/DateLiterals.h"

namespace bw {
namespace {

const Date kDay = *makeDate(2003, 6, 15);
const TimeOfDay kTime = *makeTime(14, 5, 9);

TEST(DateLiteral, IsReadInEveryOrder) {
  // clang-format off
  const std::vector<std::pair<const char*, Value>> cases{
      {"06/15/2003", kDay}, {"6/15/2003", kDay}, {"15/6/2003", kDay}, {"2003/6/15", kDay},
      {" 2003/06/15 ", kDay}, {"3/4/2003", *makeDate(2003, 3, 4)},
      {"2/29/2004", *makeDate(2004, 2, 29)}, {"14:05:09", kTime}, {"2:05:09 PM", kTime},
      {"02:05:09pm", kTime}, {"12:00:00 AM", *makeTime(0, 0, 0)},
      {"12:00:00 PM", *makeTime(12, 0, 0)}, {"2003/06/15 14:05:09", DateTime{kDay, kTime}},
      {"6/15/2003  2:05:09 PM", DateTime{kDay, kTime}}};
  // clang-format on
  for (const auto& [text, moment] : cases) EXPECT_EQ(parseDateLiteral(text), moment) << text;
}

TEST(DateLiteral, IsNoneWhenThereIsNoSuchMoment) {
  // clang-format off
  for (const char* text : {
      "", " ", "x", "2/30/2003", "2/29/2003", "13/13/2003", "2003/15/6", "0/1/2003", "6/15/03",
      "6/15", "6/15/2003/1", "6-15-2003", "2003/06/15T14:05:09", "24:00:00", "14:60:00", "14:05",
      "14:5:09", "14:05:9", "0:05:09 AM", "13:05:09 PM", "14:05:09 6/15/2003", "6/15/2003 x",
      "6/15/2003 14:05:09 x", "6 /15/2003", "12345/6/15", "6/15/20031", "+6/15/2003", "/ /"})
    // clang-format on
    EXPECT_EQ(parseDateLiteral(text), std::nullopt) << text;
}

TEST(Clause, ReadsNameSignAndValueWithBlanksAnywhere) {
  // clang-format off
  const std::vector<std::tuple<const char*, const char*, Comparison, Value>> cases{
      {"PatientId=7", "PatientId", Comparison::equal, std::int64_t{7}},
      {"  FacilityCode  =  -7  ", "FacilityCode", Comparison::equal, std::int64_t{-7}},
      {"[Real Code]<>'O''Brien'''", "Real Code", Comparison::notEqual, "O'Brien'"},
      {"a<+7.00", "a", Comparison::less, std::int64_t{7}},
      {"a_1<=7.", "a_1", Comparison::lessOrEqual, std::int64_t{7}},
      {"año>''", "año", Comparison::greater, ""},
      {"d>=#06/15/2003#", "d", Comparison::greaterOrEqual, kDay},
      {"ChargeTime = # 2:05:09 PM #", "ChargeTime", Comparison::equal, kTime},
      {"a=' and b=1'", "a", Comparison::equal, " and b=1"}};
  // clang-format on
  for (const auto& [text, name, comparison, value] : cases) {
    const Clause clause = parseClause(text);
    EXPECT_EQ(clause.name, name) << text;
    EXPECT_EQ(clause.comparison, comparison) << text;
    EXPECT_EQ(clause.value, value) << text;
  }
}

TEST(Clause, RefusesEverythingElse) {
  // clang-format off
  for (const char* text : {
      "", " ", "a", "a=", "=7", "a 7", "a=b", "a==7", "a=>7", "a like 'x'", "a=7.5", "a=7.0.0",
      "a=7x", "a=1e3", "a=+-7", "a=- 7", "a=99999999999999999999", "a=NULL", "a='x", "a='x''",
      "a='x'y'", "a=#6/15/2003", "a=#2/30/2003#", "a=##", "[a=7", "[]=7", "a b=7", "a=7 and b=8",
      "a=7 or b=8", "(a=7)", "a=7;", "a=\"x\""})
    // clang-format on
    EXPECT_EQ(raisedBy([&] { return parseClause(text); }), ErrorNumber::badArguments) << text;
}

// The parts as text: "&" and "|" for the joints, names for the clauses.
std::string shape(const Criteria& criteria) {
  std::string out;
  for (const Criteria::Part& part : criteria.parts) {
    if (part.joint == Criteria::Joint::both) out += '&';
    if (part.joint == Criteria::Joint::either) out += '|';
    out += part.group.empty() ? part.clause.name : "(" + shape(part.group) + ")";
  }
  return out;
}

TEST(Filter, KeepsTheOrderOfItsJoints) {
  // clang-format off
  const std::vector<std::pair<const char*, const char*>> cases{
      {"", ""}, {"  ", ""}, {"a=1", "a"}, {"a=1 and b=2 AND c=3", "a&b&c"},
      {"a=1 Or b=2 and c=3", "a|b&c"}, {"(a=1 and b=2) or (c=3)", "(a&b)|(c)"},
      {"(a=1 or b=2)", "(a|b)"}, {"(a=1 or b=2) or c=3 and d=4", "(a|b)|c&d"},
      {"a=1 and(b=2)and c=3", "a&(b)&c"}, {"a='x'and b=2", "a&b"}};
  // clang-format on
  for (const auto& [text, parts] : cases) EXPECT_EQ(shape(parseCriteria(text)), parts) << text;
}

TEST(Filter, RefusesOrGroupsBesideAndAndWhatCannotBeRead) {
  for (const char* text :
       {"(a=1 or b=2) and c=3", "c=3 and (a=1 or b=2)", "((a=1 or b=2)) and c=3",
        "a=1 and ((b=2) or c=3)", "d=4 or (a=1 and (b=2 or c=3))", "()", "(a=1", "a=1)", "a=1 and",
        "and a=1", "a=1 b=2", "a=1 xor b=2", "a=1 andb=2", "not a=1", "a=1,b=2"})
    EXPECT_EQ(raisedBy([&] { return parseCriteria(text); }), ErrorNumber::badArguments) << text;
}

TEST(Filter, BoundsTheDepthOfItsParentheses) {
  const auto nested = [](std::size_t depth) {
    return std::string(depth, '(') + "a=1" + std::string(depth, ')');
  };
  EXPECT_FALSE(parseCriteria(nested(32)).empty());
  EXPECT_EQ(raisedBy([&] { return parseCriteria(nested(33)); }), ErrorNumber::badArguments);
  EXPECT_EQ(raisedBy([&] { return parseCriteria(nested(1000000)); }), ErrorNumber::badArguments);
}

TEST(Sort, ReadsNamesAndDirections) {
  // clang-format off
  const std::vector<std::pair<const char*, const char*>> cases{
      {"", ""}, {" TypeDescription , Description ", "TypeDescription+Description+"},
      {"[Names] desc,b ASC", "Names-b+"}, {"descr, asc DESC", "descr+asc-"}, {"[a b]DESC", "a b-"}};
  // clang-format on
  for (const auto& [text, keys] : cases) {
    std::string read;
    for (const SortKey& key : parseSort(text)) read += key.name + (key.descending ? "-" : "+");
    EXPECT_EQ(read, keys) << text;
  }
  for (const char* text : {",", "a,", ",a", "a,,b", "a b", "a DESC ASC", "[a", "[]", "a;", "'a'"})
    EXPECT_EQ(raisedBy([&] { return parseSort(text); }), ErrorNumber::badArguments) << text;
}

}  // namespace
}  // namespace bw
