#include "engine/Rewriter.h"

#include "tests/text/Raised.h"
#include "text/Text.h"

namespace bw {
namespace {

std::string rewritten(std::string_view statement, SqlDialect dialect = SqlDialect::sqlite) {
  return rewriteStatement(statement, dialect).text;
}

using Cases = std::vector<std::pair<std::string_view, std::string_view>>;

TEST(Rewriter, MakesDatesCanonicalAndALimitOfTheLeadingTop) {
  const Cases cases{
      {"a=#06/15/2003#", "a='2003-06-15'"},
      {"a=#2003/6/5#,b=#14:05:09#", "a='2003-06-05',b='14:05:09'"},
      {"(#2003/06/15 14:05:09#)", "('2003-06-15 14:05:09')"},
      {"DELETE FROM a;", "DELETE FROM a"},
      {"DELETE FROM a ; \r\n", "DELETE FROM a "},
      {"SELECT TOP 1 * FROM a ORDER BY b DESC", "SELECT * FROM a ORDER BY b DESC LIMIT 1"},
      {" select\n top  25 a FROM b ; ", " select a FROM b  LIMIT 25"},
      {"SELECT TOP 1 a FROM b WHERE c=#06/15/2003# AND d=';'",
       "SELECT a FROM b WHERE c='2003-06-15' AND d=';' LIMIT 1"},
      {"SELECT TOP 1*FROM a", "SELECT*FROM a LIMIT 1"}};
  for (const auto& [from, to] : cases) EXPECT_EQ(rewritten(from), to);
}

// A limit at the end would bear on the whole statement.
TEST(Rewriter, LeavesQuotedTextBracketedNamesAndOtherTopsAlone) {
  for (const char* statement : {"",
                                "SELECT * FROM Charges",
                                "a='#06/15/2003#'",
                                "a='SELECT TOP 1 -- /* ; ? :x @y $z \" ` #'",
                                "a='it''s #1', b=''''",
                                "SELECT [a -- 'b #;?] FROM [SELECT TOP 1]",
                                "'[' , ']'",
                                "['],[']",
                                "a-1-b/2*3",
                                "a = - -5",
                                "'é' || :",
                                "x ]",
                                "a='two\nlines\\'",
                                "SELECT TOP FROM a",
                                "SELECT TOP 1a FROM b",
                                "SELECT TOP 1.5 FROM b",
                                "SELECT [TOP] 1 FROM b",
                                "SELECT STOP 1",
                                "SELECTED TOP 1",
                                "DELETE FROM a WHERE b IN (SELECT TOP 1 b FROM a)",
                                "SELECT * FROM (SELECT TOP 1 b FROM a)",
                                "UPDATE a SET b='x', d='y'"})
    EXPECT_EQ(rewritten(statement), statement);
}

TEST(Rewriter, RefusesWhatWouldChangeTheStatementsMeaning) {
  using namespace std::string_view_literals;
  // A word of the refusal, and what is refused so.
  const std::vector<std::pair<const char*, std::vector<std::string_view>>> groups{
      {"quote", {"a='O'Brien'", "a='", "a='x''", "'a' 'b", "UPDATE a SET b='x\\'', c='d'"}},
      {"bracket", {"SELECT [a FROM b", "[", "'a' ["}},
      {"date",
       {"a=#", "a=#06/15/2003", "a=#2/30/2003#", "a=#x' AND b='#", "a=#6/15/03#",
        "a='it's #1 'x' WHERE c=1"}},
      {"missing", {"a=##", "a=# # AND b=1"}},
      {"comments", {"a=1 -- b", "a='x' --' WHERE c=1", "a='x' --'", "--", "a/**/b", "a /* b"}},
      {"character", {"a=\"b\"", "a=`b`", "a=1\0"sv, "a='x\0'"sv, "[a\0b]"sv}},
      {"parameters", {"a=?", "a=?1", "a=:b", "a=@b", "a=$b", "a=:é", "a::b"}},
      {"end of the statement",
       {"a;b", "a;;", "a; -- b", "DELETE FROM a; DELETE FROM b",
        "a='x'; DELETE FROM a; --' WHERE c=1"}}};
  for (const auto& [word, statements] : groups)
    for (const std::string_view statement : statements) {
      const auto rewrite = [statement] { return rewritten(statement); };
      EXPECT_EQ(raisedBy(rewrite), ErrorNumber::database) << statement;
      EXPECT_NE(refusalOf(rewrite).find(word), std::string::npos)
          << statement << ": " << refusalOf(rewrite);
    }
}

// The shape, and its values behind slashes.
std::string shapeOf(std::string_view from, SqlDialect dialect = SqlDialect::sqlite) {
  const EngineStatement statement = rewriteStatement(from, dialect);
  std::string told = statement.shape;
  for (const StatementValue& value : statement.values) {
    const auto* number = std::get_if<std::int64_t>(&value);
    told += number ? concat(" / ", *number) : concat(" / '", std::get<std::string>(value), "'");
  }
  return told;
}

// Only what stands plainly behind an equals sign is a value; most statements have no shape.
TEST(StatementShape, HasTheValuesBehindEqualsSigns) {
  const Cases cases{{"SELECT * FROM a WHERE b=7", "SELECT * FROM a WHERE b=? / 7"},
                    {"update a set b = 1, c='x y' where d = '' and [e=5]=6",
                     "update a set b = ?, c=? where d = ? and [e=5]=? / 1 / 'x y' / '' / 6"},
                    {"DELETE FROM a WHERE (b=1)", "DELETE FROM a WHERE (b=?) / 1"},
                    {"SELECT TOP 1 * FROM a WHERE b >= #6/5/2003# AND c=#14:05:09#;",
                     "SELECT * FROM a WHERE b >= ? AND c=? LIMIT 1 / '2003-06-05' / '14:05:09'"},
                    {"SELECT '=5', 'it''s =5' FROM a WHERE b>=2 AND c=d",
                     "SELECT '=5', 'it''s =5' FROM a WHERE b>=? AND c=d / 2"},
                    {"SELECT b FROM a WHERE c=5 ORDER BY 1 LIMIT 2",
                     "SELECT b FROM a WHERE c=? ORDER BY 1 LIMIT 2 / 5"}};
  for (const auto& [statement, shape] : cases) EXPECT_EQ(shapeOf(statement), shape);
  for (const char* value :
       {"-5", "1.5", "1e3", "0x10", "9223372036854775808", "5a", "b", "'it''s'"})
    EXPECT_EQ(shapeOf(concat("SELECT * FROM a WHERE b=", value)), "") << value;
  for (const char* statement :
       {"", "SELECT", "SELECT * FROM a", "INSERT INTO a VALUES (1)", "PRAGMA user_version=3"})
    EXPECT_EQ(shapeOf(statement), "") << statement;
}

TEST(Rewriter, SpellsMomentsNamesAndPlacesForAServer) {
  const Cases cases{
      {"a=#06/15/2003#,b=#14:05:09#", "a=DATE '2003-06-15',b=TIME '14:05:09'"},
      {"(#2003/06/15 14:05:09#, '[B] #1')", "(TIMESTAMP '2003-06-15 14:05:09', '[B] #1')"},
      {"SELECT TOP 1 [Names] FROM [Patient a]", "SELECT \"names\" FROM \"patient a\" LIMIT 1"}};
  for (const auto& [from, to] : cases) EXPECT_EQ(rewritten(from, SqlDialect::postgres), to);
  EXPECT_EQ(shapeOf("UPDATE a SET [B]=#6/5/2003#, c='x' WHERE d = 7", SqlDialect::postgres),
            "UPDATE a SET \"b\"=$1, c=$2 WHERE d = $3 / '2003-06-05' / 'x' / 7");
  EXPECT_EQ(
      shapeOf("INSERT INTO a ([B], c) VALUES (7, #6/5/2003#,NULL , 'x')", SqlDialect::postgres),
      "INSERT INTO a (\"b\", c) VALUES ($1, $2,NULL , $3) / 7 / '2003-06-05' / 'x'");
  for (const char* rest :
       {"1), (2)", "-1)", "f(1))", "'it''s')", "1, 'a' || 'b')", "1) RETURNING b"})
    EXPECT_EQ(rewriteStatement(concat("INSERT INTO a VALUES (", rest), SqlDialect::postgres).shape,
              "")
        << rest;
  EXPECT_THROW(rewritten("SELECT [a\" = 1 OR \"b] FROM c", SqlDialect::postgres), RuntimeError);
}

// A refusal is explained by the apostrophe only where there is one.
TEST(Rewriter, TellsATextThatEndsTooEarlyFromAWholeOne) {
  for (const char* value : {"O'Brien", "'s", "Jones'", "'", "rock 'n roll", "it''s O'Neil's"}) {
    const std::string text(value);
    for (const std::string& statement : {"UPDATE a SET b='" + text + "', c='' WHERE d = 1",
                                         "INSERT INTO a VALUES (1, '" + text + "','X')"})
      EXPECT_TRUE(hasCutText(statement)) << statement;
  }
  for (const char* statement :
       {"UPDATE a SET b='O''Brien', c='O’Neil' WHERE d = 1", "INSERT INTO a VALUES (1, '','')",
        "INSERT INTO a VALUES ('Jones''', '''s', '''')", "DELETE FROM a WHERE b = 1"})
    EXPECT_FALSE(hasCutText(statement)) << statement;
}

}  // namespace
}  // namespace bw
