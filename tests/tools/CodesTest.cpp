#include <gtest/gtest.h>

#include <sstream>

#include "data/CodeBooks.h"
#include "tests/tools/TemporaryFolder.h"
#include "text/Text.h"
#include "tools/Commands.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

class CodesTest : public testing::Test {
 protected:
  // A line of the order file.
  static std::string line(const std::string& code, bool billable, std::string shortTitle,
                          const std::string& title) {
    std::string text = concat("00001 ", code, std::string(8 - code.size(), ' '),
                              billable ? "1 " : "0 ", shortTitle);
    text.append(60 - length(shortTitle) + 1, ' ');
    return text + title + "\r\n";
  }
  std::string bring(const std::string& name, const std::string& text,
                    TextCode code = TextCode::utf8) {
    folder_.write(name, text);
    std::ostringstream out;
    EXPECT_EQ(importCodes(folder_ / name, database_, code, out), Exit::done);
    return out.str();
  }
  std::string refusal(const std::string& text) {
    folder_.write("wrong", text);
    std::ostringstream out;
    try {
      importCodes(folder_ / "wrong", database_, TextCode::utf8, out);
      return "taken";
    } catch (const Refused& refused) {
      return refused.what();
    }
  }
  std::string book(CodeBook which) const {
    const std::shared_ptr<RowStore> rows = readCodeBook(database_ + ".codes", which);
    std::string text;
    for (std::size_t row = 0; row < rows->rowCount(); ++row)
      for (const Column& column : rows->columns) text += textOrEmpty(column.value(row)) + "|";
    return text;
  }
  CodeState state(CodeBook which, const char* typed) const {
    return codeState(database_ + ".codes", which, typed);
  }

  TemporaryFolder folder_;
  std::string database_ = folder_ / "office.db";
};

TEST_F(CodesTest, BothBooksAreReadAndASecondImportChangesNothing) {
  const std::string order = line("Q0111A", true, "Mársh fvr, l", "Mársh's fever,  left") + "\n" +
                            line("Q01", false, "Fever", "Fever of quillworts");
  EXPECT_NE(bring("order.txt", order).find("2 codes (new: 2, changed: 0, gone: 0)"),
            std::string::npos);
  EXPECT_NE(bring("p.txt",
                  "\xEF\xBB\xBFHCPC,SEQ,\"Long Description\",Short description\n"
                  "A1,1,Modifier,Mod\n"
                  "K0102,1,\"Sling, for\nthe arm\",Sling\n"
                  "K0101,1,Boot,Boot\nK0101,2,for the foot,Boot\n")
                .find("Left out: 1 modifiers.\nHCPCS: 2 codes (new: 2"),
            std::string::npos);
  EXPECT_EQ(book(CodeBook::diagnoses),
            "Q01|Fever of quillworts|Fever|heading|Q01.11A|Mársh's fever, left|Mársh fvr, l||");
  EXPECT_EQ(book(CodeBook::procedures),
            "K0101|Boot for the foot|Boot||K0102|Sling, for the arm|Sling||");

  const std::string before = folder_.read("office.db.codes");
  const auto written = fs::last_write_time(database_ + ".codes");
  EXPECT_NE(bring("again.txt", order).find("(new: 0, changed: 0, gone: 0)"), std::string::npos);
  EXPECT_EQ(fs::last_write_time(database_ + ".codes"), written);
  EXPECT_EQ(folder_.read("office.db.codes"), before);

  // The book of the next year, of a spreadsheet of the old code page.
  EXPECT_NE(bring("next.txt", line("Q01", true, "Fever", "F\xE9ver"), TextCode::windows1252)
                .find("1 codes (new: 0, changed: 1, gone: 1)"),
            std::string::npos);
  EXPECT_EQ(book(CodeBook::diagnoses), "Q01|Féver|Fever||");
  EXPECT_NE(book(CodeBook::procedures), "");
}

TEST_F(CodesTest, WhatIsNoBookIsNamedByItsLineAndChangesNothing) {
  bring("order.txt", line("Q01", true, "Fever", "Fever"));
  const std::string before = folder_.read("office.db.codes");
  const struct {
    std::string text;
    const char* told;
  } cases[] = {
      {"", "no code book"},
      {"Code;Long\nK0101;Boot\n", "no code book"},
      {"Code,Long,Short\n", "no codes"},
      {"Code,Long,Short\nK0101,a,b\n12345,a,b\n", "line 3: \"12345\" is no code of HCPCS"},
      {"Code,Long,Short\nK0101,a\n", "line 2: it has another number of cells"},
      {line("Q01", true, "a", "b") + line("0016070", true, "a", "b"), "line 2: \"0016070\""},
      {line("Q01", true, "a", "b") + "00002 Q02     x a\n", "line 2: this is not laid out"},
      {line("Q01", true, "\xFF", "b"), "no text in UTF-8"}};
  for (const auto& [text, told] : cases)
    EXPECT_NE(refusal(text).find(told), std::string::npos) << told << " in " << refusal(text);
  EXPECT_EQ(folder_.read("office.db.codes"), before);
  database_ = folder_ / "mistyped/office.db";
  EXPECT_NE(refusal(line("Q01", true, "a", "b")).find("no folder"), std::string::npos);
  EXPECT_FALSE(fs::exists(folder_ / "mistyped"));
}

// One code is looked up without reading the others: every place of the file must be hit.
TEST_F(CodesTest, EachOfManyCodesIsFoundAndNoneBesideThem) {
  EXPECT_EQ(state(CodeBook::diagnoses, "Q01"), CodeState::unknown) << "without a file";
  std::string order;
  for (std::size_t i = 0; i < 500; i += 2) {
    std::string code = concat("B", 100 + i);
    order += line(code, i % 4 == 0, std::string(i % 60, 'x'), std::string(i % 97, 'y'));
  }
  bring("order.txt", order);
  for (int i = 0; i < 500; ++i) {
    const std::string typed = concat(" b", (100 + i) / 10, ".", i % 10, " ");
    EXPECT_EQ(state(CodeBook::diagnoses, typed.c_str()), i % 2 == 1   ? CodeState::notInBook
                                                         : i % 4 == 0 ? CodeState::inBook
                                                                      : CodeState::heading)
        << typed;
  }
  for (const char* beside : {"A00", "B10", "B599", "Z99", "B1000"})
    EXPECT_EQ(state(CodeBook::diagnoses, beside), CodeState::notInBook) << beside;
  for (const char* other : {"", "250.00", "B1", "B100.0", "B10.00000", "B10'0"})
    EXPECT_EQ(state(CodeBook::diagnoses, other), CodeState::unknown) << other;
  EXPECT_EQ(state(CodeBook::procedures, "B1000"), CodeState::unknown) << "that book is not there";
  bring("p.csv", "Code,Long,Short\nK0101,a,b\n");
  EXPECT_EQ(state(CodeBook::procedures, "k0101"), CodeState::inBook);
  EXPECT_EQ(state(CodeBook::procedures, "K0102"), CodeState::notInBook);
  EXPECT_EQ(state(CodeBook::procedures, "99213"), CodeState::unknown) << "another book's form";

  // Garbage is no book.
  for (const std::string& text : {std::string(), std::string("D\t"), std::string("\n\n\n"),
                                  std::string("D\tB100"), std::string("\0\xFF\nD", 4)}) {
    folder_.write("office.db.codes", text);
    EXPECT_NE(state(CodeBook::diagnoses, "B10.0"), CodeState::inBook);
    EXPECT_LE(readCodeBook(database_ + ".codes", CodeBook::diagnoses)->rowCount(), 1U);
  }
}

}  // namespace
}  // namespace bw
