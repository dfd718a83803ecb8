#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "reports/ReportSheet.h"
#include "review/PageKind.h"

namespace bw {

// Writes a page's document, one row after another in that order, and starts the viewer, as
// writeReport does.
void writePageReport(const PageSheet& asked, const std::vector<std::uint32_t>& order,
                     const std::function<void(Sheet& sheet, std::uint32_t row)>& write);

}  // namespace bw
