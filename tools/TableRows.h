#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "engine/Engine.h"

namespace bw {

// Inserts rows of one table, a call a row, a cell a column: whole numbers, texts, dates, times,
// values.
class TableRows {
 public:
  TableRows(Engine& engine, const std::string& table, const std::vector<std::string>& columns)
      : insert_(engine.prepareInsert(table, columns, RowsAre::good)) {}

  template <class... Cells>
  void operator()(const Cells&... cells) {
    const std::array<Value, sizeof...(Cells)> values{cell(cells)...};
    insert_->row(values);
  }

 private:
  template <class Cell>
  static Value cell(const Cell& content) {
    if constexpr (std::is_integral_v<Cell>)
      return std::int64_t{content};
    else if constexpr (std::is_convertible_v<Cell, std::string_view>)
      return std::string(std::string_view(content));
    else
      return content;
  }

  std::unique_ptr<BulkInsert> insert_;
};

}  // namespace bw
