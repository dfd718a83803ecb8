#pragma once

#include <string>

#include "viewer/DocumentIndex.h"

namespace bw {

// How all pages of a document come on their paper. Paper twips are document twips times `across`
// or `down`.
struct PageFit {
  PageSize paper;  // inches, as it lies
  PageSize used;   // the part of it that is drawn on, from its corner
  double across = 1;
  double down = 1;
  bool turned = false;   // the paper lies across, though the page was written for it upright
  double bodyRight = 0;  // paper twips that the items reach to; 0 when nothing is narrowed

  double paperWidth() const noexcept { return paper.width * kTwipsPerInch; }
  double paperHeight() const noexcept { return paper.height * kTwipsPerInch; }
};

// The paper that a page of this size was laid out for, lying as the page does. A writer rounds its
// paper to whole inches: 8 by 11 is Letter, 8 by 12 A4, 11 by 8.2 Letter across. A page that no
// paper takes gets the one that makes it smaller by the least.
PageSize paperFor(PageSize page);

// Everything in its own size where the items end on the paper; else narrower, the heights kept.
// Below 75 % an upright paper is turned instead. `rightEdge` is the document's, in twips.
PageFit fitToPaper(PageSize page, double rightEdge);

// Everything in its own size, on a paper made as wide as the items need.
PageFit naturalFit(PageSize page, double rightEdge);

// A plain sentence about what was done to a document; "" when nothing was.
std::string sentence(const PageFit& fit);

}  // namespace bw
