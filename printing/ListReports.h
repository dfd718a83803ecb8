#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>

#include "controls/ListView.h"
#include "records/RecordSet.h"

namespace bw {

// The list reports of the views: each prints what its list shows.

struct FilterWord {
  std::int16_t filter;
  std::string_view word;
};

struct ListReport {
  std::string_view title;  // up to the filter word
  std::string_view document;
  std::span<const FilterWord> words;
};

// "Doctors (All)". A filter without a word leaves it empty.
std::string reportTitle(std::string_view title, std::span<const FilterWord> words,
                        std::int16_t filter);

// Where a document of that name is written.
std::filesystem::path documentPath(std::string_view name);

// The two column lists of a list (see ApoyoMyView.h): its columns as the user sees them, from left
// to right, widths in inches of two decimals, halves to even. Hidden columns are left out.
struct ColumnLists {
  std::string heads;
  std::string fields;
};
ColumnLists columnLists(const ListView& list);

// What Imprimir does on a view.
void printList(const ListView& list, const RecordSetRef& recordset, const ListReport& report,
               std::int16_t filter);

}  // namespace bw
