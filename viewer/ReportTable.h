#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "viewer/Document.h"

namespace bw {

// The table that a document lays out on its pages, found by how its items lie. What a page repeats
// (title, date, heads of columns) is no part of it. Texts are UTF-8, without blanks at their ends.

enum class TableKind : std::uint8_t {
  none,      // each row of texts is a record, its texts follow each other without columns
  rows,      // a row of texts is a record, the columns stand below heads
  numbered,  // so too, but a record has a number at its left and texts in several rows
  boxes,     // a record is a box of fields, each below a caption
};

struct TableColumn {
  std::string name;
  double x = 0;  // twips; texts from there up to the next column belong to it. Not for boxes.
};

struct TableShape {
  TableKind kind = TableKind::none;
  std::vector<TableColumn> columns;
};

// The first page with heads says the columns; boxes have those of all captions. Nothing when
// `progress` ended it.
std::optional<TableShape> tableShape(const Document& document, const Progress& progress);

// A cell a column; several texts of a column are joined by "; ".
using TableRecord = std::vector<std::string>;

// Reads the records of page after page. In a numbered table account and name stand at a patient's
// first record only: the records behind it repeat them, on later pages too.
class TableReader {
 public:
  using Take = std::function<void(const TableRecord&)>;

  explicit TableReader(TableShape shape);

  void read(const PageItems& page, std::size_t pageTotal, const Take& take);

 private:
  void readPlainRows(const PageItems& page);
  void readBoxes(const PageItems& page);
  void readBelowHeads(const PageItems& page);
  void put(std::size_t column, const PageItem& item);
  std::size_t columnAt(double x, double y) const;
  bool begins(std::size_t column, double y) const;
  void repeatPatient();
  void finish();

  TableShape shape_;
  const Take* take_ = nullptr;
  std::size_t pageTotal_ = 0;
  TableRecord record_;
  std::vector<bool> written_;  // a column that the record has a text for, be it empty
  bool open_ = false;
  std::size_t lastColumn_ = 0;
  double lastY_ = 0;
  TableRecord patient_;
};

}  // namespace bw
