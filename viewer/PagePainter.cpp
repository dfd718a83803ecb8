#include "viewer/PagePainter.h"

#include <QPainter>
#include <QString>
#include <algorithm>
#include <array>
#include <cmath>

#include "viewer/Windows1252.h"

namespace bw {

namespace {

// Letters reach beyond the line height of their font by less than this part of it.
constexpr double kOverhang = 0.5;
constexpr int kMeasuredPixels = 2000;

QColor colourOf(std::uint32_t rgb) {
  const auto part = [rgb](unsigned int shift) { return static_cast<int>((rgb >> shift) & 0xFFU); };
  return {part(0), part(8), part(16)};
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
void drawShape(QPainter& painter, const PageItem& item, const QRectF& rect) {
  if (rect.width() < 0 || rect.height() < 0) return;
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

// One pixel of the font is one twip: unhinted, so that lines are equally long at every zoom.
QFont fontOf(int pixels, bool bold, int percent = 100) {
  QFont font("Times New Roman");
  font.setStyleHint(QFont::Times);
  font.setPixelSize(pixels);
  font.setBold(bold);
  if (percent != 100) font.setStretch(percent);
  font.setHintingPreference(QFont::PreferNoHinting);
  return font;
}

void measure(std::array<float, 256>& widths, const QFontMetricsF& metrics) {
  for (std::size_t byte = 0; byte < widths.size(); ++byte) {
    const char letter = static_cast<char>(byte);
    const QString text = QString::fromStdU16String(fromWindows1252({&letter, 1}));
    widths[byte] = static_cast<float>(metrics.horizontalAdvance(text) / kMeasuredPixels);
  }
}

LetterWidths measured() {
  const QFontMetricsF plain(fontOf(kMeasuredPixels, false));
  LetterWidths letters;
  measure(letters.plain, plain);
  measure(letters.bold, QFontMetricsF(fontOf(kMeasuredPixels, true)));
  letters.ascent = plain.ascent() / kMeasuredPixels;
  letters.descent = plain.descent() / kMeasuredPixels;
  return letters;
}

// A letter's place in the text as it is drawn.
qsizetype drawnPlace(const FittedItem& fitted, qsizetype letter) {
  if (!fitted.isCut) return letter;
  const auto kept = static_cast<qsizetype>(fitted.cut.kept);
  const auto tail = static_cast<qsizetype>(fitted.cut.tail);
  if (letter <= kept) return letter;
  return letter < tail ? kept : letter - tail + kept + 1;
}

}  // namespace

const LetterWidths& paintedLetters() {
  static const LetterWidths letters = [] {
    const PagePainter substituted;
    return measured();
  }();
  return letters;
}

PagePainter::PagePainter() {
  QFont::insertSubstitutions("Times New Roman", {"Liberation Serif", "Tinos", "Nimbus Roman"});
}

void PagePainter::paint(QPainter& painter, const FittedPage& page, const QRectF& clip) {
  painter.setRenderHint(QPainter::Antialiasing,
                        painter.deviceTransform().m11() < kPictureDotsPerTwip);
  painter.setRenderHint(QPainter::TextAntialiasing);
  for (std::size_t i = 0; i < page.items.size(); ++i) {
    const PageItem& item = page.page->items[i];
    const FittedItem& fitted = page.items[i];
    const double reach = fitted.size * kOverhang + item.lineWidth;
    const double top = std::min(fitted.box.top, fitted.box.bottom()) - reach;
    const double bottom = std::max(fitted.box.top, fitted.box.bottom()) + reach;
    if (bottom < clip.top() || top > clip.bottom()) continue;
    if (item.kind == ItemKind::shape) {
      drawShape(painter, item, rectOf(fitted.box));
    } else if (!fitted.text.empty()) {
      drawText(painter, item, fitted);
    }
  }
}

std::vector<QRectF> PagePainter::partRects(const FittedPage& page, std::size_t item, qsizetype from,
                                           qsizetype length) {
  const FittedItem& fitted = page.items[item];
  const Face& look = face(fitted, page.page->items[item].bold);
  const double height = look.metrics.ascent() + look.metrics.descent();
  const qsizetype begin = drawnPlace(fitted, from);
  // The ellipsis is marked when any of its letters is.
  const qsizetype end = drawnPlace(fitted, from + length - 1) + 1;
  std::vector<QRectF> rects;
  for (const Line& line : lines(fitted, look)) {
    const qsizetype first = std::max<qsizetype>(begin - line.from, 0);
    const qsizetype last = std::min(end - line.from, line.text.size());
    if (first >= last) continue;
    const double before = look.metrics.horizontalAdvance(line.text.left(first));
    const double part = look.metrics.horizontalAdvance(line.text.mid(first, last - first));
    rects.emplace_back(line.origin.x() + before, line.origin.y() - look.metrics.ascent(), part,
                       height);
  }
  return rects;
}

const PagePainter::Face& PagePainter::face(const FittedItem& fitted, bool bold) {
  const int key = (fitted.size * 256 + fitted.percent) * 2 + (bold ? 1 : 0);
  const auto known = faces_.constFind(key);
  if (known != faces_.constEnd()) return *known;
  const QFont font = fontOf(fitted.size, bold, fitted.percent);
  return *faces_.insert(key, {font, QFontMetricsF(font)});
}

std::vector<PagePainter::Line> PagePainter::lines(const FittedItem& fitted,
                                                  const Face& look) const {
  const QString text = QString::fromStdU16String(fitted.text);
  const QPointF first(fitted.box.left, fitted.box.top + look.metrics.ascent());
  if (fitted.broken == 0) return {{text, 0, first}};
  const auto broken = static_cast<qsizetype>(fitted.broken);
  const QPointF second(first.x(), fitted.box.bottom() - look.metrics.descent());
  return {{text.left(broken), 0, first}, {text.mid(broken), broken, second}};
}

void PagePainter::drawText(QPainter& painter, const PageItem& item, const FittedItem& fitted) {
  const Face& look = face(fitted, item.bold);
  painter.setFont(look.font);
  painter.setPen(colourOf(item.colour));
  for (const Line& line : lines(fitted, look)) painter.drawText(line.origin, line.text);
}

}  // namespace bw
