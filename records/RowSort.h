#pragma once

#include <cstdint>
#include <vector>

#include "records/RowStore.h"

namespace bw {

struct BoundSort {
  std::size_t column = 0;
  bool descending = false;
  bool operator==(const BoundSort&) const = default;
};

// Whether `keys` is `before` with one key put, or moved, to the front.
bool isHeadOf(const std::vector<BoundSort>& keys, const std::vector<BoundSort>& before);

// Orders rows by one column, leaving equal ones as they stand. Texts without regard to case, no
// value first (last when descending).
void sortStably(std::vector<std::uint32_t>& rows, const RowStore& store, BoundSort key);

// Whether row a stands before row b: by the keys, then in load order.
class RowOrder {
 public:
  RowOrder(const RowStore& store, const std::vector<BoundSort>& keys);
  bool operator()(std::uint32_t a, std::uint32_t b) const;

 private:
  const RowStore& store_;
  const std::vector<BoundSort>& keys_;
};

}  // namespace bw
