#pragma once

#include <string>

#include "records/RecordSet.h"

namespace bw {

// How an editor reads its record and what it offers, and stores the record under its code.

// Opens rows. False, after a message, when that fails, or when there are none and `emptyMessage`
// says so.
bool openRows(RecordSetRef& rows, const std::string& statement, const char* emptyMessage = nullptr);

// Whether a Get delivered its record. If not, that is told in a message.
bool foundRecord(const RecordSetRef& record);

// Inserts the record when `current` is 0, else updates it; the routine's result. An insert hands
// out its code before the commit, and after one that failed the code is nobody's: the editor takes
// it over with result 0 only, so that the next Ok inserts again.
template <auto insert, auto update, class Code, class... Values>
int storeRecord(Code& current, std::string& message, const Values&... values) {
  if (current != 0) return update(current, values..., message);
  Code added = 0;
  const int result = insert(added, values..., message);
  if (result == 0) current = added;
  return result;
}

}  // namespace bw
