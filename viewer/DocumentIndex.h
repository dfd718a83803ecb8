#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

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
  pageSize,    // of no use; 8 by 11 inches are taken instead, the items are read
  tooLong,     // a line above kMaxLine
  fields,      // fewer than 19 fields
  pageNumber,  // not from 1 to kMaxPage
};

// The first line that could not be read. But for Fault::pageSize nothing behind it is shown.
struct Damage {
  Fault fault = Fault::none;
  std::size_t line = 0;  // from 1

  explicit operator bool() const noexcept { return fault != Fault::none; }
};

// A plain sentence for the reader of the document, with the line's number; "" without damage.
std::string sentence(const Damage& damage);

// Lines of one page without a line of another page between them.
struct LineRun {
  std::size_t begin = 0;  // offsets in the document, `end` behind the last line end
  std::size_t end = 0;
  std::uint32_t firstLine = 0;
  std::uint32_t page = 0;
};

class DocumentIndex {
 public:
  // No report comes near these; they keep a damaged number from becoming a billion blank pages and
  // a stray binary from being laid out as one line of text.
  static constexpr std::uint32_t kMaxPage = 100'000;
  static constexpr std::size_t kMaxLine = std::size_t{32} << 10;

  DocumentIndex() = default;
  explicit DocumentIndex(std::string_view bytes);

  PageSize pageSize() const noexcept { return size_; }
  const Damage& damage() const noexcept { return damage_; }

  // The highest page number found. Pages without items below it are blank.
  std::size_t pageCount() const noexcept { return starts_.empty() ? 0 : starts_.size() - 1; }

  // Page from 1 to pageCount(); one run when its lines stand together, as writers leave them.
  std::span<const LineRun> runs(std::size_t page) const;

 private:
  std::size_t readHead(std::string_view bytes);
  void readItems(std::string_view bytes, std::size_t at);
  void append(std::uint32_t page, std::size_t begin, std::size_t end, std::uint32_t line);
  void sortRuns();

  PageSize size_;
  Damage damage_;
  std::vector<LineRun> runs_;
  std::vector<std::size_t> starts_;  // of each page's runs, and one behind the last page
};

}  // namespace bw
