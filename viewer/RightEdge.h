#pragma once

#include <cstdint>
#include <string_view>

#include "viewer/PackedText.h"

namespace bw {

// How far to the right the items of a document reach, in twips. The width of a text says nothing
// about the text; of its room half an inch counts, unless the text's width is less.
class RightEdge {
 public:
  // `line` begins behind the item's page number and has eight bytes at least.
  void take(std::string_view line) noexcept {
    // Only shapes and empty texts end in a comma.
    if (line.back() == ',') return measure(line);
    // Most texts stand where a place has fewer digits.
    if (commaAmong(line, digits_)) return;
    if (leadingDigits(packed(line)) >= beyond_) measure(line);
  }

  // The same for a line of any length.
  void measure(std::string_view line) noexcept;

  double twips() const noexcept { return edge_; }

 private:
  static constexpr double kTextRoom = 720;

  void reach(double right) noexcept;

  double edge_ = 0;
  // Of the least place from where a text reaches further: its packed digits, and the bytes that
  // they take.
  std::uint64_t beyond_ = 0;
  std::uint64_t digits_ = 0;
};

}  // namespace bw
