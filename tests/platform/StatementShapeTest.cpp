#include "platform/StatementShape.h"

#include <gtest/gtest.h>

#include "platform/Text.h"

namespace bw {
namespace {

std::string told(std::string_view statement) {
  const StatementShape shape = shapeOf(statement);
  std::string text = shape.text;
  for (const ShapeValue& value : shape.values) {
    text += " / ";
    if (const auto* number = std::get_if<std::int64_t>(&value))
      text += concat(*number);
    else
      text += concat("'", std::get<std::string_view>(value), "'");
  }
  return text;
}

TEST(StatementShape, TakesTheValuesBehindEqualsSigns) {
  const std::vector<std::pair<const char*, const char*>> cases{
      {"SELECT * FROM a WHERE b=7", "SELECT * FROM a WHERE b=? / 7"},
      {"update a set b = 1, c='x y' where d = '' and [e=5]=6",
       "update a set b = ?, c=? where d = ? and [e=5]=? / 1 / 'x y' / '' / 6"},
      {"DELETE FROM a WHERE (b=1)", "DELETE FROM a WHERE (b=?) / 1"},
      {"SELECT '=5', 'it''s =5' FROM a WHERE b>=2 AND c=d",
       "SELECT '=5', 'it''s =5' FROM a WHERE b>=? AND c=d / 2"}};
  for (const auto& [statement, shape] : cases) EXPECT_EQ(told(statement), shape);
}

TEST(StatementShape, LeavesWhatIsNoPlainValue) {
  for (const char* rest : {"-5", "1.5", "1e3", "0x10", "9223372036854775808", "5a", "b"})
    EXPECT_EQ(told(concat("SELECT * FROM a WHERE b=", rest)), "") << rest;
  EXPECT_EQ(told("SELECT b FROM a WHERE c=5 ORDER BY 1 LIMIT 2"),
            "SELECT b FROM a WHERE c=? ORDER BY 1 LIMIT 2 / 5");
}

TEST(StatementShape, MostStatementsHaveNone) {
  for (const char* statement :
       {"", "SELECT", "SELECT * FROM a", "INSERT INTO a VALUES (1)", "PRAGMA user_version=3",
        "BEGIN", "SELECT * FROM a WHERE b='it''s'", "UPDATE a SET b='open", "SELECT [a=5"})
    EXPECT_EQ(told(statement), "") << statement;
}

}  // namespace
}  // namespace bw
