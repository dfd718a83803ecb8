#pragma once

#include <cmath>

namespace bw {

// Screen measures of the program are twips, 15 to a pixel of the toolkit.
inline constexpr int kTwipsPerPixel = 15;

inline int toPixels(double twips) {
  return static_cast<int>(std::nearbyint(twips / kTwipsPerPixel));
}
inline int toTwips(int pixels) { return pixels * kTwipsPerPixel; }

}  // namespace bw
