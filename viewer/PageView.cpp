#include "viewer/PageView.h"

#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace bw {

namespace {

// clang-format off
constexpr std::array kZoomSteps = {0.1, 0.25, 0.33, 0.5, 0.67, 0.75, 0.9, 1.0, 1.1, 1.25,
                                   1.5, 1.75, 2.0, 2.5, 3.0, 4.0, 5.0, 6.0, 8.0};
// clang-format on

constexpr int kLine = 40;  // pixels of one step of the scroll bars
constexpr QColor kMatchColour(255, 221, 51, 110);
constexpr QColor kCurrentMatchColour(255, 128, 0, 140);

QPoint middleOf(const QWidget& widget) { return widget.rect().center(); }

}  // namespace

PageView::PageView(QWidget* parent) : QAbstractScrollArea(parent) {
  setObjectName("pageView");
  setAccessibleName(tr("Pages"));
  setFocusPolicy(Qt::StrongFocus);
  setFrameShape(QFrame::NoFrame);
  viewport()->setCursor(Qt::IBeamCursor);
  viewport()->grabGesture(Qt::PinchGesture);
  verticalScrollBar()->setSingleStep(kLine);
  horizontalScrollBar()->setSingleStep(kLine);
}

void PageView::setDocument(std::shared_ptr<const Document> document, bool keepPlace) {
  const bool wasEmpty = pageCount() == 0;
  const Spot place = wasEmpty ? Spot() : spotAt(QPoint(0, 0));
  const int current = current_;
  document_.reset();
  if (document) {
    document_ =
        std::make_shared<const FittedDocument>(std::move(document), paintedLetters(), natural_);
  }
  selection_.clear();
  match_.reset();
  dragging_ = false;
  layOut();
  const int pages = layout_.pages;
  if (keepPlace && !wasEmpty && place.page <= static_cast<std::size_t>(pages)) {
    scrollTo(place, QPointF(0, 0));
    setCurrent(std::min(current, pages));
  } else {
    goToPage(keepPlace ? static_cast<std::size_t>(current) : 1);
  }
  viewport()->update();
  emit selectionChanged();
}

void PageView::setNatural(bool natural) {
  natural_ = natural;
  if (document_ == nullptr) return;
  const std::size_t page = currentPage();
  document_ =
      std::make_shared<const FittedDocument>(document_->shared(), paintedLetters(), natural);
  selection_.clear();
  layOut();
  goToPage(page);
  changeSelection();
  emit zoomChanged();
}

std::size_t PageView::pageCount() const noexcept {
  return document_ ? document_->document().pageCount() : 0;
}

// The whole text where one was cut, to be shown beside the mouse.
QString PageView::cutTextAt(const QPoint& point) const {
  if (pageCount() == 0) return {};
  const Spot spot = spotAt(point);
  const auto page = document_->page(spot.page);
  for (std::size_t i = 0; i < page->items.size(); ++i) {
    if (page->items[i].isCut && rectOf(page->items[i].box).contains(spot.x, spot.y)) {
      return QString::fromStdU16String(itemText(page->page->items[i], pageCount()));
    }
  }
  return {};
}

void PageView::goToPage(std::size_t page) {
  if (layout_.pages == 0) {
    setCurrent(0);
    return;
  }
  const int wanted =
      static_cast<int>(std::clamp<std::size_t>(page, 1, static_cast<std::size_t>(layout_.pages)));
  verticalScrollBar()->setValue(layout_.top(wanted) - PageLayout::kGap);
  // The last pages may be unable to come to the top: they are current nevertheless.
  setCurrent(wanted);
}

void PageView::setZoom(double zoom) {
  fit_ = Fit::none;
  zoomAround(zoom, middleOf(*viewport()));
}

void PageView::setFit(Fit fit) {
  fit_ = fit;
  const std::size_t page = currentPage();
  layOutInPlace();
  if (fit == Fit::page) goToPage(page);
  emit zoomChanged();
}

void PageView::zoomIn() {
  const auto* step = std::upper_bound(kZoomSteps.begin(), kZoomSteps.end(), zoom_ * 1.01);
  setZoom(step == kZoomSteps.end() ? kZoomSteps.back() : *step);
}

