#pragma once

#include <string>
#include <vector>

#include "viewer/PageItems.h"

namespace bw {

// The texts of a page in reading order: rows from the top, the cells of a row from the left.

// Items whose tops lie this close stand in one row. A row number is written a hundredth of an inch
// above its row; the lines of a page's head are a twentieth apart.
constexpr double kSameRowTwips = 40;

using TextRow = std::vector<const PageItem*>;

// Text items that are no captions and not empty; cells that start together keep their order.
std::vector<TextRow> textRows(const std::vector<PageItem>& items);
std::vector<TextRow> textRows(std::vector<const PageItem*> items);

bool isReadable(const PageItem& item) noexcept;

// Cells with a tab between them, rows ended by a line feed; UTF-16.
std::u16string plainText(const std::vector<TextRow>& rows, std::size_t pageTotal);

}  // namespace bw
