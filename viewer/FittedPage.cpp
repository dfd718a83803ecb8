#include "viewer/FittedPage.h"

#include <algorithm>
#include <cmath>
#include <tuple>
#include <utility>

#include "viewer/Windows1252.h"

namespace bw {

namespace {

constexpr double kGap = 0.25;         // between texts of a row, in parts of the font's size
constexpr double kFramePadding = 30;  // between a text and the frame or rule that it ends at
constexpr double kEdge = 144;         // kept free at the right edge of the paper
constexpr double kSameRow =
    0.3;  // two things stand in one row when this much of the lower one does
constexpr double kLinePitch = 0.85;  // of a broken code, which has no letters below the line
constexpr double kSameLine = 20;     // tops of texts in one line differ by less
constexpr double kNextLine = 1.3;    // a line below is no farther than this many times its height
constexpr double kReadableSize = 8 * kTwipsPerPoint;  // where the whole page is drawn smaller

struct Cell {
  const PageItem* item = nullptr;
  FittedItem* fitted = nullptr;
  Box box;             // of the item
  std::string text;    // Windows-1252, the token replaced
  double letters = 0;  // width in parts of the size
  double top = 0;      // of one line
  double height = 0;
  double limit = 0;  // what it may reach to at the right
  int size = 0;
  int percent = 100;
  bool head = false;

  double centre() const noexcept { return top + height / 2; }
  bool isLeft() const noexcept { return item->align == Align::start; }
};

// The part of the lower one of two bands that stands in both.
double shared(double top, double height, double otherTop, double otherHeight) {
  const double both = std::min(top + height, otherTop + otherHeight) - std::max(top, otherTop);
  return both / std::min(height, otherHeight);
}

bool inOneRow(const Cell& a, const Cell& b) {
  return shared(a.top, a.height, b.top, b.height) > kSameRow;
}

int wholeSteps(double percent) { return static_cast<int>(percent) / 5 * 5; }

// A rule too thin to stand beside a text stands between rows.
bool besideText(const Box& shape, const Cell& cell) {
  const double both =
      std::min(shape.bottom(), cell.top + cell.height) - std::max(shape.top, cell.top);
  return both > kSameRow * cell.height;
}

class PageFitting {
 public:
  PageFitting(std::shared_ptr<const PageItems> page, const PageFit& fit,
              const LetterWidths& letters, std::size_t pageTotal)
      : fit_(fit), letters_(letters), pageTotal_(pageTotal) {
    result_.page = std::move(page);
  }

  FittedPage run();

 private:
  void findHead();
  void place();
  void sortCells();
  Box placed(const PageItem& item, bool furniture) const;
  void placeText(const PageItem& item, FittedItem& fitted, bool head);
  double lowest() const;

  void separateRows();
  bool runsIntoNextRow(const Cell& cell) const;
  Cell* continuedBy(const Cell& cell);
  void stack(Cell& upper, Cell& lower) const;
  void findRooms();
  void meet(Cell& a, Cell& b) const;
  void makeColumnsAlike();
  void makeAlike(std::vector<Cell*>& column) const;

  void settleLeft(Cell& cell);
  void settleOther(Cell& cell);
  Setting settingFor(const Cell& cell, double room) const;
  void finish(Cell& cell, const Setting& setting, double left, double room);
  void breakInTwo(Cell& cell, const Setting& setting);
  void cut(Cell& cell, const Setting& setting, double room);
  bool hasRoomForTwoLines(const Cell& cell) const;
  double widthOf(std::string_view text, const Cell& cell, const Setting& setting) const;

