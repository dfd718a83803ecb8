#pragma once

#include <algorithm>
#include <cstddef>

namespace bw {

// Pages below each other, all of one size, with a gap round each. Pixels of the screen; pages count
// from 1.
struct PageLayout {
  static constexpr int kGap = 10;
  static constexpr double kMinZoom = 0.1;
  static constexpr double kMaxZoom = 8;

  int pageWidth = 0;
  int pageHeight = 0;
  int pages = 0;

  int top(int page) const noexcept { return kGap + (page - 1) * (pageHeight + kGap); }
  int width() const noexcept { return pageWidth + 2 * kGap; }
  int height() const noexcept { return kGap + pages * (pageHeight + kGap); }

  // The page at a height, or the one whose gap is there; always one of the pages.
  int pageAt(int y) const noexcept {
    return std::clamp((y - kGap) / (pageHeight + kGap) + 1, 1, std::max(pages, 1));
  }

  // The largest zoom at which the height of all pages can still be counted in pixels; of millions
  // of pages it may lie below kMinZoom.
  static double maxZoom(std::size_t pages, double pixelsHigh) noexcept {
    constexpr double kMaxHeight = 1.5e9;
    const double room = kMaxHeight / static_cast<double>(std::max<std::size_t>(pages, 1)) - kGap;
    return std::min(room / pixelsHigh, kMaxZoom);
  }
};

}  // namespace bw
