#pragma once

#include <QApplication>
#include <QFontInfo>
#include <cmath>

namespace bw {

// Screen measures of the program are twips, 15 to a pixel of the toolkit.
inline constexpr int kTwipsPerPixel = 15;

inline int toPixels(double twips) {
  return static_cast<int>(std::nearbyint(twips / kTwipsPerPixel));
}
inline int toTwips(int pixels) { return pixels * kTwipsPerPixel; }

// What has to hold text is measured at the standard font, of 12 pixels (9 points), and is that many
// times as large on a desktop with another font.
inline double fontScale() {
  constexpr double kStandardFont = 12;
  return QFontInfo(QApplication::font()).pixelSize() / kStandardFont;
}
inline int scaledPixels(int pixels) {
  return static_cast<int>(std::nearbyint(pixels * fontScale()));
}

}  // namespace bw
