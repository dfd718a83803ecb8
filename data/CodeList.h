#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "records/RecordSet.h"

namespace bw {

// A set of codes as one text: ";12;305;", and ";" when empty.

// The text of an empty list, and a code put behind a list.
inline constexpr const char* kNoCodes = ";";
void appendCode(std::string& list, std::int16_t code);

// Calls for each code in order until one call returns false; what stands behind the last ";" does
// not count. False when a call did.
bool forEachCode(std::string_view list, const std::function<bool(std::int16_t)>& call);

// Takes one occurrence of the code out of the list; false when it is not in it.
bool takeCode(std::string& list, std::int16_t code);

// Makes stored details agree with a wanted list, touching only the difference: removes what is
// stored and not wanted, then inserts what is wanted and not stored. A code that stands twice in
// the list is inserted for the second time. The calls return 0 when done; the first that does not
// ends the work. True when all was done.
struct DetailCalls {
  std::function<int(std::int16_t code)> remove;
  std::function<int(std::int16_t code)> insert;
};
bool reconcileDetails(const RecordSetRef& stored, const char* column, std::string wanted,
                      const DetailCalls& calls);

}  // namespace bw
