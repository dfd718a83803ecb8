#include "viewer/DocumentIndex.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>

#include "viewer/LineEnds.h"
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

// An item of 19 fields has no fewer bytes, and a page one item at least.
constexpr std::size_t kLeastLine = 20;
static_assert(kLeastLine >= 2 * kPacked);  // a line's start, and what is behind it

}  // namespace

DocumentIndex::DocumentIndex(std::string_view bytes) {
  const auto items = readHead(bytes);
  if (!items) return;
  readItems(bytes, *items);
  sortRuns();
}

std::span<const LineRun> DocumentIndex::runs(std::size_t page) const {
  if (page == 0 || page > pageCount()) return {};
  return {runs_.data() + starts_[page - 1], starts_[page] - starts_[page - 1]};
}

// Returns where the items begin; nothing when this is no document.
std::optional<std::size_t> DocumentIndex::readHead(std::string_view bytes) {
  if (bytes.empty()) {
    add(Fault::empty, 1);
    return std::nullopt;
  }
  const std::size_t end = lineEnd(bytes, 0);
  const std::string_view head = withoutCarriageReturn(bytes.substr(0, end));
  if (!head.starts_with(kHead)) {
    add(Fault::foreign, 1);
    return std::nullopt;
  }
  const std::string_view sizes = head.substr(kHead.size());
  const std::size_t comma = std::min(sizes.find(','), sizes.size());
  const double width = inches(sizes.substr(0, comma));
  const double height = inches(sizes.substr(std::min(comma + 1, sizes.size())));
  if (width > 0 && height > 0) {
    size_ = {width, height};
  } else {
    add(Fault::pageSize, 1);
  }
  return std::min(end + 1, bytes.size());
}

void DocumentIndex::readItems(std::string_view bytes, std::size_t at) {
  std::uint32_t number = 2;
  LineEnds ends(bytes, at);
  for (; at < bytes.size(); ++number) {
    // Most lines go on with the run: nothing is written for them, or the rest would be read anew.
    const LineStart start = start_;
    const std::size_t first = at;
    std::size_t end = 0;
    std::string_view line;
    for (; at < bytes.size(); ++number, at = end + 1) {
      end = ends.next();
      line = withoutCarriageReturn({bytes.data() + at, end - at});
      if (line.size() < kLeastLine || line.size() > kMaxLine || !start.begins(line)) break;
      line.remove_prefix(start.size());
      rightEdge_.take(line);
    }
    at = std::min(at, bytes.size());
    if (at > first) runs_.back().end = at;
    if (at == bytes.size()) break;
    const std::size_t next = std::min(end + 1, bytes.size());
    if (line.size() > kMaxLine) return add(Fault::tooLong, number);
    if (!line.empty()) beginRun(bytes, line, {at, next, number});
    at = next;
  }
  if (!bytes.ends_with('\n')) add(Fault::unended, number - 1);
}

void DocumentIndex::beginRun(std::string_view bytes, std::string_view line, LineRun run) {
  run.page = pageNumber(line);
  start_ = {};
  if (run.page > highest_ + 1 ? !bearsOut(bytes, run.end, run.page) : run.page == 0) {
    return add(Fault::pageNumber, run.firstLine);
  }
  const std::size_t items = line.find(',') + 1;
  start_ = LineStart(line.substr(0, items));
  highest_ = std::max(highest_, run.page);
  runs_.push_back(run);
  rightEdge_.measure(line.substr(items));
}

// Whether a page number that leaves pages blank can be right, by the line that begins at `next`.
bool DocumentIndex::bearsOut(std::string_view bytes, std::size_t next, std::uint32_t page) const {
  if (page <= highest_ + 1 + kMaxBlank) return true;
  if (page > bytes.size() / kLeastLine || next == bytes.size()) return false;
  const std::uint32_t following = pageNumber(bytes.substr(next, lineEnd(bytes, next) - next));
  return following == page || following == page + 1;
}

void DocumentIndex::add(Fault fault, std::size_t line) {
  const auto known = std::find_if(damages_.begin(), damages_.end(),
                                  [&](const Damage& damage) { return damage.fault == fault; });
  if (known == damages_.end()) damages_.push_back({fault, line});
}

void DocumentIndex::sortRuns() {
  if (runs_.empty()) return;
  const auto byPage = [](const LineRun& a, const LineRun& b) { return a.page < b.page; };
  if (!std::is_sorted(runs_.begin(), runs_.end(), byPage)) {
    std::stable_sort(runs_.begin(), runs_.end(), byPage);
  }
  starts_.assign(std::size_t{runs_.back().page} + 1, static_cast<std::uint32_t>(runs_.size()));
  for (auto run = starts_.back(); run-- > 0;) starts_[runs_[run].page - 1] = run;
  for (std::size_t page = starts_.size() - 1; page-- > 0;) {
    starts_[page] = std::min(starts_[page], starts_[page + 1]);
  }
}

std::string sentences(std::span<const Damage> damages) {
  struct Words {
    const char* before = "";
    const char* behind = "";
  };
  // clang-format off
  static constexpr std::array<Words, 9> kWords = {{
    {},
    {"This file is empty, so there is nothing to show.", nullptr},
    {"Line ", " does not begin with MYVIEWER10, so this file is no report. Open another one."},
    {"Line ", " holds no usable page size: pages of 8 by 11 inches are shown instead."},
    {"Line ", " is longer than any line of a report: the report is shown up to there."},
    {"Line ", " is damaged: its page number cannot be used. What it describes is left out."},
    {"Line ", " is damaged: some of its fields are missing. What it describes is left out."},
    {"Line ", " is damaged: a number in it cannot be used. What it describes is left out."},
    {"Line ", ", the last one, has no end: the report may be cut off there."},
  }};
  // clang-format on
  std::string text;
  for (const Damage& damage : damages) {
    if (!damage) continue;
    const Words& words = kWords[static_cast<std::size_t>(damage.fault)];
    if (!text.empty()) text += ' ';
    text += words.before;
    if (words.behind != nullptr) text += std::to_string(damage.line) + words.behind;
    if (damage.fault == Fault::foreign) return text;
  }
  return text.empty() ? text : text + " Print the report again.";
}

}  // namespace bw
