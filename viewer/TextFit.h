#pragma once

#include <array>
#include <string>
#include <string_view>

namespace bw {

// How a text is made to fit the room that its row leaves it: as it is; else with its letters
// condensed; else smaller as well; else cut. Lengths are twips of paper.

// The widths of the letters, by their Windows-1252 byte, in parts of the font's size.
struct LetterWidths {
  std::array<float, 256> plain{};
  std::array<float, 256> bold{};
  double ascent = 0;
  double descent = 0;

  double of(std::string_view text, bool bold) const noexcept;
  double height() const noexcept { return ascent + descent; }
};

constexpr double kTwipsPerPoint = 20;
constexpr int kLeastPercent = 60;  // of the width of a font's letters
constexpr int kLeastSize = 6 * 20;
constexpr int kLeastCodeSize = 8 * 20;
constexpr std::size_t kShortCode = 8;  // letters of a code that is not made smaller than 8 points

// A font's size in twips and the width of its letters in percent.
struct Setting {
  int size = 0;
  int percent = 100;
  bool fits = true;
};

struct Wanted {
  double letters = 0;  // width of the text in parts of the size
  int size = 0;
  int leastSize = 0;
  int percent = 100;  // not to be exceeded
  double room = 0;
};

// Steps of five percent and half a point, so that a page has few different ones. A setting that
// does not fit is the smallest there is.
Setting settle(const Wanted& wanted);

// Codes are texts without a blank; one of at most 8 letters stays at 8 points.
bool isCode(std::string_view text) noexcept;
int leastSize(std::string_view text, int size) noexcept;

// A text with an ellipsis in place of the letters from `kept` to `tail`. A code in parentheses at
// the end stays, since it is what the line is keyed from.
struct CutText {
  std::size_t kept = 0;
  std::size_t tail = 0;
};
CutText cutToFit(std::string_view text, const LetterWidths& widths, bool bold, double letters);

// Where a code is best broken in two: behind a sign in its middle, or in the middle.
std::size_t breakPoint(std::string_view code) noexcept;

}  // namespace bw
