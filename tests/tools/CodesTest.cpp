#include "data/CodeBooks.h"
#include "tests/tools/ToolsTest.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

class CodesTest : public ToolsTest {
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
    out_.str("");
    folder_.write(name, text);
    EXPECT_EQ(importCodes(folder_ / name, file_, code, out_), Exit::done);
    return out_.str();
  }
  std::string refusal(const std::string& text) {
    return refusalOf([&] { bring("wrong", text); });
  }
  std::string book(CodeBook which) const { return cellsOf(*readCodeBook(file_ + ".codes", which)); }
  CodeState state(CodeBook which, const char* typed) const {
    return codeState(file_ + ".codes", which, typed);
  }
};

TEST_F(CodesTest, BothBooksAreReadAndASecondImportChangesNothing) {
  const std::string order = line("Q0111A", true, "Mársh fvr, l", "Mársh's fever,  left") + "\n" +
                            line("Q01", false, "Fever", "Fever of quillworts");
  EXPECT_TRUE(has(bring("order.txt", order), {"2 codes (new: 2, changed: 0, gone: 0)"}));
  EXPECT_TRUE(has(bring("p.txt",
                        "\xEF\xBB\xBFHCPC,SEQ,\"Long Description\",Short description\n"
                        "A1,1,Modifier,Mod\n"
                        "K0102,1,\"Sling, for\nthe arm\",Sling\n"
                        "K0101,1,Boot,Boot\nK0101,2,for the foot,Boot\n"),
                  {"Left out: 1 modifiers.\nHCPCS: 2 codes (new: 2"}));
  EXPECT_EQ(book(CodeBook::diagnoses),
            "Q01|Fever of quillworts|Fever|heading|Q01.11A|Mársh's fever, left|Mársh fvr, l||");
  EXPECT_EQ(book(CodeBook::procedures),
            "K0101|Boot for the foot|Boot||K0102|Sling, for the arm|Sling||");

  const std::string before = folder_.read("office.db.codes");
  const auto written = fs::last_write_time(file_ + ".codes");
  EXPECT_TRUE(has(bring("again.txt", order), {"(new: 0, changed: 0, gone: 0)"}));
  EXPECT_EQ(fs::last_write_time(file_ + ".codes"), written);
  EXPECT_EQ(folder_.read("office.db.codes"), before);

  // The book of the next year, of a spreadsheet of the old code page.
  EXPECT_TRUE(has(bring("next.txt", line("Q01", true, "Fever", "F\xE9ver"), TextCode::windows1252),
                  {"1 codes (new: 0, changed: 1, gone: 1)"}));
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
  for (const auto& [text, told] : cases) EXPECT_TRUE(has(refusal(text), {told}));
  EXPECT_EQ(folder_.read("office.db.codes"), before);
  file_ = folder_ / "mistyped/office.db";
  EXPECT_TRUE(has(refusal(line("Q01", true, "a", "b")), {"no folder"}));
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
    EXPECT_LE(readCodeBook(file_ + ".codes", CodeBook::diagnoses)->rowCount(), 1U);
  }
}

}  // namespace
}  // namespace bw
