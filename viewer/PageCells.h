#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "viewer/FittedPage.h"
#include "viewer/PageFit.h"
#include "viewer/PageItems.h"
#include "viewer/TextFit.h"

namespace bw {

// The texts of a page on their way to a place each.

constexpr double kGap = 0.25;        // between texts of a row, in parts of the font's size
constexpr double kLinePitch = 0.85;  // of a broken code, which has no letters below the line

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

// Two texts stand in one row when a third of the lower one does.
bool inOneRow(const Cell& a, const Cell& b);
bool isBesideText(const Box& shape, const Cell& cell);

struct PageCells {
  std::vector<Cell> cells;  // by their centres
  std::vector<Box> shapes;

  void sort();
  double lowest() const;
};

// Where each thing of a page stands when nothing but the page's scale is applied; `fitted` has an
// item for each of the page's, of which texts lack what is drawn.
PageCells placeCells(const PageItems& page, const PageFit& fit, const LetterWidths& letters,
                     std::size_t pageTotal, std::vector<FittedItem>& fitted);

// Gives every text the room up to its neighbours, and most of a column one width of letters. Moves
// second lines that run into the row below.
void giveRooms(PageCells& page, const LetterWidths& letters);

}  // namespace bw
