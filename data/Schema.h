#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/Engine.h"

namespace bw {

// The database's layout. schema.sql is its one description; what is told here is read from it.

// Makes the tables, saved queries and lookup rows in an empty database, all or nothing.
// Raises error `database`.
void createSchema(Engine& engine);

// The single statements of a schema text, without the comments in front of them. A statement ends
// with a semicolon at the end of a line, a trigger with the line "END;".
std::vector<std::string> splitStatements(std::string_view text);

// A condition that each row of a table meets, named after a column (NamesSize, ZITSStamp).
struct SchemaCheck {
  std::string name;
  std::string condition;
};

// Columns of a table that name a row of another table, `key` in the order of `columns`.
struct SchemaReference {
  std::vector<std::string> columns;
  std::string parent;
  std::vector<std::string> key;
  bool zeroIsNone = false;
};

struct SchemaTable {
  std::string name;
  std::vector<std::string> key;
  std::vector<SchemaCheck> checks;
  std::vector<SchemaReference> references;
  bool isLookup = false;  // filled by createSchema
};

// The twenty-one tables, each behind those that it refers to.
const std::vector<SchemaTable>& schemaTables();

// The nineteen saved queries.
const std::vector<std::string>& schemaQueries();

}  // namespace bw
