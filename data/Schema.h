#pragma once

#include <string>
#include <vector>

#include "engine/Engine.h"

namespace bw {

// Makes the tables, saved queries and lookup rows in an empty database, all or nothing.
// Raises error `database`.
void createSchema(Engine& engine);
// The same within the caller's transaction.
void makeSchema(Engine& engine);

// Makes a database keep a log of changes (engine/ChangeLog.h), or stop. Its lines stay. A program
// that is open goes on as it began. Raises error `database`.
void keepChangeLog(Engine& engine, bool kept);

// The names of the saved queries.
std::vector<std::string> schemaQueries();

}  // namespace bw
