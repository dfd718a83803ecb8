#pragma once

#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "review/OfficeSnapshot.h"
#include "text/Moment.h"

namespace bw {

// How many charges there were, by what they have in common.

std::span<const char* const> divisionNames();  // by month, doctor, ...
std::span<const char* const> measureNames();   // what is counted

struct FigureQuestion {
  std::size_t division = 0;  // places in the lists above
  std::size_t measure = 0;
  std::optional<Date> from{};  // of care; unset: from the first or to the last
  std::optional<Date> to{};
};

// Rows: Caption, Count, Share (of the sum). The latest month comes first, days come in their
// order, everything else with the most first. A patient is counted once in each row that he has
// charges in, and once in `all`, so that rows of patients may come to more than that.
struct Figures {
  Rows rows;
  std::size_t all = 0;
};
Figures findFigures(const RowStore& charges, const FigureQuestion& question);

}  // namespace bw
