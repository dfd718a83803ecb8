#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "text/Value.h"

namespace bw {

// What refuses a change of a table's rows, for a reason that the engine's own refusal would not
// tell.
struct SchemaGuard {
  struct Refusal {
    std::string sentence;
    std::string condition;  // on the row: OLD.column, NEW.column
  };

  std::string name;
  std::string event;  // "INSERT", "DELETE", "UPDATE OF A, B"
  std::string_view table;
  std::string when{};  // the changes that it looks at; all when empty
  std::vector<Refusal> refusals;
};

// How an engine spells the description of the tables. In rules a # stands for the column's name.
struct Dialect {
  struct Type {
    FieldType type;
    std::string_view name;
    std::string_view start;    // the value that a new row has when it is given none
    std::string_view rule;     // of good values
    std::string_view noValue;  // in front of the rule, where a missing value is good as well
  };

  std::span<const Type> types;
  std::string_view lettersCollation;
  std::string_view codesCollation;
  std::string_view inKeyOrder;  // behind a table whose rows stand in the order of their key
  std::string (*guard)(const SchemaGuard& guard);
  std::span<const std::string_view> hints;  // for the planner, behind tables and indexes
  std::string_view changeLog;               // makes the table of engine/ChangeLog.h
};

extern const Dialect kSqliteDialect;

}  // namespace bw
