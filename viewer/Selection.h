#pragma once

#include <QRectF>
#include <optional>
#include <string>
#include <vector>

#include "viewer/FittedDocument.h"

namespace bw {

// A place in a document: page from 1, twips of paper from its corner.
struct Spot {
  std::size_t page = 0;
  double x = 0;
  double y = 0;
};

// The band that a drag spans, over one page or several. It selects the texts that it touches, not
// their boxes: boxes overlap, and a band through one row would take its neighbours along.
class Selection {
 public:
  void clear() noexcept { spots_.reset(); }
  void start(const Spot& at) noexcept { spots_ = {at, at}; }
  void extendTo(const Spot& to) noexcept;
  void takePage(std::size_t page);

  bool active() const noexcept { return spots_.has_value(); }
  std::size_t firstPage() const noexcept;
  std::size_t lastPage() const noexcept;

  // The band's part on a page; nothing when it does not reach there.
  std::optional<QRectF> band(std::size_t page, PageSize size) const;

  // Indices of the texts that it touches on a page.
  std::vector<std::size_t> items(const FittedPage& page, std::size_t number, PageSize size) const;

  // All selected texts in the order of reading: a tab between cells, a line feed behind rows.
  std::u16string text(const FittedDocument& document) const;

 private:
  struct Spots {
    Spot anchor;
    Spot end;
  };

  std::optional<Spots> spots_;
};

}  // namespace bw
