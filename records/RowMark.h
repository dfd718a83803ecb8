#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "records/RowStore.h"

namespace bw {

// What tells records of one name apart: the texts of those fields, parted by commas. Empty ones are
// left out; an unknown field raises 3265.
std::string markOf(const RowStore& store, std::uint32_t row,
                   const std::vector<std::string>& fields);

}  // namespace bw
