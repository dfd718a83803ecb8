#pragma once

#include <string_view>

#include "engine/EngineStatement.h"

namespace bw {

inline constexpr const char* kDateMissing = "A date is missing.";

// Turns a statement of the program into one that the engine takes:
//   #06/15/2003#           becomes '2003-06-15' (times '14:05:09', both '2003-06-15 14:05:09')
//                          (for PostgreSQL behind the name of the type: DATE '2003-06-15')
//   SELECT TOP n ...       becomes SELECT ... LIMIT n (where the statement begins with it)
//   [Names]                is left alone (for PostgreSQL it becomes "names")
// Text between single quotes is left alone. One `;` may end the
// statement and is dropped. Refused, with a sentence in the error's text (number `database`): an
// unterminated quote, bracket or date, an impossible date, a comment, a double quote or back quote,
// a NUL, a parameter sign, and a second statement.
// A date between whose number signs nothing stands is refused with kDateMissing.
// SELECT, UPDATE and DELETE get a shape, for PostgreSQL also an INSERT of one row of plain values.
// Values that decide what a statement means, such as the numbers of columns that it sorts by, stand
// behind no equals sign and stay in it.
EngineStatement rewriteStatement(std::string_view statement, SqlDialect dialect);

// Whether a text in a statement of the program ends too early, because it holds a single quote that
// was not doubled: what stands behind it then is nothing that the program puts behind a value.
bool hasCutText(std::string_view statement);

}  // namespace bw
