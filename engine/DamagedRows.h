#pragma once

#include <string>
#include <vector>

struct sqlite3;

namespace bw {

// The rows of an embedded database that cannot be read: a sentence a table, which tells by their
// keys between which rows they stand.
std::vector<std::string> findUnreadableRows(sqlite3& database);

// What the engine itself finds in its pages, as far as it comes. Not what the rows hold.
std::vector<std::string> findByEngine(sqlite3& database);

}  // namespace bw