void PageView::zoomOut() {
  const auto* step = std::lower_bound(kZoomSteps.begin(), kZoomSteps.end(), zoom_ * 0.99);
  setZoom(step == kZoomSteps.begin() ? kZoomSteps.front() : *(step - 1));
}

void PageView::setNeedle(const QString& needle) {
  needle_ = needle;
  match_.reset();
  changeSelection();
}

void PageView::showMatch(const Match& match) {
  const auto page = document_->page(match.page);
  const QPointF place =
      painter_.partRects(*page, match.item, match.from, match.length).front().center();
  const Spot spot{match.page, place.x(), place.y()};
  const QPointF point = pointAt(spot);
  const QRectF shown = QRectF(viewport()->rect()).adjusted(kLine, kLine, -kLine, -kLine);
  if (!shown.contains(point)) scrollTo(spot, QPointF(middleOf(*viewport())));
  setCurrent(static_cast<int>(match.page));
  selection_.clear();
  match_ = match;
  changeSelection();
}

void PageView::selectPage() {
  if (current_ == 0) return;
  match_.reset();
  selection_.takePage(currentPage());
  changeSelection();
}

QString PageView::selectedText() {
  if (document_ == nullptr) return {};
  if (selection_.active()) {
    return QString::fromStdU16String(selection_.text(*document_));
  }
  if (!match_) return {};
  const auto page = document()->page(match_->page);
  return QString::fromStdU16String(itemText(page->items[match_->item], pageCount()));
}

void PageView::changeSelection() {
  viewport()->update();
  emit selectionChanged();
}

QSizeF PageView::naturalPage() const {
  const PageSize size = document_ ? document_->paper() : PageSize();
  return {size.width * logicalDpiX(), size.height * logicalDpiY()};
}

double PageView::pixelsPerTwip() const { return zoom_ * logicalDpiX() / kTwipsPerInch; }

QRect PageView::pageRect(int page) const {
  const int room = std::max(viewport()->width(), layout_.width());
  const int left = (room - layout_.pageWidth) / 2 - horizontalScrollBar()->value();
  return {left, layout_.top(page) - verticalScrollBar()->value(), layout_.pageWidth,
          layout_.pageHeight};
}

Spot PageView::spotAt(const QPoint& point) const {
  const int page = layout_.pageAt(point.y() + verticalScrollBar()->value());
  const QPointF inPage = (point - pageRect(page).topLeft()).toPointF() / pixelsPerTwip();
  return {static_cast<std::size_t>(page), inPage.x(), inPage.y()};
}

QPointF PageView::pointAt(const Spot& spot) const {
  const QPoint corner = pageRect(static_cast<int>(spot.page)).topLeft();
  return corner.toPointF() + QPointF(spot.x, spot.y) * pixelsPerTwip();
}

// The place under `point` stays under it.
void PageView::zoomAround(double zoom, const QPoint& point) {
  const Spot spot = spotAt(point);
  zoom_ = zoom;
  layOut();
  if (layout_.pages > 0) scrollTo(spot, point.toPointF());
  emit zoomChanged();
}

void PageView::layOut() {
  applyFit();
  const std::size_t pages = pageCount();
  const QSizeF natural = naturalPage();
  zoom_ =
      std::min(std::max(zoom_, PageLayout::kMinZoom), PageLayout::maxZoom(pages, natural.height()));
  layout_.pages = static_cast<int>(pages);
  layout_.pageWidth = static_cast<int>(std::lround(natural.width() * zoom_));
  layout_.pageHeight = static_cast<int>(std::lround(natural.height() * zoom_));
  const QSize room = viewport()->size();
  horizontalScrollBar()->setPageStep(room.width());
  horizontalScrollBar()->setRange(0, pages == 0 ? 0 : layout_.width() - room.width());
  // A page's worth less a line, so that the line at the edge is seen on both screens.
  verticalScrollBar()->setPageStep(std::max(kLine, room.height() - kLine));
  verticalScrollBar()->setRange(0, pages == 0 ? 0 : layout_.height() - room.height());
  viewport()->update();
}

