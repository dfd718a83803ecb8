#include "reports/ApoyoMyView.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>

#include "core/AsisRutinasApoyo.h"
#include "core/Services.h"
#include "files/Files.h"
#include "files/WholeFile.h"
#include "reports/CellTexts.h"
#include "text/Conversions.h"
#include "text/Formats.h"
#include "text/Text.h"

namespace bw {
namespace {

constexpr std::string_view kTextItem = ",,0,";
constexpr std::string_view kPageTotalItem = ",1,0,";

// Inches in twips, as a number of single precision. The product is made in double: 0.65 inches are
// 936 twips and not 935.9999.
float twipsOf(double inches) noexcept { return static_cast<float>(inches * 1440); }

class Number {
 public:
  explicit Number(std::int32_t number) noexcept { take(number); }
  explicit Number(float number) {
    constexpr float kAllDigits = 1e7F;
    const float size = std::abs(number);
    if (size < kAllDigits && number == std::trunc(number))
      take(static_cast<std::int32_t>(number));
    else if (size < kAllDigits && size >= 1)
      length_ = endOf(std::to_chars(begin(), end(), number, std::chars_format::general, 7));
    else
      takeText(textOf(number));
  }
  operator std::string_view() const noexcept { return {text_.data(), length_}; }

 private:
  char* begin() noexcept { return text_.data(); }
  char* end() noexcept { return text_.data() + text_.size(); }
  std::size_t endOf(std::to_chars_result result) noexcept {
    return static_cast<std::size_t>(result.ptr - begin());
  }
  void take(std::int32_t number) noexcept {
    length_ = endOf(std::to_chars(begin(), end(), number));
  }
  void takeText(std::string_view text) noexcept { length_ = text.copy(text_.data(), text_.size()); }

