#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "engine/Engine.h"

namespace bw {

// Makes the tables, saved queries and lookup rows in an empty database, and whatever `fill` adds,
// all or nothing. Raises error `database`.
void createSchema(Engine& engine, const std::function<void(Engine&)>& fill = {});

// Makes a database keep a log of changes (engine/ChangeLog.h), or stop. Its lines stay. A program
// that is open goes on as it began. Within the caller's transaction. Raises error `database`.
void keepChangeLog(Engine& engine, bool kept);

// The names of the saved queries.
std::vector<std::string> schemaQueries();

// The tables that a statement reads, also those behind its saved queries, in small letters.
std::set<std::string> tablesBehind(std::string_view statement);

}  // namespace bw
