#include "viewer/ReportTable.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include "viewer/TextRows.h"
#include "viewer/Windows1252.h"

namespace bw {

namespace {

constexpr double kSamePlaceTwips = 1;  // positions are written with seven digits
constexpr const char* kNumberColumn = "No.";
constexpr const char* kAccountColumn = "Account";
// A numbered table's columns for the number and the account, then that of the first head, the name.
constexpr std::size_t kAccount = 1;
constexpr std::size_t kName = 2;

std::string cellText(const PageItem& item, std::size_t pageTotal) {
  const std::string text = utf8(itemText(item, pageTotal));
  const std::size_t first = text.find_first_not_of(' ');
  if (first == text.npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// Of a column, the same on every page, whatever stands in place of the number of pages.
std::string columnName(const PageItem& head) { return cellText(head, 1); }

bool samePlace(double a, double b) { return std::abs(a - b) <= kSamePlaceTwips; }

// Walks through the texts of a page below its heads: each head is written behind its grey box, and
// no cell is bold.
template <class Head, class Cell>
void walkBelowHeads(const PageItems& page, Head head, Cell cell) {
  const PageItem* before = nullptr;
  bool below = false;
  for (const PageItem& item : page.items) {
    const bool text = item.kind == ItemKind::text && !item.caption;
    if (text && item.bold && before != nullptr && before->kind == ItemKind::shape &&
        samePlace(before->y, item.y)) {
      below = true;
      head(item);
    } else if (text && !item.bold && below) {
      cell(item);
    }
    before = &item;
  }
}

// The number of a record stands left of all heads, its account below the first one, its name to the
// right of that.
TableShape numbered(std::vector<TableColumn> columns, double nameX) {
  const double accountX = columns.front().x;
  columns.front().x = nameX;
  columns.insert(columns.begin(), {{kNumberColumn, -std::numeric_limits<double>::infinity()},
                                   {kAccountColumn, accountX}});
  return {TableKind::numbered, std::move(columns)};
}

TableShape shapeByHeads(const PageItems& page) {
  TableShape shape;
  std::vector<const PageItem*> cells;
  walkBelowHeads(
      page,
      [&](const PageItem& item) {
        shape.columns.push_back({columnName(item), item.x});
      },
      [&](const PageItem& item) { cells.push_back(&item); });
  if (shape.columns.empty()) return shape;
  shape.kind = TableKind::rows;
  const double accountX = shape.columns.front().x;
  const double nextX = shape.columns.size() > 1 ? shape.columns[1].x : accountX;
  if (cells.empty() || cells.front()->x >= accountX) return shape;
  const auto name = std::find_if(cells.begin(), cells.end(), [&](const PageItem* cell) {
    return cell->x > accountX && cell->x < nextX;
  });
  if (name == cells.end()) return shape;
  return numbered(std::move(shape.columns), (*name)->x);
}

void addCaptions(const PageItems& page, TableShape& shape) {
  for (const PageItem& item : page.items) {
    if (item.kind != ItemKind::text || !item.caption) continue;
    std::string name = columnName(item);
    const auto known = std::find_if(shape.columns.begin(), shape.columns.end(),
                                    [&](const TableColumn& column) { return column.name == name; });
    if (known == shape.columns.end()) shape.columns.push_back({std::move(name)});
    shape.kind = TableKind::boxes;
  }
}

}  // namespace

std::optional<TableShape> tableShape(const Document& document, const Progress& progress) {
  TableShape boxes;
  const std::size_t pages = document.pageCount();
  for (std::size_t number = 1; number <= pages; ++number) {
    if (!progress(number - 1, pages)) return std::nullopt;
    const PageItems page = document.parse(number);
    TableShape shape = shapeByHeads(page);
    if (shape.kind != TableKind::none) return shape;
    addCaptions(page, boxes);
  }
  return boxes;
}

TableReader::TableReader(TableShape shape)
    : shape_(std::move(shape)), record_(shape_.columns.size()), written_(shape_.columns.size()),
      patient_(shape_.columns.size()) {}

void TableReader::read(const PageItems& page, std::size_t pageTotal, const Take& take) {
  using Read = void (TableReader::*)(const PageItems&);
  constexpr std::array<Read, 4> kReads = {&TableReader::readPlainRows, &TableReader::readBelowHeads,
                                          &TableReader::readBelowHeads, &TableReader::readBoxes};
  take_ = &take;
  pageTotal_ = pageTotal;
  (this->*kReads[static_cast<std::size_t>(shape_.kind)])(page);
  finish();
}

void TableReader::readPlainRows(const PageItems& page) {
  for (const TextRow& row : textRows(page.items)) {
    TableRecord record;
    record.reserve(row.size());
    for (const PageItem* item : row) record.push_back(cellText(*item, pageTotal_));
    (*take_)(record);
  }
}

void TableReader::readBelowHeads(const PageItems& page) {
  walkBelowHeads(
      page, [](const PageItem&) {},
      [this](const PageItem& item) {
        const std::size_t column = columnAt(item.x, item.y);
        if (begins(column, item.y)) finish();
        put(column, item);
        lastColumn_ = column;
        lastY_ = item.y;
      });
}

// A caption that the box has already begins the next one. Texts in front of the first caption are
// the page's head.
void TableReader::readBoxes(const PageItems& page) {
  std::optional<std::size_t> column;
  for (const PageItem& item : page.items) {
    if (item.kind != ItemKind::text) continue;
    if (!item.caption) {
      if (column) put(*column, item);
      continue;
    }
    const std::string name = columnName(item);
    const auto found = std::find_if(shape_.columns.begin(), shape_.columns.end(),
                                    [&](const TableColumn& known) { return known.name == name; });
    column = static_cast<std::size_t>(found - shape_.columns.begin());
    if (written_[*column]) finish();
    written_[*column] = true;
    open_ = true;
  }
}

void TableReader::put(std::size_t column, const PageItem& item) {
  const std::string text = cellText(item, pageTotal_);
  std::string& cell = record_[column];
  if (!cell.empty() && !text.empty()) cell += "; ";
  cell += text;
  written_[column] = true;
  open_ = true;
}

// A column without a width begins where the next one does: their texts come one after the other.
std::size_t TableReader::columnAt(double x, double y) const {
  const std::vector<TableColumn>& columns = shape_.columns;
  const auto behind =
      std::upper_bound(columns.begin(), columns.end(), x + kSamePlaceTwips,
                       [](double place, const TableColumn& column) { return place < column.x; });
  if (behind == columns.begin()) return 0;
  const auto last = static_cast<std::size_t>(behind - columns.begin()) - 1;
  std::size_t first = last;
  while (first > 0 && samePlace(columns[first - 1].x, columns[last].x)) --first;
  const bool goesOn = open_ && samePlace(y, lastY_);
  return goesOn ? std::clamp(lastColumn_ + 1, first, last) : first;
}

// The texts of a record are written from the left to the right.
bool TableReader::begins(std::size_t column, double y) const {
  if (!open_) return false;
  if (shape_.kind == TableKind::numbered) return column == 0 || column < lastColumn_;
  return column <= lastColumn_ || !samePlace(y, lastY_);
}

void TableReader::repeatPatient() {
  if (written_[kAccount] || written_[kName]) {
    patient_ = record_;
    return;
  }
  for (const std::size_t column : {kAccount, kName}) record_[column] = patient_[column];
}

void TableReader::finish() {
  if (!open_) return;
  if (shape_.kind == TableKind::numbered) repeatPatient();
  (*take_)(record_);
  record_.assign(record_.size(), {});
  written_.assign(written_.size(), false);
  open_ = false;
}

}  // namespace bw
