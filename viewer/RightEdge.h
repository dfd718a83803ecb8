#pragma once

#include <cstdint>
#include <string_view>

#include "viewer/PackedText.h"

namespace bw {

// How far to the right the items of a document reach, in twips. The width of a text says nothing
// about the text; of its room half an inch counts, unless the text's width is less.
class RightEdge {
 public:
  // `line` begins behind the item's page number.
  void take(std::string_view line) noexcept {
    // Only shapes and empty texts end in a comma.
    const bool text = line.size() >= kPacked && line.back() != ',';
    if (!text || leadingDigits(packed(line)) >= beyond_) measure(line);
  }

  double twips() const noexcept { return edge_; }

 private:
  static constexpr double kTextRoom = 720;

  void measure(std::string_view line) noexcept;

  double edge_ = 0;
  std::uint64_t beyond_ = 0;  // packed digits of the least place from where a text reaches further
};

}  // namespace bw
