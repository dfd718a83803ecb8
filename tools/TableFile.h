#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "text/Value.h"

namespace bw {

// A text file with the rows of one table: UTF-8, a line of column names, then a line a row, the
// cells parted by tabs, without quotes. Lines may end in LF or CR LF.
class TableFile {
 public:
  // Raises error 53 when the file cannot be read.
  explicit TableFile(const std::filesystem::path& file);

  const std::vector<std::string_view>& header() const noexcept { return header_; }

  // The next row's cells, valid until the next call; nothing behind the last.
  const std::vector<std::string_view>* next();
  // Of the row read last; the header is line 1.
  std::size_t line() const noexcept { return line_; }
  // How much of the file is read, 0 to 1.
  double done() const noexcept;

 private:
  void readCells();

  std::string text_;
  std::string_view rest_;
  std::vector<std::string_view> cells_;
  std::vector<std::string_view> header_;
  std::size_t line_ = 0;
};

// A cell as a column of that type takes it; nothing when it is none. An empty cell is the empty
// text in a text column and no value in any other.
std::optional<Value> cellValue(FieldType type, std::string_view cell);

}  // namespace bw
