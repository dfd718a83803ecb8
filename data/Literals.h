#pragma once

#include <optional>
#include <string>

#include "text/Formats.h"

namespace bw {

// Texts that stand between number signs in statements. A missing date gives none, and the statement
// is refused.
inline std::string monthFirst(Date date) { return Format(date, "mm/dd/yyyy"); }
inline std::string yearFirst(Date date) { return Format(date, "yyyy/mm/dd"); }
inline std::string monthFirstIfAny(std::optional<Date> date) {
  return date ? monthFirst(*date) : std::string();
}
inline std::string yearFirstIfAny(std::optional<Date> date) {
  return date ? yearFirst(*date) : std::string();
}
inline std::string clock24(TimeOfDay time) { return Format(time, "hh:MM:ss"); }
inline std::string stamp(DateTime moment) { return Format(moment, "yyyy/mm/dd hh:MM:ss"); }

}  // namespace bw
