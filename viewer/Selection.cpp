#include "viewer/Selection.h"

#include <algorithm>
#include <utility>

#include "viewer/PagePainter.h"
#include "viewer/TextRows.h"

namespace bw {

namespace {

// A click has no extent, and a band of no extent still touches what it lies on.
bool touches(const QRectF& a, const QRectF& b) {
  return a.left() <= b.right() && b.left() <= a.right() && a.top() <= b.bottom() &&
         b.top() <= a.bottom();
}

}  // namespace

void Selection::extendTo(const Spot& to) noexcept {
  if (spots_) spots_->end = to;
}

void Selection::takePage(std::size_t page) {
  constexpr double kFar = 1e7;  // texts may stand beyond the edges of the page
  spots_ = {{page, -kFar, -kFar}, {page, kFar, kFar}};
}

std::size_t Selection::firstPage() const noexcept {
  return spots_ ? std::min(spots_->anchor.page, spots_->end.page) : 0;
}

std::size_t Selection::lastPage() const noexcept {
  return spots_ ? std::max(spots_->anchor.page, spots_->end.page) : 0;
}

std::optional<QRectF> Selection::band(std::size_t page, PageSize size) const {
  if (!spots_ || page < firstPage() || page > lastPage()) return std::nullopt;
  const auto [left, right] = std::minmax(spots_->anchor.x, spots_->end.x);
  const bool forward = spots_->anchor.page < spots_->end.page;
  const Spot& first = forward ? spots_->anchor : spots_->end;
  const Spot& last = forward ? spots_->end : spots_->anchor;
  if (first.page == last.page) {
    const auto [top, bottom] = std::minmax(first.y, last.y);
    return QRectF(QPointF(left, top), QPointF(right, bottom));
  }
  const double top = page == first.page ? first.y : 0;
  const double bottom = page == last.page ? last.y : size.height * kTwipsPerInch;
  return QRectF(QPointF(left, top), QPointF(right, std::max(top, bottom)));
}

std::vector<std::size_t> Selection::items(const FittedPage& page, std::size_t number,
                                          PageSize size) const {
  std::vector<std::size_t> selected;
  const auto span = band(number, size);
  if (!span) return selected;
  for (std::size_t i = 0; i < page.items.size(); ++i) {
    if (isReadable(page.page->items[i]) && touches(*span, rectOf(page.items[i].box))) {
      selected.push_back(i);
    }
  }
  return selected;
}

std::u16string Selection::text(const FittedDocument& document) const {
  std::u16string text;
  for (std::size_t number = firstPage(); active() && number <= lastPage(); ++number) {
    const FittedPage page = document.make(number);
    std::vector<const PageItem*> selected;
    for (const std::size_t item : items(page, number, document.paper())) {
      selected.push_back(&page.page->items[item]);
    }
    text += plainText(textRows(std::move(selected)), document.document().pageCount());
  }
  return text;
}

}  // namespace bw
