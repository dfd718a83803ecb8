#pragma once

#include <algorithm>
#include <string_view>

namespace bw {

// How far to the right the items of a document reach, in twips. The width of a text says nothing
// about the text; of its room half an inch counts, unless the text's width is less.
class RightEdge {
 public:
  // `line` begins behind the item's page number.
  void take(std::string_view line) noexcept {
    unsigned left = 0;
    for (const char* at = line.data(); at != line.data() + line.size(); ++at) {
      const unsigned digit = static_cast<unsigned char>(*at) - unsigned{'0'};
      if (digit > 9) break;
      left = left * 10 + digit;
    }
    // Only shapes and empty texts end in a comma.
    if (left + kTextRoom > edge_ || line.ends_with(',')) measure(line);
  }

  double twips() const noexcept { return edge_; }

 private:
  static constexpr double kTextRoom = 720;

  void measure(std::string_view line) noexcept;

  double edge_ = 0;
};

}  // namespace bw
