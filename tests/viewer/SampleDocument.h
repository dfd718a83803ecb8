#pragma once

#include <string>

namespace bw {

// Documents as the reports write them, for tests and benches. Lines end in CR LF.

inline std::string sampleHead(const std::string& sizes = "8,11") {
  return "MYVIEWER10," + sizes + "\r\n";
}

struct SampleText {
  int page = 1;
  std::string box = "936,1800,1440,360";  // X, Y, W, H in twips
  std::string flags = ",0,0,1";           // fields 6 to 9
  std::string look = "10,0,1";            // size, bold, field 17
  std::string text;
};

inline std::string sampleText(const SampleText& item) {
  return std::to_string(item.page) + ',' + item.box + ',' + item.flags + ",,,0,,Times New Roman," +
         item.look + ",," + item.text + "\r\n";
}

inline std::string sampleShape(int page, const std::string& box,
                               const std::string& colours = "12895428,12895428",
                               const std::string& line = "1.44") {
  return std::to_string(page) + ',' + box + ",0,2,,,,," + colours + ",,,,," + line + ",\r\n";
}

// A list report of seven columns, 57 rows on a page, with the head of a page, the heads of the
// columns and the bar at the foot. `extra` is written behind the third cell of each row.
std::string sampleList(int rows, const std::string& extra = {});

}  // namespace bw
