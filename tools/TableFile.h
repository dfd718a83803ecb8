#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "text/Value.h"

namespace bw {

// How the characters of a text file are spelled.
enum class TextCode : std::uint8_t { utf8, windows1252 };

// A text file with the rows of one table: a line of column names, then a line a row. Lines may end
// in LF or CR LF. In Table.tsv cells are parted by tabs and have no quotes. In Table.csv they are
// parted by commas, or by semicolons when the line of names has no comma, and may stand in quotes:
// then they may hold what parts cells, line ends, and quotes written twice.
class TableFile {
 public:
  // Raises error 53 when the file cannot be read, Refused when it is not spelled like that.
  explicit TableFile(const std::filesystem::path& file, TextCode code = TextCode::utf8);

  const std::vector<std::string_view>& header() const noexcept { return header_; }

  // The next row's cells, valid until the next call; nothing behind the last. Raises Refused for a
  // quoted cell that does not end.
  const std::vector<std::string_view>* next();
  // In which the row read last begins; the header is line 1.
  std::size_t line() const noexcept { return line_; }
  // How much of the file is read, 0 to 1.
  double done() const noexcept;

 private:
  void readCells();
  std::string_view plainCell();
  std::string_view quotedCell();
  bool stepsToCell();
  bool isAtEndOfCell() const noexcept;
  [[noreturn]] void refuse(std::string_view sentence) const;

  std::string name_;
  std::string text_;  // quoted cells are brought to what they mean in their place
  std::size_t at_ = 0;
  bool quotes_ = false;
  char separator_ = '\t';
  std::vector<std::string_view> cells_;
  std::vector<std::string_view> header_;
  std::size_t line_ = 0;
  std::size_t nextLine_ = 1;
};

// The file's ending when it is one that is read as a table, in small letters: ".tsv", ".csv".
std::optional<std::string_view> tableEnding(const std::filesystem::path& file);

// A cell as a column of that type takes it; nothing when it is none. An empty cell is the empty
// text in a text column and no value in any other.
std::optional<Value> cellValue(FieldType type, std::string_view cell);

// A value as such a cell spells it.
std::string cellText(const Value& value);

}  // namespace bw
