#include <algorithm>
#include <cmath>
#include <tuple>

#include "viewer/PageCells.h"

namespace bw {
namespace {

constexpr double kFramePadding = 30;  // between a text and the frame or rule that it ends at
constexpr double kSameLine = 20;      // tops of texts in one line differ by less
constexpr double kNextLine = 1.3;     // a line below is no farther than this many times its height

int wholeSteps(double percent) { return static_cast<int>(percent) / 5 * 5; }

class Rooms {
 public:
  Rooms(PageCells& page, const LetterWidths& letters) : page_(page), letters_(letters) {}

  void give() {
    separateRows();
    findRooms();
    makeColumnsAlike();
  }

 private:
  void separateRows();
  bool runsIntoNextRow(const Cell& cell) const;
  Cell* continuedBy(const Cell& cell);
  void stack(Cell& upper, Cell& lower) const;
  void findRooms();
  void meet(Cell& a, Cell& b) const;
  void makeColumnsAlike();
  void makeAlike(std::vector<Cell*>& column) const;

  PageCells& page_;
  const LetterWidths& letters_;
};

// A second line of codes may stand closer to the row below than to its own. It goes up to the line
// that it continues, both of them smaller.
void Rooms::separateRows() {
  bool moved = false;
  for (Cell& cell : page_.cells) {
    if (cell.head || !cell.isLeft() || cell.text.empty() || !runsIntoNextRow(cell)) continue;
    if (Cell* upper = continuedBy(cell)) {
      stack(*upper, cell);
      moved = true;
    }
  }
  if (moved) page_.sort();
}

bool Rooms::runsIntoNextRow(const Cell& cell) const {
  for (const Cell* other = &cell; other != page_.cells.data() + page_.cells.size(); ++other) {
    const double below = other->centre() - cell.centre();
    if (below > cell.height) break;
    if (below > kSameLine && inOneRow(cell, *other)) return true;
  }
  return false;
}

// The text right above that starts at the same place.
Cell* Rooms::continuedBy(const Cell& cell) {
  for (Cell* upper = page_.cells.data() + (&cell - page_.cells.data());
       upper-- != page_.cells.data();) {
    const double above = cell.centre() - upper->centre();
    if (above > kNextLine * cell.height) break;
    const bool sameColumn = std::abs(upper->box.left - cell.box.left) < 1;
    if (sameColumn && above > kSameLine && !upper->head) return upper;
  }
  return nullptr;
}

void Rooms::stack(Cell& upper, Cell& lower) const {
  const double middle = upper.centre();
  for (Cell* cell : {&upper, &lower}) {
    cell->size = std::min(cell->size, kLeastCodeSize);
    cell->height = cell->size * letters_.height();
  }
  const double pitch = kLinePitch * lower.size;
  const double baseLine = middle + pitch / 2 - lower.height / 2 + lower.size * letters_.ascent;
  double up = 0;
  for (const Box& shape : page_.shapes) {
    const bool under = shape.left < lower.box.left + lower.size && shape.right() > lower.box.left;
    if (under && shape.top > middle) up = std::max(up, baseLine + kFramePadding / 2 - shape.top);
  }
  upper.top = middle - pitch / 2 - upper.height / 2 - up;
  lower.top = upper.top + pitch;
}

void Rooms::findRooms() {
  for (std::size_t i = 0; i < page_.cells.size(); ++i) {
    Cell& cell = page_.cells[i];
    for (std::size_t j = i + 1; j < page_.cells.size(); ++j) {
      Cell& other = page_.cells[j];
      if (other.centre() - cell.centre() > cell.height) break;
      if (inOneRow(cell, other)) meet(cell, other);
    }
    for (const Box& shape : page_.shapes) {
      const double edge = shape.left > cell.box.left + 1 ? shape.left : shape.right();
      if (edge > cell.box.left + 1 && edge - kFramePadding < cell.limit &&
          isBesideText(shape, cell))
        cell.limit = edge - kFramePadding;
    }
  }
}

// The left one of two texts ends where the right one begins.
void Rooms::meet(Cell& a, Cell& b) const {
  if (!a.isLeft() || !b.isLeft()) return;
  Cell& left = a.box.left < b.box.left ? a : b;
  const Cell& right = &left == &a ? b : a;
  if (right.box.left - left.box.left < 1) return;
  left.limit = std::min(left.limit, right.box.left - kGap * left.size);
}

void Rooms::makeColumnsAlike() {
  std::vector<Cell*> cells;
  cells.reserve(page_.cells.size());
  for (Cell& cell : page_.cells) {
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
void Rooms::makeAlike(std::vector<Cell*>& column) const {
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

}  // namespace

void giveRooms(PageCells& page, const LetterWidths& letters) { Rooms(page, letters).give(); }

}  // namespace bw
