#include "viewer/RightEdge.h"

#include <algorithm>
#include <bit>
#include <cstddef>

#include "viewer/PageItems.h"

namespace bw {

namespace {

// An item farther out is damaged; for its sake no document is made too small to read.
constexpr double kFarthest = 40 * kTwipsPerInch;

// The field that `rest` begins with; `rest` begins behind its comma then.
std::string_view nextField(std::string_view& rest) noexcept {
  const std::size_t comma = std::min(rest.find(','), rest.size());
  const std::string_view field = rest.substr(0, comma);
  rest.remove_prefix(std::min(comma + 1, rest.size()));
  return field;
}

}  // namespace

void RightEdge::measure(std::string_view line) noexcept {
  std::string_view rest = line;
  const double left = parseDecimal(nextField(rest), kFarthest).value_or(-1);
  nextField(rest);  // top
  const double width = parseDecimal(nextField(rest), kFarthest).value_or(-1);
  if (left < 0 || width < 0 || left + width <= edge_) return;
  nextField(rest);  // height
  nextField(rest);  // page total
  const bool text = nextField(rest) == "0";
  if (rest.empty() || (text && line.ends_with(','))) return;
  reach(left + (text ? std::min(width, kTextRoom) : width));
}

void RightEdge::reach(double right) noexcept {
  if (right > kFarthest || right <= edge_) return;
  edge_ = right;
  if (edge_ < kTextRoom) return;
  beyond_ = packedDigits(static_cast<std::uint32_t>(edge_ - kTextRoom) + 1);
  digits_ = firstBytes(8 - std::countl_zero(beyond_) / 8);
}

}  // namespace bw
