#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "text/Value.h"

namespace bw {

// Criteria as Find and Filter take them: `PatientId = 7`, `ChargeDate=#06/15/2003#`,
// `[Names] <> 'Smith'`. Dates in any of m/d/yyyy, yyyy/m/d, h:mm:ss AM/PM, hh:mm:ss, or both.

enum class Comparison { equal, notEqual, less, lessOrEqual, greater, greaterOrEqual };

struct Clause {
  std::string name;  // the column, without brackets
  Comparison comparison = Comparison::equal;
  Value value;  // never Null
};

// A clause, or a group of them joined from left to right: AND has no precedence over OR.
struct Criteria {
  enum class Joint { first, both, either };
  struct Part;
  std::vector<Part> parts;
  bool empty() const noexcept { return parts.empty(); }
};
struct Criteria::Part {
  Joint joint = Joint::first;  // how it is joined to what stands before
  Clause clause;               // when `group` is empty
  Criteria group;              // a parenthesis
};

// One clause; anything else raises 3001.
Clause parseClause(std::string_view text);

// Clauses joined by AND and OR, parentheses allowed. "" gives no part. A parenthesised group with
// OR in it that AND joins to something raises 3001, as does everything that cannot be read.
Criteria parseCriteria(std::string_view text);

struct SortKey {
  std::string name;
  bool descending = false;
};

// "Names, DateOfBirth DESC": blanks around names and brackets are ignored. Rubbish raises 3001.
std::vector<SortKey> parseSort(std::string_view text);

}  // namespace bw
