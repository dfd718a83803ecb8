#include "viewer/Document.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/tools/TemporaryFolder.h"
#include "tests/viewer/SampleDocument.h"
#include "viewer/TextRows.h"
#include "viewer/Windows1252.h"

namespace bw {

namespace {

Document documentOf(const std::string& text) { return Document(DocumentBytes(text)); }

std::string textsOf(const Document& document, std::size_t page) {
  return utf8(plainText(textRows(document.parse(page).items), document.pageCount()));
}

std::string cell(int page, const std::string& text) {
  return sampleText({.page = page, .text = text});
}

std::string manyPages(int count) {
  std::string text = sampleHead();
  for (int page = 1; page <= count; ++page) text += cell(page, "p");
  return text;
}

TEST(Document, DamageNamesItsLineAndTheRestIsShown) {
  const std::string head = sampleHead();
  const struct {
    std::string text;
    Fault fault;
    std::size_t line, pages;
  } cases[] = {
      {head + cell(1, "a") + cell(2, "b"), Fault::none, 0, 2},
      {"MYVIEWER10,8,11", Fault::unended, 1, 0},
      {"", Fault::empty, 1, 0},
      {std::string("\x00\xFF\n\n,,", 6), Fault::foreign, 1, 0},
      {sampleHead("nan,11") + cell(3, "a"), Fault::pageSize, 1, 3},
      {"MYVIEWER10,8\r\n" + cell(1, "a"), Fault::pageSize, 1, 1},
      {head + cell(1, "a") + "1,2,3\r\n" + cell(2, "b"), Fault::fields, 3, 2},
      {head + cell(1, "a") + cell(2, "b") + "\r\n" + cell(1, "c") + sampleShape(1, "1e308,1,1,1"),
       Fault::number, 6, 2},
      {head + cell(0, "a"), Fault::pageNumber, 2, 0},
      {manyPages(200) + cell(9000, "b") + cell(201, "c"), Fault::pageNumber, 202, 201},
      {head + cell(9'000'000, "b") + cell(9'000'000, "c"), Fault::pageNumber, 2, 0},
      {manyPages(200) + cell(240, "b") + cell(241, "c"), Fault::none, 0, 241},
      {head + cell(1, "a") + cell(1'000'000'000, "b"), Fault::pageNumber, 3, 1},
      {manyPages(150'000), Fault::none, 0, 150'000},
      {head + cell(1, std::string(10'000'000, ',')), Fault::tooLong, 2, 0},
      {head + cell(1, "a") + cell(1, "cut").substr(0, 60), Fault::unended, 3, 1},
  };
  for (const auto& [text, fault, line, pages] : cases) {
    SCOPED_TRACE(text.substr(0, 200));
    const Document document = documentOf(text);
    const auto damages = allDamages(document, [](std::size_t, std::size_t) { return true; });
    ASSERT_EQ(damages.value().size(), fault == Fault::none ? 0U : 1U);
    if (!damages->empty()) {
      EXPECT_EQ(damages->front().fault, fault);
      EXPECT_EQ(damages->front().line, line);
    }
    EXPECT_EQ(document.pageCount(), pages);
    EXPECT_EQ(sentences(*damages).starts_with("Line " + std::to_string(line)),
              fault != Fault::none && fault != Fault::empty);
  }
}

TEST(Document, DamagesAreToldTogetherEachAtItsFirstLine) {
  const Document document = documentOf(sampleHead("0,0") + cell(1, "a") + cell(0, "b") +
                                       cell(1, "c") + "1,2\r\n" + cell(-7, "d") + "1,936");
  const auto damages = allDamages(document, [](std::size_t, std::size_t) { return true; });
  EXPECT_EQ(sentences(*damages),
            "Line 1 holds no usable page size: pages of 8 by 11 inches are shown instead. "
            "Line 3 is damaged: its page number cannot be used. What it describes is left out. "
            "Line 7, the last one, has no end: the report may be cut off there. "
            "Line 5 is damaged: some of its fields are missing. What it describes is left out. "
            "Print the report again.");
  EXPECT_EQ(textsOf(document, 1), "a\tc\n");
}

TEST(Document, PagesScatteredOverTheFileComeTogether) {
  const Document document = documentOf(sampleHead() + cell(3, "c1") + cell(1, "a1") + "\r\n" +
                                       cell(3, "c2") + cell(1, "a2") + cell(1, "a3"));
  ASSERT_EQ(document.pageCount(), 3U);
  EXPECT_EQ(textsOf(document, 1), "a1\ta2\ta3\n");
  EXPECT_EQ(textsOf(document, 2), "");
  EXPECT_EQ(textsOf(document, 3), "c1\tc2\n");
  EXPECT_TRUE(document.parse(4).items.empty());
}

TEST(PageItems, FieldsOfAText) {
  const auto item = parseItem("1,720,-7.5,1440,288,1,0,2,1,,,32768,,Times New Roman,12,1,0,,a,b,");
  ASSERT_TRUE(item);
  EXPECT_EQ(item->kind, ItemKind::text);
  EXPECT_EQ(item->x, 720);
  EXPECT_EQ(item->y, -7.5);
  EXPECT_EQ(item->align, Align::end);
  EXPECT_EQ(item->valign, Align::centre);
  EXPECT_EQ(item->colour, 0x8000U);
  EXPECT_EQ(item->fontSize, 12);
  EXPECT_TRUE(item->bold && item->caption && item->pageTotal);
  EXPECT_EQ(item->text, "a,b,");
}

TEST(PageItems, OutlineIsTheFirstColourAndInsideTheSecond) {
  const auto item = parseItem("2,720,1,2,3,0,2,,,,,0,16777215,,,,,28.8,");
  ASSERT_TRUE(item);
  EXPECT_EQ(item->kind, ItemKind::shape);
  EXPECT_EQ(item->colour, 0U);
  EXPECT_EQ(item->fill, 0xFFFFFFU);
  EXPECT_EQ(item->lineWidth, 28.8);
}

TEST(PageItems, NumbersThatCannotBeUsedLeaveTheItemOut) {
  const auto isTaken = [](const std::string& box, const char* kind, const std::string& size) {
    return parseItem("1," + box + ",," + kind + ",0,0,,,0,,Times New Roman," + size + ",0,1,,t");
  };
  for (const char* box : {"nan,0,1,1", "inf,0,1,1", "1e308,0,1,1", "-1e9,0,1,1", "0x10,0,1,1",
                          ",0,1,1", " 1,0,1,1", "1,2,3,1e400"})
    EXPECT_FALSE(isTaken(box, "0", "10")) << box;
  for (const char* size : {"0", "-1", "1000000000", "nan", ""})
    EXPECT_FALSE(isTaken("0,0,1,1", "0", size)) << size;
  EXPECT_FALSE(isTaken("0,0,1,1", "1", "10"));
  EXPECT_TRUE(isTaken("1E-05,0,-72,1", "0", "10"));
}

TEST(PageItems, TokenIsReplacedOnlyWhereItIsFlagged) {
  PageItem item;
  item.text = "3 of #TotalPaginas";
  EXPECT_EQ(itemText(item, 12), u"3 of #TotalPaginas");
  item.pageTotal = true;
  EXPECT_EQ(itemText(item, 12), u"3 of 12");
}

TEST(Windows1252, BytesAboveAsciiAndControls) {
  EXPECT_EQ(fromWindows1252("A\xE9\x80\x9F\x81\t\x7F"), u"A\u00E9\u20AC\u0178\uFFFD  ");
  EXPECT_EQ(utf8(u"A\u00E9\u20AC"), "A\xC3\xA9\xE2\x82\xAC");
}

TEST(TextRows, OrderOfReadingWithoutCaptionsAndShapes) {
  const Document document =
      documentOf(sampleHead() + sampleText({.box = "5000,1000,1,1", .text = "right"}) +
                 sampleText({.box = "100,1216,1,1", .text = "below"}) +
                 sampleText({.box = "100,1014.4,1,1", .text = "left"}) +
                 sampleText({.box = "100,1000,1,1", .look = "6,0,0", .text = "caption"}) +
                 sampleText({.box = "90,1000,1,1", .text = ""}) + sampleShape(1, "1,1000,1,1"));
  EXPECT_EQ(textsOf(document, 1), "left\tright\nbelow\n");
}

TEST(Document, BigFileThatShrinksWhileItIsShown) {
  const TemporaryFolder folder;
  const std::string text = sampleList(20'000);
  ASSERT_GT(text.size(), DocumentBytes::kInMemory);
  folder.write("list.myv", text);
  std::error_code error;
  const auto document = Document::open(folder / "list.myv", error);
  ASSERT_TRUE(document) << error.message();
  folder.write("list.myv", "MYVIEWER10,8,11\r\n");
  EXPECT_NE(textsOf(*document, document->pageCount()).find("120000\t"), std::string::npos);
}

TEST(Document, WhatIsNoRegularFileIsRefused) {
  const TemporaryFolder folder;
  std::error_code error;
  EXPECT_EQ(Document::open(folder / "none", error), nullptr);
  EXPECT_EQ(error, std::errc::no_such_file_or_directory);
  EXPECT_EQ(Document::open(folder.path(), error), nullptr);
  EXPECT_EQ(error, std::errc::is_a_directory);
  EXPECT_EQ(Document::open("/dev/zero", error), nullptr);
  EXPECT_TRUE(error);
}

}  // namespace

}  // namespace bw
