#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "viewer/PackedText.h"
#include "viewer/RightEdge.h"

namespace bw {

// Where the items of each page stand in a document. A document is a text of lines ended by CR LF
// (LF alone is taken too): a head "MYVIEWER10,width,height" in inches, then one item a line, whose
// first of 19 fields is its page. Blank lines count as lines and say nothing.

constexpr double kTwipsPerInch = 1440;

struct PageSize {
  double width = 8;  // inches
  double height = 11;
};

enum class Fault : std::uint8_t {
  none,
  empty,       // no byte at all
  foreign,     // does not begin as documents do
  pageSize,    // of no use; 8 by 11 inches are taken instead
  tooLong,     // a line above kMaxLine; nothing behind it is shown
  pageNumber,  // not from 1 to kMaxPage, or far from all others; the line is left out
  fields,      // fewer than 19 fields; the line is left out
  number,      // none, infinite or beyond reason; the line is left out
  unended,     // the last line has no line feed: somebody may have cut the document
};

struct Damage {
  Fault fault = Fault::none;
  std::size_t line = 0;  // from 1; the first one with that fault

  explicit operator bool() const noexcept { return fault != Fault::none; }
};

// Plain sentences for the reader of the document, with the lines' numbers, and what to do; "" for
// no damage.
std::string sentences(std::span<const Damage> damages);

// Lines of one page without a line of another page between them.
struct LineRun {
  std::size_t begin = 0;  // offsets in the document, `end` behind the last line end
  std::size_t end = 0;
  std::uint32_t firstLine = 0;
  std::uint32_t page = 0;
};

class DocumentIndex {
 public:
  static constexpr std::uint32_t kMaxPage = 10'000'000;
  // Writers leave no page blank. A number that would leave more than these is damaged unless the
  // next line bears it out.
  static constexpr std::uint32_t kMaxBlank = 9;
  // No report comes near this; it keeps a stray binary from being laid out as one line of text.
  static constexpr std::size_t kMaxLine = std::size_t{32} << 10;

  DocumentIndex() = default;
  explicit DocumentIndex(std::string_view bytes);

  PageSize pageSize() const noexcept { return size_; }

  // What can be told without reading the items: a fault at most once.
  const std::vector<Damage>& damages() const noexcept { return damages_; }

  // Where the items end at the right, in twips; 0 without any.
  double rightEdge() const noexcept { return rightEdge_.twips(); }

  // The highest page number found. Pages without items below it are blank.
  std::size_t pageCount() const noexcept { return starts_.empty() ? 0 : starts_.size() - 1; }

  // Page from 1 to pageCount(); one run when its lines stand together and spell it alike, as
  // writers leave them.
  std::span<const LineRun> runs(std::size_t page) const;

 private:
  std::optional<std::size_t> readHead(std::string_view bytes);
  void readItems(std::string_view bytes, std::size_t at);
  void beginRun(std::string_view bytes, std::string_view line, LineRun run);
  bool bearsOut(std::string_view bytes, std::size_t next, std::uint32_t page) const;
  void add(Fault fault, std::size_t line);
  void sortRuns();

  PageSize size_;
  RightEdge rightEdge_;
  std::vector<Damage> damages_;
  std::vector<LineRun> runs_;
  LineStart start_;                    // of lines that belong to the last run
  std::uint32_t highest_ = 0;          // page number so far
  std::vector<std::uint32_t> starts_;  // of each page's runs, and one behind the last page
};

}  // namespace bw
