#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QHash>
#include <QRectF>

#include "viewer/PageItems.h"

class QPainter;

namespace bw {

// Draws the items of a page. The painter's unit is one twip, its origin the page's corner; the
// same routine serves screen, thumbnails, paper and PDF.
//
// A text that does not fit its box is never cut: aligned left it runs on over the right edge,
// aligned right over the left one, centred over both. Boxes overlap by design (rows stand 0.15
// inch apart in boxes of 0.25 inch), so no box clips.
class PagePainter {
 public:
  // Fonts are Times New Roman or its metric twin; field 14 names no other.
  PagePainter();

  // Items that do not touch `clip` may be left out.
  void paint(QPainter& painter, const PageItems& page, std::size_t pageTotal, const QRectF& clip);

  // Where the text stands, in twips; it may lie outside the item's box.
  QRectF textRect(const PageItem& item, std::size_t pageTotal);

  // Where a part of the text stands, in characters from 0.
  QRectF partRect(const PageItem& item, std::size_t pageTotal, qsizetype from, qsizetype length);

 private:
  struct Face {
    QFont font;
    QFontMetricsF metrics;
  };

  const Face& face(const PageItem& item);
  void drawText(QPainter& painter, const PageItem& item, std::size_t pageTotal);

  QHash<int, Face> faces_;  // by size in twips and weight
};

}  // namespace bw
