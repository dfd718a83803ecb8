#include "viewer/RightEdge.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "viewer/PageItems.h"

namespace bw {

namespace {

// An item farther out is damaged; for its sake no document is made too small to read.
constexpr double kFarthest = 40 * kTwipsPerInch;

}  // namespace

void RightEdge::measure(std::string_view line) noexcept {
  enum { left, top, width, height, pageTotal, kind, count };
  std::array<std::string_view, count> fields;
  for (std::string_view& field : fields) {
    const std::size_t comma = line.find(',');
    if (comma == line.npos) return;
    field = line.substr(0, comma);
    line.remove_prefix(comma + 1);
  }
  const double x = parseDecimal(fields[left], kFarthest).value_or(-1);
  const double w = parseDecimal(fields[width], kFarthest).value_or(-1);
  if (x < 0 || w < 0) return;
  const bool empty = line.ends_with(',');
  if (fields[kind] == "0" && empty) return;
  const double right = x + (fields[kind] == "0" ? std::min(w, kTextRoom) : w);
  if (right > kFarthest || right <= edge_) return;
  edge_ = right;
  beyond_ = edge_ < kTextRoom ? 0 : packedDigits(static_cast<std::uint32_t>(edge_ - kTextRoom) + 1);
}

}  // namespace bw
