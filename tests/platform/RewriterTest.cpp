#include "platform/Rewriter.h"

#include <gtest/gtest.h>

#include "platform/RuntimeError.h"

namespace bw {
namespace {

TEST(Rewriter, MakesDatesCanonical) {
  const std::vector<std::pair<const char*, const char*>> cases{
      {"a=#06/15/2003#", "a='2003-06-15'"},
      {"a=#2003/6/5#,b=#14:05:09#", "a='2003-06-05',b='14:05:09'"},
      {"(#2003/06/15 14:05:09#)", "('2003-06-15 14:05:09')"}};
  for (const auto& [from, to] : cases) EXPECT_EQ(rewriteStatement(from), to);
}

TEST(Rewriter, LeavesQuotedTextAndBracketedNamesAlone) {
  for (const char* statement :
       {"", "SELECT * FROM Charges", "a='#06/15/2003#'",
        "a='SELECT TOP 1 -- /* ; ? :x @y $z \" ` #'", "a='it''s #1', b=''''",
        "SELECT [a -- 'b #;?] FROM [SELECT TOP 1]", "'[' , ']'", "['],[']", "a-1-b/2*3", "a = - -5",
        "'é' || :", "x ]", "a='two\nlines\\'"})
    EXPECT_EQ(rewriteStatement(statement), statement);
}

TEST(Rewriter, TurnsTopIntoALimitOnlyBehindTheLeadingSelect) {
  const std::vector<std::pair<const char*, const char*>> cases{
      {"SELECT TOP 1 * FROM a ORDER BY b DESC", "SELECT * FROM a ORDER BY b DESC LIMIT 1"},
      {" select\n top  25 a FROM b ; ", " select a FROM b  LIMIT 25"},
      {"SELECT TOP 1 a FROM b WHERE c=#06/15/2003# AND d=';'",
       "SELECT a FROM b WHERE c='2003-06-15' AND d=';' LIMIT 1"},
      {"SELECT TOP 1*FROM a", "SELECT*FROM a LIMIT 1"},
      {"SELECT TOP FROM a", "SELECT TOP FROM a"},
      {"SELECT TOP 1a FROM b", "SELECT TOP 1a FROM b"},
      {"SELECT TOP 1.5 FROM b", "SELECT TOP 1.5 FROM b"},
      {"SELECT [TOP] 1 FROM b", "SELECT [TOP] 1 FROM b"},
      {"SELECT STOP 1", "SELECT STOP 1"},
      {"SELECTED TOP 1", "SELECTED TOP 1"},
      // A limit at the end would bear on the whole statement.
      {"DELETE FROM a WHERE b IN (SELECT TOP 1 b FROM a)",
       "DELETE FROM a WHERE b IN (SELECT TOP 1 b FROM a)"},
      {"SELECT * FROM (SELECT TOP 1 b FROM a)", "SELECT * FROM (SELECT TOP 1 b FROM a)"}};
  for (const auto& [from, to] : cases) EXPECT_EQ(rewriteStatement(from), to);
}

TEST(Rewriter, DropsTheSemicolonAtTheEnd) {
  EXPECT_EQ(rewriteStatement("DELETE FROM a;"), "DELETE FROM a");
  EXPECT_EQ(rewriteStatement("DELETE FROM a ; \r\n"), "DELETE FROM a ");
}

std::string refusalOf(std::string_view statement) {
  try {
    return "accepted: " + rewriteStatement(statement);
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.number(), ErrorNumber::database);
    return error.text();
  }
}

TEST(Rewriter, RefusesWhatWouldChangeTheStatementsMeaning) {
  using namespace std::string_view_literals;
  struct Group {
    const char* word;  // of the refusal
    std::vector<std::string_view> statements;
  };
  const std::vector<Group> groups{
      {"quote", {"a='O'Brien'", "a='", "a='x''", "'a' 'b", "UPDATE a SET b='x\\'', c='d'"}},
      {"bracket", {"SELECT [a FROM b", "[", "'a' ["}},
      {"date", {"a=#", "a=#06/15/2003", "a=##", "a=#2/30/2003#", "a=#x' AND b='#", "a=#6/15/03#"}},
      {"comments", {"a=1 -- b", "a='x' --'", "--", "a/**/b", "a /* b"}},
      {"character", {"a=\"b\"", "a=`b`", "a=1\0"sv, "a='x\0'"sv, "[a\0b]"sv}},
      {"parameters", {"a=?", "a=?1", "a=:b", "a=@b", "a=$b", "a=:é", "a::b"}},
      {"end of the statement", {"a;b", "a;;", "a; -- b", "DELETE FROM a; DELETE FROM b"}}};
  for (const Group& group : groups)
    for (const std::string_view statement : group.statements)
      EXPECT_NE(refusalOf(statement).find(group.word), std::string::npos)
          << statement << ": " << refusalOf(statement);
}

TEST(Rewriter, SeesAQuoteInAValueShiftInsideAndOutside) {
  const auto update = [](std::string_view value) {
    return refusalOf("UPDATE a SET b='" + std::string(value) + "' WHERE c=1");
  };
  EXPECT_NE(update("O'Brien").find("quote"), std::string::npos);
  EXPECT_NE(update("x' --").find("comments"), std::string::npos);
  EXPECT_NE(update("x'; DELETE FROM a; --").find("end of the statement"), std::string::npos);
  EXPECT_NE(update("it's #1 'x").find("date"), std::string::npos);
  // A value that completes the statement works as it stands.
  EXPECT_EQ(rewriteStatement("UPDATE a SET b='x', d='y'"), "UPDATE a SET b='x', d='y'");
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
