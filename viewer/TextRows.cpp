#include "viewer/TextRows.h"

#include <algorithm>

namespace bw {

bool isReadable(const PageItem& item) noexcept {
  return item.kind == ItemKind::text && !item.caption && !item.text.empty();
}

std::vector<TextRow> textRows(const std::vector<PageItem>& items) {
  std::vector<const PageItem*> readable;
  readable.reserve(items.size());
  for (const PageItem& item : items) {
    if (isReadable(item)) readable.push_back(&item);
  }
  return textRows(std::move(readable));
}

std::vector<TextRow> textRows(std::vector<const PageItem*> items) {
  std::stable_sort(items.begin(), items.end(),
                   [](const PageItem* a, const PageItem* b) { return a->y < b->y; });
  std::vector<TextRow> rows;
  for (const PageItem* item : items) {
    if (rows.empty() || item->y - rows.back().front()->y > kSameRowTwips) rows.emplace_back();
    rows.back().push_back(item);
  }
  for (TextRow& row : rows) {
    std::stable_sort(row.begin(), row.end(),
                     [](const PageItem* a, const PageItem* b) { return a->x < b->x; });
  }
  return rows;
}

std::u16string plainText(const std::vector<TextRow>& rows, std::size_t pageTotal) {
  std::u16string text;
  for (const TextRow& row : rows) {
    for (std::size_t i = 0; i < row.size(); ++i) {
      if (i != 0) text += u'\t';
      text += itemText(*row[i], pageTotal);
    }
    text += u'\n';
  }
  return text;
}

}  // namespace bw