// What stands at the top stays there, and the page stays current.
void PageView::layOutInPlace() {
  if (layout_.pages == 0) return layOut();
  const int current = current_;
  const Spot place = spotAt(QPoint(0, 0));
  layOut();
  scrollTo(place, QPointF(0, 0));
  setCurrent(current);
}

void PageView::applyFit() {
  if (fit_ == Fit::none) return;
  const QSizeF natural = naturalPage();
  const double across = (viewport()->width() - 2 * PageLayout::kGap) / natural.width();
  const double down = (viewport()->height() - 2 * PageLayout::kGap) / natural.height();
  zoom_ = fit_ == Fit::width ? across : std::min(across, down);
}

// Brings a place of the document under a point of the viewport, as far as the bars reach.
void PageView::scrollTo(const Spot& spot, const QPointF& point) {
  const QPointF off = pointAt(spot) - point;
  horizontalScrollBar()->setValue(horizontalScrollBar()->value() +
                                  static_cast<int>(std::lround(off.x())));
  verticalScrollBar()->setValue(verticalScrollBar()->value() +
                                static_cast<int>(std::lround(off.y())));
}

void PageView::setCurrent(int page) {
  if (page == current_) return;
  current_ = page;
  setAccessibleDescription(tr("Page %1 of %2").arg(page).arg(layout_.pages));
  emit currentPageChanged(currentPage());
}

void PageView::resizeEvent(QResizeEvent*) {
  const double zoom = zoom_;
  layOutInPlace();
  if (zoom != zoom_) emit zoomChanged();
}

void PageView::scrollContentsBy(int dx, int dy) {
  // With a scale such as 1.25 a shift by pixels is none by dots, and letters would tear.
  if (devicePixelRatioF() == std::floor(devicePixelRatioF())) {
    viewport()->scroll(dx, dy);
  } else {
    viewport()->update();
  }
  if (layout_.pages > 0) {
    setCurrent(layout_.pageAt(verticalScrollBar()->value() + viewport()->height() / 3));
  }
}

void PageView::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  const QRect exposed = event->rect();
  painter.fillRect(exposed, palette().color(QPalette::Mid));
  if (layout_.pages == 0) {
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap,
                     tr("Open a report with Ctrl+O, or drop one here."));
    return;
  }
  const int scrolled = verticalScrollBar()->value();
  const int last = layout_.pageAt(exposed.bottom() + scrolled);
  for (int page = layout_.pageAt(exposed.top() + scrolled); page <= last; ++page) {
    paintPage(painter, page, exposed);
  }
}

void PageView::paintPage(QPainter& painter, int page, const QRect& exposed) {
  const QRect frame = pageRect(page);
  const QRect shown = frame.intersected(exposed);
  if (shown.isEmpty()) return;
  const auto number = static_cast<std::size_t>(page);
  const auto items = document_->page(number);
  painter.save();
  painter.setClipRect(shown);
  painter.fillRect(shown, Qt::white);
  painter.translate(frame.topLeft());
  painter.scale(pixelsPerTwip(), pixelsPerTwip());
  const QRectF clip = painter.transform().inverted().mapRect(QRectF(shown));
  painter_.paint(painter, *items, clip);
  paintMarks(painter, *items, number);
  painter.restore();
}

void PageView::paintMarks(QPainter& painter, const FittedPage& page, std::size_t number) {
  for (const Match& match : matchesOnPage(*page.page, number, pageCount(), needle_)) {
    const QColor& colour = match == match_ ? kCurrentMatchColour : kMatchColour;
    for (const QRectF& rect : painter_.partRects(page, match.item, match.from, match.length)) {
      painter.fillRect(rect, colour);
    }
  }
  QColor colour = palette().color(QPalette::Highlight);
  colour.setAlpha(90);
  for (const std::size_t item : selection_.items(page, number, document_->paper())) {
    painter.fillRect(rectOf(page.items[item].box), colour);
  }
  const auto band = selection_.band(number, document_->paper());
  if (!band || !dragging_) return;
  painter.setPen(QPen(palette().color(QPalette::Highlight), 0, Qt::DotLine));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(*band);
}

}  // namespace bw
