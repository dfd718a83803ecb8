#pragma once

#include <functional>
#include <string_view>

#include "viewer/ReportTable.h"

namespace bw {

// Writes a document's table as CSV: UTF-8 with a byte order mark, CR LF, fields quoted where they
// need it; the columns' names in the first line, then a line a record. A field that a spreadsheet
// would calculate gets an apostrophe in front, so that it stays the text that it is.
// Returns false when `progress` ended it.
bool exportCsv(const Document& document, const std::function<void(std::string_view)>& write,
               const Progress& progress);

}  // namespace bw
