#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "platform/Column.h"

namespace bw {

// The rows of a record set, column by column, in load order. A row's number never changes;
// a deleted row only leaves the record set's view.
class RowStore {
 public:
  std::vector<Column> columns;

  std::size_t rowCount() const noexcept { return columns.empty() ? 0 : columns.front().size(); }

  // Without regard to case; nothing when there is none.
  std::optional<std::size_t> find(std::string_view name) const noexcept;
  // Raises 3265 when there is none.
  std::size_t indexOf(std::string_view name) const;

  std::size_t bytes() const noexcept;
};

}  // namespace bw
