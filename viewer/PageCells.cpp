#include "viewer/PageCells.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace bw {
namespace {

constexpr double kEdge = 144;  // kept free at the right edge of the paper
constexpr double kSameRow = 0.3;
constexpr double kReadableSize = 8 * kTwipsPerPoint;  // where the whole page is drawn smaller

// The part of the lower one of two bands that stands in both.
double shared(double top, double height, double otherTop, double otherHeight) {
  const double both = std::min(top + height, otherTop + otherHeight) - std::max(top, otherTop);
  return both / std::min(height, otherHeight);
}

class Placing {
 public:
  Placing(const PageItems& page, const PageFit& fit, const LetterWidths& letters,
          std::size_t pageTotal, std::vector<FittedItem>& fitted)
      : page_(page), fit_(fit), letters_(letters), pageTotal_(pageTotal), fitted_(fitted) {}

  PageCells run() {
    findHead();
    place();
    return std::move(result_);
  }

 private:
  void findHead();
  void place();
  Box placed(const PageItem& item, bool furniture) const;
  void placeText(const PageItem& item, FittedItem& fitted, bool head);

  const PageItems& page_;
  const PageFit& fit_;
  const LetterWidths& letters_;
  std::size_t pageTotal_;
  std::vector<FittedItem>& fitted_;
  PageCells result_;
  std::size_t bodyBegin_ = 0;  // items before it above bodyTop_ are the page's head
  double bodyTop_ = 0;
  double headRight_ = 0;
};

void Placing::findHead() {
  const auto& items = page_.items;
  const auto shape = std::find_if(items.begin(), items.end(), [](const PageItem& item) {
    return item.kind == ItemKind::shape;
  });
  if (shape == items.end()) return;
  bodyBegin_ = static_cast<std::size_t>(shape - items.begin());
  // Nothing but the foot of a page that has no body stands lower.
  bodyTop_ = std::min(shape->y, fit_.paperHeight() / 4);
  for (auto item = items.begin(); item != shape; ++item) {
    headRight_ = std::max(headRight_, item->x + item->width);
  }
}

void Placing::place() {
  const auto& items = page_.items;
  fitted_.assign(items.size(), {});
  result_.cells.reserve(items.size());
  for (std::size_t i = 0; i < items.size(); ++i) {
    const PageItem& item = items[i];
    FittedItem& fitted = fitted_[i];
    if (item.kind == ItemKind::text) {
      placeText(item, fitted, i < bodyBegin_ && item.y < bodyTop_);
      continue;
    }
    const bool pageWide = item.width > 0.9 * headRight_ && item.height < kTwipsPerInch / 8;
    fitted.box = placed(item, pageWide);
    if (item.width >= 0 && item.height >= 0) result_.shapes.push_back(fitted.box);
  }
  result_.sort();
}

// Head, foot and rules across the page are not narrowed, but reach as far to the right as the body.
Box Placing::placed(const PageItem& item, bool furniture) const {
  Box box{item.x * fit_.across, item.y * fit_.down, item.width * fit_.across,
          item.height * fit_.down};
  if (!furniture || fit_.bodyRight == 0) return box;
  const double further = std::max(0.0, fit_.bodyRight - headRight_ * fit_.down);
  box.left = item.x * fit_.down;
  box.width = item.width * fit_.down;
  if (item.width > headRight_ / 2) {
    box.width += further;
  } else if (item.x > headRight_ / 2) {
    box.left += further;
  }
  return box;
}

void Placing::placeText(const PageItem& item, FittedItem& fitted, bool head) {
  Cell cell{.item = &item, .fitted = &fitted, .box = placed(item, head), .head = head};
  cell.text = itemBytes(item, pageTotal_);
  const double size = item.fontSize * kTwipsPerPoint;
  const double readable = std::min(size, kReadableSize);
  cell.size = std::max(1, static_cast<int>(std::lround(std::max(size * fit_.down, readable))));
  cell.percent = head ? 100 : static_cast<int>(fit_.across / fit_.down * 100);
  cell.letters = letters_.of(cell.text, item.bold);
  cell.height = cell.size * letters_.height();
  const double room = cell.box.height - cell.height;
  const double down[] = {0, room / 2, room};
  cell.top = cell.box.top + down[static_cast<std::size_t>(item.valign)];
  cell.limit = fit_.paperWidth() - kEdge;
  result_.cells.push_back(std::move(cell));
}

}  // namespace

bool inOneRow(const Cell& a, const Cell& b) {
  return shared(a.top, a.height, b.top, b.height) > kSameRow;
}

// A rule too thin to stand beside a text stands between rows.
bool isBesideText(const Box& shape, const Cell& cell) {
  const double both =
      std::min(shape.bottom(), cell.top + cell.height) - std::max(shape.top, cell.top);
  return both > kSameRow * cell.height;
}

void PageCells::sort() {
  std::stable_sort(cells.begin(), cells.end(),
                   [](const Cell& a, const Cell& b) { return a.centre() < b.centre(); });
}

double PageCells::lowest() const {
  double bottom = 0;
  for (const Box& shape : shapes) bottom = std::max(bottom, shape.bottom());
  for (const Cell& cell : cells) {
    if (!cell.text.empty()) bottom = std::max(bottom, cell.top + cell.height);
  }
  return bottom;
}

PageCells placeCells(const PageItems& page, const PageFit& fit, const LetterWidths& letters,
                     std::size_t pageTotal, std::vector<FittedItem>& fitted) {
  return Placing(page, fit, letters, pageTotal, fitted).run();
}

}  // namespace bw
