#pragma once

#include <memory>
#include <string>
#include <vector>

#include "viewer/PageFit.h"
#include "viewer/PageItems.h"
#include "viewer/TextFit.h"

namespace bw {

// The one layout of a page that screen, pictures, paper and PDF draw, and by which is marked,
// selected and pointed at. All lengths are twips of paper.

struct Box {
  double left = 0;
  double top = 0;
  double width = 0;
  double height = 0;

  double right() const noexcept { return left + width; }
  double bottom() const noexcept { return top + height; }
};

struct FittedItem {
  Box box;       // of a shape; of a text what is drawn, both lines of a broken one
  int size = 0;  // of the font
  int percent = 100;
  std::u16string text;  // as drawn, an ellipsis where letters were cut
  CutText cut;          // the letters of the whole text that are not drawn
  bool isCut = false;
  std::size_t broken = 0;  // letters of the first of two lines; 0 for one line
};

struct FittedPage {
  std::shared_ptr<const PageItems> page;
  std::vector<FittedItem> items;  // of the items of `page`, one each
};

// A text's room ends at the next text or rule of its row, at the frame round it and at the edge of
// the paper. Its own width says nothing: boxes overlap by design. Most cells of a column share one
// setting. The lines above the first shape are the page's head, which keeps its size and is drawn
// as wide as what is below.
FittedPage fitPage(std::shared_ptr<const PageItems> page, const PageFit& fit,
                   const LetterWidths& letters, std::size_t pageTotal);

}  // namespace bw
