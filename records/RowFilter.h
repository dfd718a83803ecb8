#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "records/Criteria.h"
#include "records/RowStore.h"

namespace bw {

// Criteria bound to the columns of a store. A text is compared once for each distinct text, not
// once for each row. No value passes no comparison.
class RowFilter {
 public:
  // Unknown names raise 3265, values that the column's type cannot take 3001.
  RowFilter(const RowStore& store, const Criteria& criteria);
  RowFilter(const RowStore& store, const Clause& clause);

  bool passes(std::uint32_t row) const;

 private:
  struct Test {
    const Column* column = nullptr;
    Comparison comparison = Comparison::equal;
    std::int64_t operand = 0;                   // of numbers and moments
    std::string text;                           // folded, of texts
    mutable std::vector<signed char> byNumber;  // of texts: -1 unknown, else 0 or 1
    bool passes(std::uint32_t row) const;
  };
  struct Part {
    Criteria::Joint joint = Criteria::Joint::first;
    Test test;
    std::unique_ptr<RowFilter> group;
  };

  static Test bind(const RowStore& store, const Clause& clause);

  std::vector<Part> parts_;
};

}  // namespace bw
