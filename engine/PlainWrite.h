#pragma once

#include <string_view>

namespace bw {

// Texts stand in the program's statements as they were typed, so that a text can complete its
// statement and go on. This keeps what it can say to the one row of its statement. Refused, with a
// sentence in the error's text (number `database`), is what no write of the program has: a second
// row of values or anything else behind the first, nested and compound selects, joins, a source of
// rows, RETURNING, functions, sets, and texts behind a letter (E'...').
// What is left is an assignment or an expression for the same row. A statement that no engine takes
// is let through: the engine says more.
void requirePlainWrite(std::string_view statement);

}  // namespace bw
