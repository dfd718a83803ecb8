#include "viewer/FittedPage.h"

#include <algorithm>
#include <utility>

#include "viewer/PageCells.h"
#include "viewer/Windows1252.h"

namespace bw {

namespace {

class PageFitting {
 public:
  PageFitting(std::shared_ptr<const PageItems> page, const PageFit& fit,
              const LetterWidths& letters, std::size_t pageTotal)
      : fit_(fit), letters_(letters), pageTotal_(pageTotal) {
    result_.page = std::move(page);
  }

  FittedPage run();

 private:
  void place() { cells_ = placeCells(*result_.page, fit_, letters_, pageTotal_, result_.items); }
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
  PageCells cells_;
};

FittedPage PageFitting::run() {
  place();
  if (const double bottom = cells_.lowest();
      bottom > fit_.paperHeight() && bottom < 2 * fit_.paperHeight()) {
    const double down = fit_.paperHeight() / bottom;
    fit_.across *= down;
    fit_.down *= down;
    place();
  }
  giveRooms(cells_, letters_);
  for (Cell& cell : cells_.cells) {
    if (cell.isLeft()) settleLeft(cell);
  }
  for (const Align align : {Align::end, Align::centre}) {
    for (Cell& cell : cells_.cells) {
      if (cell.item->align == align) settleOther(cell);
    }
  }
  return std::move(result_);
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
  for (const Cell& other : cells_.cells) {
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
  const bool texts = std::any_of(cells_.cells.begin(), cells_.cells.end(), [&](const Cell& other) {
    const Box box{other.box.left, other.top, other.letters * other.size, other.height};
    return !inOneRow(cell, other) && inTheWay(box);
  });
  return !texts && std::none_of(cells_.shapes.begin(), cells_.shapes.end(), inTheWay);
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
