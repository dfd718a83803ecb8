#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "controls/ListModel.h"
#include "records/RowStore.h"

namespace bw {

// Rows of a store as a text for spreadsheets (see CsvText.h), under the heads of the columns.
std::string tableText(const RowStore& store, std::span<const std::uint32_t> rows,
                      std::span<const ListColumn> columns);

// All rows and all fields, under the fields' names.
std::string tableText(const RowStore& store);

}  // namespace bw
