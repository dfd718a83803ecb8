#include "viewer/CsvExport.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/viewer/SampleDocument.h"

namespace bw {

namespace {

std::string csvOf(const std::string& text) {
  std::string csv;
  const Document document{DocumentBytes(text)};
  const auto goOn = [](std::size_t, std::size_t) { return true; };
  EXPECT_TRUE(exportCsv(
      document, [&csv](std::string_view piece) { csv += piece; }, goOn));
  EXPECT_EQ(csv.substr(0, 3), "\xEF\xBB\xBF");
  return csv.substr(3);
}

std::string at(int x, int y, const std::string& text, int page = 1) {
  return sampleText({.page = page,
                     .box = std::to_string(x) + ',' + std::to_string(y) + ",1440,360",
                     .text = text});
}

}  // namespace

TEST(CsvExport, CellsKeepTheirColumnsInRowsWithoutAName) {
  EXPECT_EQ(csvOf(sampleHead() + at(100, 500, "Full") + at(110, 500, "name") +
                  at(2000, 500, "Code") + at(100, 716, "Moira") + at(2000, 716, "401.1") +
                  at(2000, 932, "402.1") + at(2000, 716, "403.1", 2)),
            "Full name,Code\r\nMoira,401.1\r\n,402.1\r\n,403.1\r\n");
}

TEST(CsvExport, FieldsAreQuotedWhereTheyMustBe) {
  EXPECT_EQ(csvOf(sampleHead() + at(100, 500, "a,b") + at(900, 500, "say \"x\"") +
                  at(1800, 500, " plain") + at(2700, 500, "Mu\xF1oz \x80")),
            "\"a,b\",\"say \"\"x\"\"\", plain,Mu\xC3\xB1oz \xE2\x82\xAC\r\n");
}

TEST(CsvExport, DocumentThatIsNoTableHasItsCellsInARow) {
  std::string text = sampleHead();
  std::string expected;
  for (int i = 0; i < 1200; ++i) {
    text += at(i * 30, 500, "c");
    expected += i == 0 ? "c" : ",c";
  }
  EXPECT_EQ(csvOf(text), expected + "\r\n");
}

TEST(CsvExport, EndsWhenToldTo) {
  const Document document{DocumentBytes(sampleList(500))};
  for (const std::size_t last : {0U, 3U, 12U}) {
    std::size_t pieces = 0;
    EXPECT_FALSE(exportCsv(
        document, [&pieces](std::string_view) { ++pieces; },
        [last](std::size_t done, std::size_t) { return done < last; }));
    EXPECT_LE(pieces, document.pageCount());
  }
}

}  // namespace bw
