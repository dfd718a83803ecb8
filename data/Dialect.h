#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "data/Tables.h"
#include "engine/EngineStatement.h"

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
    Collation collation = Collation::letters;  // of texts
    std::string_view name;
    std::string_view start;      // the value that a new row has when it is given none
    std::string_view collate{};  // behind the start
    std::string_view rule;       // of good values
    std::string_view noValue{};  // in front of the rule, where a missing value is good as well
  };

  SqlDialect engine;
  std::span<const Type> types;
  std::string_view inKeyOrder{};  // behind a table whose rows stand in the order of their key
  // Without it the engine names the relation or key that refuses: the sentences then belong to
  // these (see NamedRelations.h).
  std::string (*guard)(const SchemaGuard& guard) = nullptr;
  std::span<const std::string_view> hints{};  // for the planner, behind tables and indexes
  std::string_view version{};  // marks a database as one of this version, outside its tables
  std::vector<std::string> (*beforehand)() = nullptr;  // what the tables need
  std::string_view changeLog{};                        // makes the table of engine/ChangeLog.h

  const Type& typeOf(const SchemaColumn& column) const noexcept;
  // Constraints are called by this, in the case of the description.
  std::string named(std::string_view constraint) const;
};

extern const Dialect kSqliteDialect;
extern const Dialect kPostgresDialect;

const Dialect& dialectOf(SqlDialect engine) noexcept;

}  // namespace bw
