#pragma once

#include <QScrollArea>
#include <cstdint>
#include <vector>

#include "review/OfficeSnapshot.h"
#include "review/PageKind.h"

namespace bw {

// Rows with Caption and Count as bars, from top to bottom.
class BarChart : public QScrollArea {
 public:
  explicit BarChart(QWidget* parent);

  void setRows(const Rows& rows, const std::vector<std::uint32_t>& order);

 private:
  class Bars;
  Bars* bars_;
};

// The same on paper: a caption, its bar and its number a line.
void printBars(const PageSheet& sheet);

}  // namespace bw
