#pragma once

#include <QColor>
#include <QPalette>

namespace bw {

inline bool isDark(const QPalette& palette) {
  return palette.color(QPalette::Window).lightness() <
         palette.color(QPalette::WindowText).lightness();
}

}  // namespace bw
