#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace bw {

// A part of the statement.
using ShapeValue = std::variant<std::int64_t, std::string_view>;

// What statements that differ in nothing but the values behind their equals signs have in common:
// "... WHERE PatientId = 7 AND ChargeDate = '2003-06-15'" and the one for the next charge.
struct StatementShape {
  std::string text;  // with a ? for each value; empty when the statement has no shape to share
  std::vector<ShapeValue> values;
};

// The shape of a rewritten statement. Only SELECT, UPDATE and DELETE have one. Values that decide
// what a statement means, such as the numbers of columns that it sorts by, stand behind no equals
// sign and stay in the text.
StatementShape shapeOf(std::string_view statement);

}  // namespace bw
