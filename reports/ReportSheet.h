#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>

namespace bw {

// A report as it is asked for. Sizes are inches; it lasts no longer than what it names.
struct Report {
  const std::filesystem::path& document;
  double width;
  double height;
  const std::string& headerLine;
  const std::string& title;
  const std::string& subtitles;
};

// Where on which page the next thing goes.
class Sheet {
 public:
  explicit Sheet(const Report& report) : report_(report), limit_(report.height - 1.0) {}

  double y = 0;
  std::int32_t page() const noexcept { return page_; }
  double width() const noexcept { return report_.width; }

  // Begins a page unless something of that height still fits on the one at hand. True when it did.
  bool makeRoom(double height);
  void beginPage();
  void finish();

 private:
  const Report& report_;
  double limit_;
  std::int32_t page_ = 0;
};

// Writes the document, one of `count` records after another, and starts the viewer. Without records
// nothing is written and nothing started. A document that cannot be written is told in a message; a
// viewer that is not there raises error 53.
void writeReport(const Report& report, std::ptrdiff_t count,
                 const std::function<void(Sheet& sheet, std::ptrdiff_t record)>& write);

}  // namespace bw
