#pragma once

#include <string>
#include <string_view>

#include "text/Value.h"

namespace bw {

// What a declared column takes is kept by a check, named after the column with an ending that tells
// its rule. What goes wrong is told in the words of that rule.
struct ColumnRule {
  FieldType type;
  std::string_view ending;     // of the check's name
  std::string_view refusal;    // follows the column's name
  std::string_view complaint;  // of a row that is there: follows "<column> holds "
  std::string_view form;       // of a good value in a text file: "a whole number"
  std::string_view limit{};    // behind the form
};

// The rule of a declared type; none is declared `untyped`.
const ColumnRule& ruleOf(FieldType type) noexcept;

// The refusal of a check by its name, and the column that it is named after ("" for none).
std::string checkSentence(std::string_view check);
std::string_view columnOfCheck(std::string_view check) noexcept;

}  // namespace bw
