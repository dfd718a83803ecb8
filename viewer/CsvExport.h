#pragma once

#include <cstddef>
#include <functional>
#include <string_view>

#include "viewer/Document.h"

namespace bw {

// Told how much of a long work is done; false ends the work.
using Progress = std::function<bool(std::size_t done, std::size_t total)>;

// Writes the text rows of all pages as CSV: UTF-8 with a byte order mark, CR LF, fields quoted
// where they need it. The lines of a page that lie at one height are a row (TextRows.h).
// Cells stand in columns by their left edge, the same columns on every page, so that a row without
// a patient's name keeps its codes in the columns of the codes. Texts that start at one place are
// one cell ("Page:" and its number). A document with more than kMaxCsvColumns different left edges
// is no table: its cells then follow each other without columns.
// Returns false when `progress` ended it.
bool exportCsv(const Document& document, const std::function<void(std::string_view)>& write,
               const Progress& progress);

constexpr std::size_t kMaxCsvColumns = 100;

}  // namespace bw
