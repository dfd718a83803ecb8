#include "tests/viewer/SampleDocument.h"

#include <array>

namespace bw {

namespace {

struct Column {
  const char* head;
  int x;      // twips
  int width;  // twips
};

constexpr std::array kColumns = {
    Column{"Account", 864, 720},  Column{"Name", 1656, 2160},  Column{"Birth", 3888, 864},
    Column{"City", 4824, 1440},   Column{"Phone", 6336, 1440}, Column{"Insurance", 7848, 1800},
    Column{"Doctor", 9720, 1440},
};
constexpr int kRowStep = 216;
constexpr int kFirstRow = 2088;
constexpr int kRowsOfPage = 57;

std::string boxOf(const Column& column, int y, int indent) {
  return std::to_string(column.x + indent) + ',' + std::to_string(y) + ',' +
         std::to_string(column.width - indent) + ",360";
}

void addPageHead(std::string& out, int page) {
  const auto add = [&](const char* box, const char* flags, const char* look,
                       const std::string& text) {
    out += sampleText({page, box, flags, look, text});
  };
  add("720,720,1440,288", ",0,0,0", "12,1,1", "Brantiwell");
  add("720,1008,1440,288", ",0,0,0", "12,1,1", "");
  add("9360,720,1440,216", ",0,0,0", "10,0,1", "Page:");
  add("9360,720,1440,216", "1,0,2,0", "10,1,1", std::to_string(page) + " of #TotalPaginas");
  add("720,720,10080,288", ",0,1,0", "14,1,1", "Patients (All)");
  for (const Column& column : kColumns) {
    out += sampleShape(page, boxOf(column, 1800, 0));
    const std::string box = boxOf({column.head, column.x, column.width + 72}, 1800, 72);
    add(box.c_str(), ",0,0,1", "10,1,1", column.head);
  }
}

}  // namespace

std::string sampleList(int rows, const std::string& extra) {
  std::string out = sampleHead();
  out.reserve(static_cast<std::size_t>(rows) * 600);
  for (int row = 1; row <= rows; ++row) {
    const int page = (row - 1) / kRowsOfPage + 1;
    const int place = (row - 1) % kRowsOfPage;
    if (place == 0) addPageHead(out, page);
    const std::array<std::string, kColumns.size()> cells = {
        std::to_string(100000 + row),
        "Aldern, Moira " + std::to_string(row),
        "6/15/1961" + extra,
        "Port Wessel",
        "555-" + std::to_string(1000 + row % 9000),
        "Harrow Mutual \xE9\x80",
        "Dr. Pell"};
    for (std::size_t i = 0; i < cells.size(); ++i)
      out += sampleText({.page = page,
                         .box = boxOf(kColumns[i], kFirstRow + place * kRowStep, 72),
                         .text = cells[i]});
    if (place == kRowsOfPage - 1 || row == rows)
      out += sampleShape(page, "720,15120,10224,72", "12895428,12895428", "14.4");
  }
  return out;
}

}  // namespace bw
