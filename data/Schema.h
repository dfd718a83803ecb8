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

// The names of the saved queries.
std::vector<std::string> schemaQueries();

}  // namespace bw
