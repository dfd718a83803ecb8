#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "records/Column.h"
#include "text/TextSearch.h"

namespace bw {

// What one column shows in some rows, made ready for searching by parts of it: every distinct text
// stands here once, as it is searched, so that a search costs what the column has of them and not
// what it has of rows. The column must outlive this; values that it takes later are not found.
class ColumnSearch {
 public:
  ColumnSearch(const Column& column, const std::vector<std::uint32_t>& rows);

  // Searches all texts and returns the best hit. `wanted` is a search text, not an empty one.
  Hit search(std::string_view wanted) { return texts_.search(wanted); }
  // What the last search found in that row.
  Hit hit(std::uint32_t row) const noexcept;

 private:
  void takeDictionary();
  void takeValues(const std::vector<std::uint32_t>& rows);

  const Column& column_;
  std::int64_t base_ = 0;             // a raw value less this is the number of its text, or
  std::vector<std::int64_t> sparse_;  // its place among these, when the values lie far apart
  TextSearch texts_;
};

}  // namespace bw
