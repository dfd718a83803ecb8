#pragma once

#include <optional>
#include <string_view>

#include "text/Value.h"

namespace bw {

// What stands between two number signs: a date (6/15/2003 month first, day first when the month
// would be impossible; 2003/6/15 year first), a time (14:05:09, 2:05:09 PM), or both with blanks
// between. The result is a Date, a TimeOfDay or a DateTime; nothing when there is no such moment.
std::optional<Value> parseDateLiteral(std::string_view text) noexcept;

}  // namespace bw
