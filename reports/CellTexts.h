#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "records/Column.h"

namespace bw {

// Most texts stand in the file of a document as they are.
bool needsNoChange(std::string_view text) noexcept;
// How any other does: in the code page of documents, on one line.
std::string fileText(std::string_view text);

// How the values of a record set's column stand in a document, some rows read ahead: under a sort
// they lie apart in memory, and read one after the other each would be waited for by itself. A text
// that many rows look up is made once.
class CellTexts {
 public:
  static constexpr std::size_t kRows = 64;

  // Reads kRows values at most. The column must stay until the next call.
  void read(const Column& column, std::span<const std::uint32_t> rows);
  // Of the row at that place among those read, from 0; good until the next call.
  std::string_view text(std::size_t place, std::uint32_t row);

 private:
  std::string ofRaw(std::int64_t raw) const;
  std::string_view found(std::uint32_t row);

  const Column* column_ = nullptr;
  bool isFound_ = false;
  std::array<std::int64_t, kRows> values_{};  // the rows where texts are found, or raw values
  std::vector<std::optional<std::string>> foundTexts_;  // by those rows
  std::int64_t raw_ = Column::kNull;                    // of the text made last: it often repeats
  std::string text_;
};

}  // namespace bw
