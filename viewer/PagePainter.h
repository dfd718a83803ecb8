#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QHash>
#include <QRectF>
#include <vector>

#include "viewer/FittedPage.h"

class QPainter;

namespace bw {

// The widths of the letters that PagePainter draws. Needs an application object.
const LetterWidths& paintedLetters();

inline QRectF rectOf(const Box& box) { return {box.left, box.top, box.width, box.height}; }

// Draws a page as it is laid out. The painter's unit is one twip of paper, its origin the page's
// corner; the same routine serves screen, thumbnails, paper and PDF.
class PagePainter {
 public:
  // Fonts are Times New Roman or its metric twin; field 14 names no other.
  PagePainter();

  // Items that do not touch `clip` may be left out.
  void paint(QPainter& painter, const FittedPage& page, const QRectF& clip);

  // Where a part of a text stands, in letters of the whole text from 0: a rectangle for each line.
  // The ellipsis stands for the letters that were cut.
  std::vector<QRectF> partRects(const FittedPage& page, std::size_t item, qsizetype from,
                                qsizetype length);

 private:
  struct Face {
    QFont font;
    QFontMetricsF metrics;
  };
  struct Line {
    QString text;
    qsizetype from = 0;  // in the text as drawn
    QPointF origin;      // on the base line
  };

  const Face& face(const FittedItem& fitted, bool bold);
  std::vector<Line> lines(const FittedItem& fitted, const Face& look) const;
  void drawText(QPainter& painter, const PageItem& item, const FittedItem& fitted);

  QHash<int, Face> faces_;  // by size, width of the letters and weight
};

}  // namespace bw
