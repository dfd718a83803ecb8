#include "tests/viewer/SampleDocument.h"

#include <array>
#include <string_view>

namespace bw {

namespace {

struct Column {
  std::string_view head;
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
constexpr int kLimit = 14400;
constexpr std::string_view kLook = ",,,0,,Times New Roman,10,0,1,,";

void addItem(std::string& out, int page, int x, int y, int width, int height,
             std::string_view middle, std::string_view text) {
  for (const int number : {page, x, y, width, height}) {
    out += std::to_string(number);
    out += ',';
  }
  out += middle;
  out += text;
  out += "\r\n";
}

void addPageHead(std::string& out, int page) {
  const std::string number = std::to_string(page) + " of #TotalPaginas";
  addItem(out, page, 720, 720, 1440, 288, ",0,0,0,,,0,,Times New Roman,12,1,1,,", "Brantiwell");
  addItem(out, page, 720, 1008, 1440, 288, ",0,0,0,,,0,,Times New Roman,12,1,1,,", "");
  addItem(out, page, 9360, 720, 1440, 216, ",0,0,0,,,0,,Times New Roman,10,0,1,,", "Page:");
  addItem(out, page, 9360, 720, 1440, 216, "1,0,2,0,,,0,,Times New Roman,10,1,1,,", number);
  addItem(out, page, 720, 720, 10080, 288, ",0,1,0,,,0,,Times New Roman,14,1,1,,",
          "Patients (All)");
  for (const Column& column : kColumns) {
    addItem(out, page, column.x, 1800, column.width, 360, "0,2,,,,,12895428,12895428,,,,,1.44,",
            "");
    addItem(out, page, column.x + 72, 1800, column.width, 360,
            ",0,0,1,,,0,,Times New Roman,10,1,1,,", column.head);
  }
}

void addFoot(std::string& out, int page) {
  addItem(out, page, 720, kLimit + 720, 10224, 72, "0,2,,,,,12895428,12895428,,,,,14.4,", "");
}

std::string cellText(std::size_t column, int row, const std::string& extra) {
  const std::string number = std::to_string(row);
  switch (column) {
    case 0:
      return std::to_string(100000 + row);
    case 1:
      return "Aldern, Moira " + number;
    case 2:
      return "6/15/1961" + extra;
    case 3:
      return "Port Wessel";
    case 4:
      return "555-" + std::to_string(1000 + row % 9000);
    case 5:
      return "Harrow Mutual \xE9\x80";
    default:
      return "Dr. Pell";
  }
}

}  // namespace

std::string sampleList(int rows, const std::string& extra) {
  std::string out = sampleHead();
  out.reserve(static_cast<std::size_t>(rows) * 600);
  int page = 0;
  int y = kLimit;
  for (int row = 1; row <= rows; ++row) {
    if (y + kRowStep > kLimit) {
      if (page > 0) addFoot(out, page);
      addPageHead(out, ++page);
      y = kFirstRow;
    }
    for (std::size_t i = 0; i < kColumns.size(); ++i) {
      const std::string middle = ",0,0,1" + std::string(kLook);
      addItem(out, page, kColumns[i].x + 72, y, kColumns[i].width - 72, 360, middle,
              cellText(i, row, extra));
    }
    y += kRowStep;
  }
  if (page > 0) addFoot(out, page);
  return out;
}

}  // namespace bw