  PageFit fit_;
  const LetterWidths& letters_;
  std::size_t pageTotal_;
  FittedPage result_;
  std::vector<Cell> cells_;  // by their centres
  std::vector<Box> shapes_;
  std::size_t bodyBegin_ = 0;  // items before it above bodyTop_ are the page's head
  double bodyTop_ = 0;
  double headRight_ = 0;
};

FittedPage PageFitting::run() {
  findHead();
  place();
  if (const double bottom = lowest();
      bottom > fit_.paperHeight() && bottom < 2 * fit_.paperHeight()) {
    const double down = fit_.paperHeight() / bottom;
    fit_.across *= down;
    fit_.down *= down;
    place();
  }
  separateRows();
  findRooms();
  makeColumnsAlike();
  for (Cell& cell : cells_) {
    if (cell.isLeft()) settleLeft(cell);
  }
  for (const Align align : {Align::end, Align::centre}) {
    for (Cell& cell : cells_) {
      if (cell.item->align == align) settleOther(cell);
    }
  }
  return std::move(result_);
}

void PageFitting::findHead() {
  const auto& items = result_.page->items;
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

void PageFitting::place() {
  const auto& items = result_.page->items;
  result_.items.assign(items.size(), {});
  shapes_.clear();
  cells_.clear();
  cells_.reserve(items.size());
  for (std::size_t i = 0; i < items.size(); ++i) {
    const PageItem& item = items[i];
    FittedItem& fitted = result_.items[i];
    if (item.kind == ItemKind::text) {
      placeText(item, fitted, i < bodyBegin_ && item.y < bodyTop_);
      continue;
    }
    const bool pageWide = item.width > 0.9 * headRight_ && item.height < kTwipsPerInch / 8;
    fitted.box = placed(item, pageWide);
    if (item.width >= 0 && item.height >= 0) shapes_.push_back(fitted.box);
  }
  sortCells();
}

void PageFitting::sortCells() {
  std::stable_sort(cells_.begin(), cells_.end(),
                   [](const Cell& a, const Cell& b) { return a.centre() < b.centre(); });
}

// Head, foot and rules across the page are not narrowed, but reach as far to the right as the body.
Box PageFitting::placed(const PageItem& item, bool furniture) const {
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

void PageFitting::placeText(const PageItem& item, FittedItem& fitted, bool head) {
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
  cells_.push_back(std::move(cell));
}

double PageFitting::lowest() const {
  double bottom = 0;
  for (const Box& shape : shapes_) bottom = std::max(bottom, shape.bottom());
  for (const Cell& cell : cells_) {
    if (!cell.text.empty()) bottom = std::max(bottom, cell.top + cell.height);
  }
  return bottom;
}

// A second line of codes may stand closer to the row below than to its own. It goes up to the line
// that it continues, both of them smaller.
void PageFitting::separateRows() {
  bool moved = false;
  for (Cell& cell : cells_) {
    if (cell.head || !cell.isLeft() || cell.text.empty() || !runsIntoNextRow(cell)) continue;
    if (Cell* upper = continuedBy(cell)) {
      stack(*upper, cell);
      moved = true;
    }
  }
  if (moved) sortCells();
}

bool PageFitting::runsIntoNextRow(const Cell& cell) const {
  for (const Cell* other = &cell; other != cells_.data() + cells_.size(); ++other) {
    const double below = other->centre() - cell.centre();
    if (below > cell.height) break;
    if (below > kSameLine && inOneRow(cell, *other)) return true;
  }
  return false;
}

// The text right above that starts at the same place.
Cell* PageFitting::continuedBy(const Cell& cell) {
  for (Cell* upper = cells_.data() + (&cell - cells_.data()); upper-- != cells_.data();) {
    const double above = cell.centre() - upper->centre();
    if (above > kNextLine * cell.height) break;
    const bool sameColumn = std::abs(upper->box.left - cell.box.left) < 1;
    if (sameColumn && above > kSameLine && !upper->head) return upper;
  }
  return nullptr;
}

void PageFitting::stack(Cell& upper, Cell& lower) const {
  const double middle = upper.centre();
  for (Cell* cell : {&upper, &lower}) {
    cell->size = std::min(cell->size, kLeastCodeSize);
    cell->height = cell->size * letters_.height();
  }
  const double pitch = kLinePitch * lower.size;
  const double baseLine = middle + pitch / 2 - lower.height / 2 + lower.size * letters_.ascent;
  double up = 0;
  for (const Box& shape : shapes_) {
    const bool under = shape.left < lower.box.left + lower.size && shape.right() > lower.box.left;
    if (under && shape.top > middle) up = std::max(up, baseLine + kFramePadding / 2 - shape.top);
  }
  upper.top = middle - pitch / 2 - upper.height / 2 - up;
  lower.top = upper.top + pitch;
}

void PageFitting::findRooms() {
  for (std::size_t i = 0; i < cells_.size(); ++i) {
    Cell& cell = cells_[i];
    for (std::size_t j = i + 1; j < cells_.size(); ++j) {
      Cell& other = cells_[j];
      if (other.centre() - cell.centre() > cell.height) break;
      if (inOneRow(cell, other)) meet(cell, other);
    }
    for (const Box& shape : shapes_) {
      const double edge = shape.left > cell.box.left + 1 ? shape.left : shape.right();
      if (edge > cell.box.left + 1 && edge - kFramePadding < cell.limit && besideText(shape, cell))
        cell.limit = edge - kFramePadding;
    }
  }
}

// The left one of two texts ends where the right one begins.
void PageFitting::meet(Cell& a, Cell& b) const {
  if (!a.isLeft() || !b.isLeft()) return;
  Cell& left = a.box.left < b.box.left ? a : b;
  const Cell& right = &left == &a ? b : a;
  if (right.box.left - left.box.left < 1) return;
  left.limit = std::min(left.limit, right.box.left - kGap * left.size);
}

void PageFitting::makeColumnsAlike() {
  std::vector<Cell*> cells;
  cells.reserve(cells_.size());
  for (Cell& cell : cells_) {
    if (cell.isLeft() && !cell.head && !cell.text.empty()) cells.push_back(&cell);
  }
  const auto place = [](const Cell* cell) {
    return std::make_tuple(std::lround(cell->box.left), cell->size, cell->item->bold);
  };
  std::stable_sort(cells.begin(), cells.end(),
                   [&](const Cell* a, const Cell* b) { return place(a) < place(b); });
  std::vector<Cell*> column;
  for (auto at = cells.begin(); at != cells.end();) {
    const auto end =
        std::find_if(at, cells.end(), [&](const Cell* cell) { return place(cell) != place(*at); });
    column.assign(at, end);
    makeAlike(column);
    at = end;
  }
}

// Letters of three quarters of their width are still read easily, so that all follow when more than
// a few need it; narrower ones when most do. What few cells need beyond that they have alone.
void PageFitting::makeAlike(std::vector<Cell*>& column) const {
  const auto percent = [](const Cell* cell) {
    return 100 * (cell->limit - cell->box.left) / (cell->letters * cell->size);
  };
  const auto needed = [&](std::size_t part) {
    const auto at = column.begin() + static_cast<std::ptrdiff_t>(column.size() / part);
    std::nth_element(column.begin(), at, column.end(),
                     [&](const Cell* a, const Cell* b) { return percent(a) < percent(b); });
    return percent(*at);
  };
  constexpr std::size_t kFew = 8;
  constexpr std::size_t kMost = 2;
  constexpr double kEasilyRead = 75;
  constexpr double kStillRead = 65;
  double common = std::max(needed(kFew), kEasilyRead);
  if (column.size() >= kFew) common = std::min(common, std::max(needed(kMost), kStillRead));
  for (Cell* cell : column) cell->percent = std::min(cell->percent, wholeSteps(common));
}

Setting PageFitting::settingFor(const Cell& cell, double room) const {
  return settle({.letters = cell.letters,
                 .size = cell.size,
                 .leastSize = cell.head ? cell.size : leastSize(cell.text, cell.size),
                 .percent = cell.percent,
                 .room = std::max(room, 1.0)});
}

void PageFitting::settleLeft(Cell& cell) {
  const double room = cell.limit - cell.box.left;
  finish(cell, settingFor(cell, room), cell.box.left, room);
}

// Centred and right-aligned texts take what the others of their row leave.
void PageFitting::settleOther(Cell& cell) {
  const bool centred = cell.item->align == Align::centre;
  const double anchor = cell.box.left + (centred ? cell.box.width / 2 : cell.box.width);
  double low = 0;
  double high = std::max(cell.limit, anchor);
  for (const Cell& other : cells_) {
    const Box& box = other.fitted->box;
    if (box.width <= 0 || &other == &cell || !inOneRow(cell, other)) continue;
    const double gap = kGap * cell.size;
    if (box.left + box.width / 2 < anchor) {
      low = std::max(low, box.right() + gap);
    } else {
      high = std::min(high, box.left - gap);
    }
  }
  const double room = centred ? 2 * std::min(anchor - low, high - anchor) : anchor - low;
  const Setting setting = settingFor(cell, room);
  finish(cell, setting, anchor, room);
  Box& box = cell.fitted->box;
  box.left -= centred ? box.width / 2 : box.width;
}

double PageFitting::widthOf(std::string_view text, const Cell& cell, const Setting& setting) const {
  return letters_.of(text, cell.item->bold) * setting.size * setting.percent / 100;
}

void PageFitting::finish(Cell& cell, const Setting& setting, double left, double room) {
  FittedItem& fitted = *cell.fitted;
  fitted.size = setting.size;
  fitted.percent = setting.percent;
  fitted.text = fromWindows1252(cell.text);
  const double height = setting.size * letters_.height();
  // Smaller letters stand on the line of the others.
  const double top = cell.top + (cell.size - setting.size) * letters_.ascent;
  fitted.box = {left, top, cell.letters * setting.size * setting.percent / 100, height};
  if (setting.fits) return;
  const bool breaks = isCode(cell.text) && cell.text.size() > kShortCode && cell.isLeft();
  if (breaks && hasRoomForTwoLines(cell)) {
    breakInTwo(cell, setting);
  } else {
    cut(cell, setting, room);
  }
}

bool PageFitting::hasRoomForTwoLines(const Cell& cell) const {
  const double height = kLeastSize * (letters_.height() + kLinePitch);
  const double top = cell.centre() - height / 2;
  const auto inTheWay = [&](const Box& box) {
    return box.left < cell.limit && box.right() > cell.box.left && box.top < top + height &&
           box.bottom() > top;
  };
  const bool texts = std::any_of(cells_.begin(), cells_.end(), [&](const Cell& other) {
    const Box box{other.box.left, other.top, other.letters * other.size, other.height};
    return !inOneRow(cell, other) && inTheWay(box);
  });
  return !texts && std::none_of(shapes_.begin(), shapes_.end(), inTheWay);
}

void PageFitting::breakInTwo(Cell& cell, const Setting& setting) {
  const std::size_t at = breakPoint(cell.text);
  const std::string_view text = cell.text;
  Cell half = cell;
  half.letters = std::max(letters_.of(text.substr(0, at), cell.item->bold),
                          letters_.of(text.substr(at), cell.item->bold));
  half.size = setting.size;
  const double room = cell.limit - cell.box.left;
  const Setting narrow = settingFor(half, room);
  if (!narrow.fits) return cut(cell, setting, room);
  const double height = narrow.size * (letters_.height() + kLinePitch);
  cell.fitted->percent = narrow.percent;
  cell.fitted->broken = at;
  cell.fitted->box = {cell.box.left, cell.centre() - height / 2,
                      half.letters * narrow.size * narrow.percent / 100, height};
}

void PageFitting::cut(Cell& cell, const Setting& setting, double room) {
  FittedItem& fitted = *cell.fitted;
  const double letters = room * 100 / setting.percent / setting.size;
  fitted.isCut = true;
  fitted.cut = cutToFit(cell.text, letters_, cell.item->bold, letters);
  const std::string text =
      cell.text.substr(0, fitted.cut.kept) + '\x85' + cell.text.substr(fitted.cut.tail);
  fitted.text = fromWindows1252(text);
  fitted.box.width = widthOf(text, cell, setting);
}

}  // namespace

FittedPage fitPage(std::shared_ptr<const PageItems> page, const PageFit& fit,
                   const LetterWidths& letters, std::size_t pageTotal) {
  return PageFitting(std::move(page), fit, letters, pageTotal).run();
}

}  // namespace bw