  std::array<char, 24> text_;
  std::size_t length_ = 0;
};

// A cell of a table row: all of its line that is the same in every row.
struct Cell {
  std::size_t field = 0;
  std::string left;   // ",X,"
  std::string right;  // ",W,H" and everything up to the text
  CellTexts texts;
};

// How a table's rows are laid out: kept from row to row, for a report writes thousands alike.
struct RowLayout {
  std::shared_ptr<const RowStore> store;
  std::string columns;
  std::array<double, 5> measures{};
  std::vector<Cell> cells;
  // The rows whose values the cells have, from that position in the record set on.
  std::vector<std::uint32_t> ahead;
  std::ptrdiff_t aheadFrom = 0;
};

struct Open {
  Open(const std::filesystem::path& path, std::filesystem::perms permissions)
      : file(path, permissions) {}
  WholeFile file;
  RowLayout rows;
};

std::optional<Open>& theOne() {
  static std::optional<Open> document;
  return document;
}

Open& document() {
  if (!theOne()) throw RuntimeError(ErrorNumber::objectNotSet);
  return *theOne();
}

template <class... Pieces>
void put(WholeFile& file, const Pieces&... pieces) {
  (file.append(pieces), ...);
}

void putText(WholeFile& file, std::string_view text) {
  if (needsNoChange(text))
    file.append(text);
  else
    file.append(fileText(text));
}

struct TextLook {
  std::int16_t align = kLeft;
  std::int16_t valign = kTop;
  std::int32_t colour = kBlack;
  std::int16_t size = 10;
  bool bold = false;
  bool flag = true;
};

// The part of a text item behind its kind, up to the text.
std::string lookText(const TextLook& look) {
  return concat(look.align, ",", look.valign, ",,,", look.colour, ",,Times New Roman,", look.size,
                look.bold ? ",1" : ",0", look.flag ? ",1,," : ",0,,");
}

void putTextItem(std::string_view kind, std::int32_t page, double x, double y, double w, double h,
                 const TextLook& look, std::string_view text) {
  WholeFile& file = document().file;
  put(file, Number(page), ",", Number(twipsOf(x)), ",", Number(twipsOf(y)), ",", Number(twipsOf(w)),
      ",", Number(twipsOf(h)), kind, Number(look.align), ",", Number(look.valign), ",,,",
      Number(look.colour), ",,Times New Roman,", Number(look.size), look.bold ? ",1" : ",0",
      look.flag ? ",1,," : ",0,,");
  putText(file, text);
  file.append("\r\n");
}

struct ColumnEntry {
  std::string name;
  double width = 0;
};

// Takes the first entry off a column list; its name is empty at the end of the list.
ColumnEntry takeColumn(std::string& columns) {
  std::string entry = TakeTokenSemicolon(columns);
  ColumnEntry column{TakeToken(entry), 0};
  column.width = Val(TakeToken(entry));
  return column;
}

bool laidOutAlready(const RowLayout& rows, const RowStore& store, const std::string& columns,
                    const std::array<double, 5>& measures) {
  return rows.store.get() == &store && rows.columns == columns && rows.measures == measures;
}

RowLayout layOutRows(std::shared_ptr<const RowStore> store, const std::string& columns,
                     const std::array<double, 5>& measures) {
  const auto& [xStart, h, colour, size, margin] = measures;
  RowLayout rows{.store = std::move(store), .columns = columns, .measures = measures};
  const std::string look = lookText({.valign = kMiddle,
                                     .colour = static_cast<std::int32_t>(colour),
                                     .size = static_cast<std::int16_t>(size)});
  std::string rest = columns;
  double x = xStart;
  while (!rest.empty()) {
    const ColumnEntry column = takeColumn(rest);
    if (column.name.empty()) break;
    Cell& cell = rows.cells.emplace_back();
    cell.field = rows.store->indexOf(column.name);
    cell.left = concat(",", Number(twipsOf(x + margin)), ",");
    cell.right = concat(",", Number(twipsOf(column.width - margin)), ",", Number(twipsOf(h)),
                        kTextItem, look);
    x += column.width;
  }
  return rows;
}

void readAhead(RowLayout& rows, const RecordSet& recordset, std::ptrdiff_t position) {
  const auto first = recordset.view().begin() + (position - 1);
  const std::ptrdiff_t count = recordset.RecordCount() - (position - 1);
  rows.ahead.assign(first, first + std::min(std::ptrdiff_t{CellTexts::kRows}, count));
  rows.aheadFrom = position;
  for (Cell& cell : rows.cells) cell.texts.read(rows.store->columns[cell.field], rows.ahead);
}

// The place among the rows read ahead of the record set's current one; nothing for a row that is
// being written.
std::optional<std::size_t> currentPlace(RowLayout& rows, const RecordSet& recordset) {
  const std::optional<std::uint32_t> row = recordset.currentRow();
  const std::ptrdiff_t position = recordset.AbsolutePosition();
  if (!row || position < 1) {
    rows.ahead.clear();  // what is being written may be among them
    return std::nullopt;
  }
  const auto place = static_cast<std::size_t>(position - rows.aheadFrom);
  if (place < rows.ahead.size() && rows.ahead[place] == *row) return place;
  readAhead(rows, recordset, position);
  return 0;
}

}  // namespace

ViewerDocument::ViewerDocument(const std::filesystem::path& file, double width, double height) {
  using std::filesystem::perms;
  makeFolder(file.parent_path(), perms::owner_all);
  theOne().reset();
  theOne().emplace(file, perms::owner_read | perms::owner_write);
  put(document().file, "MYVIEWER10,", Number(static_cast<float>(width)), ",",
      Number(static_cast<float>(height)), "\r\n");
}

ViewerDocument::~ViewerDocument() { theOne().reset(); }

void ViewerDocument::close() {
  document().file.finish();
  theOne().reset();
}

void ViewerText(std::int32_t page, double x, double y, double w, double h, std::int16_t align,
                std::int16_t valign, std::int32_t colour, std::int16_t size, bool bold, bool flag,
                std::string_view text) {
  putTextItem(kTextItem, page, x, y, w, h, {align, valign, colour, size, bold, flag}, text);
}

void ViewerPageTotalText(std::int32_t page, double x, double y, double w, double h,
                         std::int16_t align, std::int16_t valign, std::int32_t colour,
                         std::int16_t size, bool bold, bool flag, std::string_view text) {
  putTextItem(kPageTotalItem, page, x, y, w, h, {align, valign, colour, size, bold, flag}, text);
}

void ViewerShape(std::int32_t page, double x, double y, double w, double h, double lineWidth,
                 std::int32_t secondColour, std::int32_t firstColour) {
  put(document().file, Number(page), ",", Number(twipsOf(x)), ",", Number(twipsOf(y)), ",",
      Number(twipsOf(w)), ",", Number(twipsOf(h)), ",0,2,,,,,", Number(firstColour), ",",
      Number(secondColour), ",,,,,", Number(twipsOf(lineWidth)), ",\r\n");
}

void ViewerPageHeader(const std::string& headerLine, const std::string& title,
                      std::string subtitles, std::int32_t page, double& y) {
  const auto left = [&](double top, const std::string& text) {
    ViewerText(page, 0.5, top, 1, 0.2, kLeft, kTop, kBlack, 12, true, true, text);
  };
  const auto label = [&](double top, const char* text) {
    ViewerText(page, 6.5, top, 1, 0.15, kLeft, kTop, kBlack, 10, false, true, text);
  };
  const auto value = [&](double top, const std::string& text) {
    ViewerText(page, 6.5, top, 1, 0.15, kRight, kTop, kBlack, 10, true, true, text);
  };
  const DateTime now = services().now();
  left(0.5, kApplicationTitle);
  left(0.7, headerLine);
  label(0.5, "Page:");
  ViewerPageTotalText(page, 6.5, 0.5, 1, 0.15, kRight, kTop, kBlack, 10, true, true,
                      concat(page, " of #TotalPaginas"));
  label(0.65, "Date:");
  value(0.65, Format(now.date, "mm/dd/yy"));
  label(0.8, "Time:");
  value(0.8, Format(now.time, "hh:mm:ss"));
  ViewerText(page, 0.5, 0.5, 7, 0.2, kCentre, kTop, kBlack, 14, true, true, title);
  double next = 0.7;
  for (std::string line = TakeTokenSemicolon(subtitles); !line.empty();
       line = TakeTokenSemicolon(subtitles)) {
    ViewerText(page, 0.5, next, 7, 0.2, kCentre, kTop, kBlack, 12, true, true, line);
    next += 0.2;
  }
  y = std::max(y, next);
}

void ViewerFooterBar(std::int32_t page, double y, double w) {
  ViewerShape(page, 0.5, y, w, 0.05, 0.01, kGrey, kGrey);
}

void ViewerColumnHeads(double xStart, double y, double h, double lineWidth,
                       std::int32_t firstColour, std::int32_t secondColour, std::int32_t textColour,
                       std::int16_t size, double margin, std::string columns, std::int32_t page) {
  double x = xStart;
  while (!columns.empty()) {
    const ColumnEntry column = takeColumn(columns);
    if (column.name.empty()) break;
    ViewerShape(page, x, y, column.width - margin, h, lineWidth, secondColour, firstColour);
    ViewerText(page, x + margin, y, column.width - margin, h, kLeft, kMiddle, textColour, size,
               true, true, column.name);
    x += column.width;
  }
}

void ViewerRowCells(const RecordSetRef& recordset, double xStart, double y, double h,
                    std::int32_t textColour, std::int16_t size, double margin,
                    const std::string& columns, std::int32_t page) {
  Open& open = document();
  const std::array<double, 5> measures{xStart, h, static_cast<double>(textColour),
                                       static_cast<double>(size), margin};
  std::shared_ptr<const RowStore> store = recordset->rows();
  if (!laidOutAlready(open.rows, *store, columns, measures))
    open.rows = layOutRows(std::move(store), columns, measures);
  const std::optional<std::size_t> place = currentPlace(open.rows, *recordset);
  const Number pageText(page);
  const Number top(twipsOf(y));
  for (Cell& cell : open.rows.cells) {
    put(open.file, pageText, cell.left, top, cell.right);
    if (place)
      open.file.append(cell.texts.text(*place, open.rows.ahead[*place]));
    else
      putText(open.file, recordset->textOrEmpty(cell.field));
    open.file.append("\r\n");
  }
}

}  // namespace bw
