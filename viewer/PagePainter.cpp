#include "viewer/PagePainter.h"

#include <QPainter>
#include <QString>
#include <algorithm>
#include <cmath>

namespace bw {

namespace {

constexpr double kTwipsPerPoint = 20;
// Letters reach beyond the line height of their font by less than this part of it.
constexpr double kOverhang = 0.5;

QColor colourOf(std::uint32_t rgb) {
  const auto part = [rgb](unsigned int shift) { return static_cast<int>((rgb >> shift) & 0xFFU); };
  return {part(0), part(8), part(16)};
}

double placed(Align align, double start, double room, double size) {
  if (align == Align::start) return start;
  return align == Align::end ? start + room - size : start + (room - size) / 2;
}

// Below this zoom letters are no longer read, and greys tell a page's shape better than whole dots.
constexpr double kPictureDotsPerTwip = 0.025;

// A rule thinner than two dots would come out as one or two of them by where it happens to lie;
// snapped to whole dots all rules of a form are equally strong.
void drawRule(QPainter& painter, const QRectF& rect, const QColor& colour) {
  const QTransform toDots = painter.deviceTransform();
  const QRectF dots = toDots.mapRect(rect);
  const QRectF snapped(std::round(dots.x()), std::round(dots.y()),
                       std::max(1.0, std::round(dots.width())),
                       std::max(1.0, std::round(dots.height())));
  painter.fillRect(toDots.inverted().mapRect(snapped), colour);
}

// A box of negative width or height belongs to a column without a width: there is nothing to draw.
void drawShape(QPainter& painter, const PageItem& item) {
  if (item.width < 0 || item.height < 0) return;
  const QRectF rect(item.x, item.y, item.width, item.height);
  const QRectF dots = painter.deviceTransform().mapRect(rect);
  if (std::min(dots.width(), dots.height()) < 2) {
    const QColor colour = colourOf(item.colour);
    if (painter.testRenderHint(QPainter::Antialiasing)) {
      painter.fillRect(rect, colour);
    } else {
      drawRule(painter, rect, colour);
    }
    return;
  }
  QPen pen(colourOf(item.colour), item.lineWidth);
  pen.setJoinStyle(Qt::MiterJoin);
  painter.setPen(pen);
  painter.setBrush(colourOf(item.fill));
  painter.drawRect(rect);
}

QString shownText(const PageItem& item, std::size_t pageTotal) {
  return QString::fromStdU16String(itemText(item, pageTotal));
}

}  // namespace

PagePainter::PagePainter() {
  QFont::insertSubstitutions("Times New Roman", {"Liberation Serif", "Tinos", "Nimbus Roman"});
}

void PagePainter::paint(QPainter& painter, const PageItems& page, std::size_t pageTotal,
                        const QRectF& clip) {
  painter.setRenderHint(QPainter::Antialiasing,
                        painter.deviceTransform().m11() < kPictureDotsPerTwip);
  painter.setRenderHint(QPainter::TextAntialiasing);
  for (const PageItem& item : page.items) {
    const double reach = item.fontSize * kTwipsPerPoint * (1 + kOverhang) + item.lineWidth;
    const double top = std::min(item.y, item.y + item.height) - reach;
    const double bottom = std::max(item.y, item.y + item.height) + reach;
    if (bottom < clip.top() || top > clip.bottom()) continue;
    if (item.kind == ItemKind::shape) {
      drawShape(painter, item);
    } else {
      drawText(painter, item, pageTotal);
    }
  }
}

QRectF PagePainter::textRect(const PageItem& item, std::size_t pageTotal) {
  return partRect(item, pageTotal, 0, -1);
}

QRectF PagePainter::partRect(const PageItem& item, std::size_t pageTotal, qsizetype from,
                             qsizetype length) {
  const QFontMetricsF& metrics = face(item).metrics;
  const QString text = shownText(item, pageTotal);
  const double height = metrics.ascent() + metrics.descent();
  const double width = metrics.horizontalAdvance(text);
  const double left = placed(item.align, item.x, item.width, width);
  const double top = placed(item.valign, item.y, item.height, height);
  if (from == 0 && length < 0) return {left, top, width, height};
  const double before = metrics.horizontalAdvance(text.left(from));
  const double part = metrics.horizontalAdvance(text.mid(from, length));
  return {left + before, top, part, height};
}

const PagePainter::Face& PagePainter::face(const PageItem& item) {
  // One pixel of the font is one twip: unhinted, so that lines are equally long at every zoom.
  const int pixels = std::max(1, static_cast<int>(std::lround(item.fontSize * kTwipsPerPoint)));
  const int key = pixels * 2 + (item.bold ? 1 : 0);
  const auto known = faces_.constFind(key);
  if (known != faces_.constEnd()) return *known;
  QFont font("Times New Roman");
  font.setStyleHint(QFont::Times);
  font.setPixelSize(pixels);
  font.setBold(item.bold);
  font.setHintingPreference(QFont::PreferNoHinting);
  return *faces_.insert(key, {font, QFontMetricsF(font)});
}

void PagePainter::drawText(QPainter& painter, const PageItem& item, std::size_t pageTotal) {
  const QString text = shownText(item, pageTotal);
  if (text.isEmpty()) return;
  const Face& look = face(item);
  const double height = look.metrics.ascent() + look.metrics.descent();
  // Aligned left, as all cells are, the width needs no measuring.
  const double width = item.align == Align::start ? 0 : look.metrics.horizontalAdvance(text);
  painter.setFont(look.font);
  painter.setPen(colourOf(item.colour));
  painter.drawText(
      QPointF(placed(item.align, item.x, item.width, width),
              placed(item.valign, item.y, item.height, height) + look.metrics.ascent()),
      text);
}

}  // namespace bw
