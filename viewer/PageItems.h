#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "viewer/DocumentIndex.h"

namespace bw {

// The items of one page. Coordinates and sizes are twips, font sizes points, colours
// red + 256 x green + 65536 x blue.

constexpr int kItemFields = 19;

enum class ItemKind : std::uint8_t { text, shape };
enum class Align : std::uint8_t { start, centre, end };  // left or top, centre, right or bottom

struct PageItem {
  ItemKind kind = ItemKind::text;
  Align align = Align::start;
  Align valign = Align::start;
  bool pageTotal = false;  // "#TotalPaginas" in the text stands for the number of pages
  bool bold = false;
  // Field 17 zero: the small caption of a form's field, part of the form rather than of the data.
  // It is shown, printed and found; copying leaves it out, so that a column of names does not come
  // with the word "Patient" in every second cell, and in a table it names the column.
  bool caption = false;
  double x = 0;
  double y = 0;
  double width = 0;  // negative for a column without a width
  double height = 0;
  double fontSize = 0;
  double lineWidth = 0;
  std::uint32_t colour = 0;  // of the text or the outline
  std::uint32_t fill = 0;
  std::string_view text;  // bytes of the document, Windows-1252
};

struct PageItems {
  std::vector<PageItem> items;  // in the order of writing, later ones on top
  Damage damage;                // the first line whose item was left out
};

// Items whose numbers are none, infinite or beyond reason are left out; nothing is raised.
PageItems parsePage(std::string_view document, std::span<const LineRun> runs);

// One line without its end; nothing when an item would be left out.
std::optional<PageItem> parseItem(std::string_view line);

// A decimal number as a whole, not above `limit` nor below its negative.
std::optional<double> parseDecimal(std::string_view text, double limit) noexcept;

// The text with the token replaced, Windows-1252.
std::string itemBytes(const PageItem& item, std::size_t pageTotal);

// The text as it is shown: decoded, the token replaced, control characters as blanks.
std::u16string itemText(const PageItem& item, std::size_t pageTotal);

}  // namespace bw
