#include "viewer/CsvExport.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/viewer/SampleDocument.h"

// What the reports' own documents come out as stands in tests/reports/golden.

namespace bw {

namespace {

std::string csvOf(const std::string& text) {
  std::string csv;
  EXPECT_TRUE(exportCsv(
      Document{DocumentBytes(text)}, [&csv](std::string_view piece) { csv += piece; },
      [](std::size_t, std::size_t) { return true; }));
  EXPECT_EQ(csv.substr(0, 3), "\xEF\xBB\xBF");
  return csv.substr(3);
}

std::string at(int x, int y, const std::string& text, int page = 1) {
  return sampleText({.page = page,
                     .box = std::to_string(x) + ',' + std::to_string(y) + ",1440,360",
                     .text = text});
}

std::string head(int x, const std::string& text, int page = 1) {
  const std::string box = std::to_string(x) + ",500,1440,360";
  return sampleShape(page, box) +
         sampleText({.page = page, .box = box, .look = "10,1,1", .text = text});
}

}  // namespace

TEST(CsvExport, FieldsAreQuotedAndNeverCalculated) {
  EXPECT_EQ(csvOf(sampleHead() + head(100, "A") + head(2000, "=B") + at(100, 700, " a,b ") +
                  at(2000, 700, "say \"x\"") + at(100, 900, "Mu\xF1oz \x80") +
                  at(2000, 900, "=1+1") + at(100, 1100, "  +cmd, x") + at(2000, 1100, "-12.50") +
                  at(100, 1300, "@a") + at(2000, 1300, "-2+3")),
            "A,'=B\r\n\"a,b\",\"say \"\"x\"\"\"\r\nMu\xC3\xB1oz \xE2\x82\xAC,'=1+1\r\n"
            "\"'+cmd, x\",-12.50\r\n'@a,'-2+3\r\n");
}

// The second row's first cell and the third one's last are left out for their numbers.
TEST(CsvExport, DamagedItemsLeaveTheOthersInTheirColumns) {
  const std::string unusable = sampleText({.box = "100,900,nan,360", .text = "lost"});
  EXPECT_EQ(csvOf(sampleHead() + head(100, "A") + head(2000, "B") + head(4000, "C") +
                  at(100, 700, "a1") + at(2000, 700, "b1") + at(4000, 700, "c1") + unusable +
                  at(2000, 900, "b2") + at(4000, 900, "c2") + at(100, 1100, "a3") +
                  at(2000, 1100, "b3") + unusable + head(100, "A", 2) + at(100, 700, "a4", 2)),
            "A,B,C\r\na1,b1,c1\r\n,b2,c2\r\na3,b3,\r\na4,,\r\n");
}

TEST(CsvExport, DocumentWithoutHeadsOrCaptionsHasItsRowsOneByOne) {
  EXPECT_EQ(csvOf(sampleHead() + at(2000, 500, "right") + at(100, 505, "left") +
                  at(100, 900, "below") + at(300, 500, "next", 2)),
            "left,right\r\nbelow\r\nnext\r\n");
}

TEST(CsvExport, CaptionWithTheNumberOfPagesIsOneColumn) {
  const auto box = [](int page) {
    return sampleText({.page = page, .flags = "1,0,0,1", .look = "6,0,0", .text = "#TotalPaginas"});
  };
  EXPECT_EQ(csvOf(sampleHead() + box(1) + at(100, 500, "a") + box(2) + at(100, 500, "b", 2)),
            "1\r\na\r\nb\r\n");
}

TEST(CsvExport, EndsWhenToldTo) {
  const std::string boxes = sampleHead() + sampleText({.look = "6,0,0", .text = "Patient"}) +
                            at(100, 500, "a") + at(100, 500, "b", 9);
  for (const std::string& text : {sampleList(500), boxes})
    for (const std::size_t last : {0U, 3U, 11U}) {
      std::size_t pieces = 0;
      EXPECT_FALSE(exportCsv(
          Document{DocumentBytes(text)}, [&pieces](std::string_view) { ++pieces; },
          [last](std::size_t done, std::size_t) { return done < last; }));
      EXPECT_LE(pieces, 3U);
    }
}

}  // namespace bw
