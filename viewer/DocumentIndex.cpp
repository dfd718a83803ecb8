#include "viewer/DocumentIndex.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <limits>

#include "viewer/PageItems.h"

namespace bw {

namespace {

constexpr std::string_view kHead = "MYVIEWER10,";
constexpr double kMinInches = 0.5;
constexpr double kMaxInches = 100;

// Offset of the line's end: its line feed, or the end of the text.
std::size_t lineEnd(std::string_view bytes, std::size_t at) {
  const void* found = std::memchr(bytes.data() + at, '\n', bytes.size() - at);
  if (found == nullptr) return bytes.size();
  return static_cast<std::size_t>(static_cast<const char*>(found) - bytes.data());
}

std::string_view withoutCarriageReturn(std::string_view line) {
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

// 0 when it is no size that a page can have.
double inches(std::string_view text) {
  const double size = parseDecimal(text, kMaxInches).value_or(0);
  return size >= kMinInches ? size : 0;
}

std::uint32_t pageNumber(std::string_view line) {
  std::uint32_t page = 0;
  const char* end = line.data() + line.size();
  const auto [rest, error] = std::from_chars(line.data(), end, page);
  const bool valid = error == std::errc() && rest != end && *rest == ',';
  return valid && page <= DocumentIndex::kMaxPage ? page : 0;
}

Fault faultOf(std::string_view line, std::uint32_t page) {
  if (line.size() > DocumentIndex::kMaxLine) return Fault::tooLong;
  const auto commas = std::count(line.begin(), line.end(), ',');
  if (commas < kItemFields - 1) return Fault::fields;
  return page == 0 ? Fault::pageNumber : Fault::none;
}

}  // namespace

DocumentIndex::DocumentIndex(std::string_view bytes) {
  const std::size_t items = readHead(bytes);
  if (damage_ && damage_.fault != Fault::pageSize) return;
  readItems(bytes, items);
  sortRuns();
}

std::span<const LineRun> DocumentIndex::runs(std::size_t page) const {
  if (page == 0 || page > pageCount()) return {};
  return {runs_.data() + starts_[page - 1], starts_[page] - starts_[page - 1]};
}

// Returns where the items begin.
std::size_t DocumentIndex::readHead(std::string_view bytes) {
  if (bytes.empty()) {
    damage_ = {Fault::empty, 1};
    return 0;
  }
  const std::size_t end = lineEnd(bytes, 0);
  const std::string_view head = withoutCarriageReturn(bytes.substr(0, end));
  if (!head.starts_with(kHead)) {
    damage_ = {Fault::foreign, 1};
    return bytes.size();
  }
  const std::string_view sizes = head.substr(kHead.size());
  const std::size_t comma = std::min(sizes.find(','), sizes.size());
  const double width = inches(sizes.substr(0, comma));
  const double height = inches(sizes.substr(std::min(comma + 1, sizes.size())));
  if (width > 0 && height > 0) {
    size_ = {width, height};
  } else {
    damage_ = {Fault::pageSize, 1};
  }
  return std::min(end + 1, bytes.size());
}

void DocumentIndex::readItems(std::string_view bytes, std::size_t at) {
  for (std::uint32_t number = 2; at < bytes.size(); ++number) {
    const std::size_t end = lineEnd(bytes, at);
    const std::size_t next = std::min(end + 1, bytes.size());
    const std::string_view line = withoutCarriageReturn(bytes.substr(at, end - at));
    if (!line.empty()) {
      const std::uint32_t page = pageNumber(line);
      if (const Fault fault = faultOf(line, page); fault != Fault::none) {
        damage_ = {fault, number};
        return;
      }
      append(page, at, next, number);
    }
    at = next;
  }
}

void DocumentIndex::append(std::uint32_t page, std::size_t begin, std::size_t end,
                           std::uint32_t line) {
  if (!runs_.empty() && runs_.back().page == page) {
    runs_.back().end = end;
  } else {
    runs_.push_back({begin, end, line, page});
  }
}

void DocumentIndex::sortRuns() {
  if (runs_.empty()) return;
  const auto byPage = [](const LineRun& a, const LineRun& b) { return a.page < b.page; };
  if (!std::is_sorted(runs_.begin(), runs_.end(), byPage)) {
    std::stable_sort(runs_.begin(), runs_.end(), byPage);
  }
  starts_.assign(std::size_t{runs_.back().page} + 1, runs_.size());
  for (std::size_t run = runs_.size(); run-- > 0;) starts_[runs_[run].page - 1] = run;
  for (std::size_t page = starts_.size() - 1; page-- > 0;) {
    starts_[page] = std::min(starts_[page], starts_[page + 1]);
  }
}

std::string sentence(const Damage& damage) {
  const std::string line = "Line " + std::to_string(damage.line);
  constexpr const char* upTo = " The document is shown up to there.";
  switch (damage.fault) {
    case Fault::none:
      return {};
    case Fault::empty:
      return "This file is empty, so there is nothing to show. Print the report again.";
    case Fault::foreign:
      return line + " does not begin with MYVIEWER10: this file is not a report document.";
    case Fault::pageSize:
      return line + " holds no usable page size. Pages of 8 by 11 inches are shown instead.";
    case Fault::tooLong:
      return line + " is longer than any line of a report." + upTo;
    case Fault::fields:
      return line + " is damaged: some of its fields are missing." + upTo;
    case Fault::pageNumber:
      return line + " is damaged: it does not begin with a page number." + upTo;
  }
  return {};
}

}  // namespace bw
