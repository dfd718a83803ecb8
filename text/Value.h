#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "text/Moment.h"

namespace bw {

// What a field holds: no value (Null), an integer, a date, a time, both, or UTF-8 text.
using Value = std::variant<std::monostate, std::int64_t, Date, TimeOfDay, DateTime, std::string>;

inline bool isNull(const Value& value) noexcept { return value.index() == 0; }

// How a column was declared, which decides what its fields hold and how they compare.
enum class FieldType : std::uint8_t {
  untyped,   // an expression: by the values found
  smallint,  // 16 bits
  integer,   // 32 bits
  text,
  date,
  time,
  dateTime,
};

// The default text of a value: 7, 6/15/2003, 2:05:09 PM, 6/15/2003 2:05:09 PM.
// Null raises 94.
std::string textOf(const Value& value);

// The same, with "" for Null.
std::string textOrEmpty(const Value& value);

// The value as a field of that type takes it: text "00012" becomes 12 in an integer.
// Not convertible: 3421. An integer that does not fit: "Multiple-step operation ...".
// A date field takes the date of a moment, a time field its time. Null goes into every type.
Value convertedTo(FieldType type, const Value& value);

}  // namespace bw
