#pragma once

#include <functional>
#include <iosfwd>
#include <string>

#include "engine/Engine.h"

namespace bw {

// Makes the tables of an office in an empty database on a server by `make`, and a group role that
// may read and write their rows and nothing else. Says on `out` what is left to do for whoever
// administers the server. Raises Refused for a database that holds something, or whose texts would
// compare otherwise than in a file.
void makeServerDatabase(const std::string& address, const std::function<void(Engine&)>& make,
                        std::ostream& out);

// Lets whoever may write the rows of an office on a server add lines to its log of changes and read
// it, but take nothing out. Raises DatabaseRefusal.
void letDesksLog(Engine& engine);

// Whether the server would notice damaged pages of the database.
bool keepsChecksums(Engine& engine);

}  // namespace bw
