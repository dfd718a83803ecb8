#pragma once

#include <filesystem>
#include <iosfwd>
#include <string>

#include "text/Moment.h"
#include "tools/Commands.h"
#include "tools/CopiesFolder.h"

namespace bw {

// Copies of an office on a server: dumps by the server's own programs, a file each
// (office-2026-11-25-101500.dump), named when they are checked.

// Dumps the database as of one moment into a folder, while all work, and drops old dumps. Checked
// by restoring it into a database for trial, whose rows are compared, where the account may make
// one; otherwise by listing what is in it.
Exit dumpServer(const std::string& address, const CopiesFolder& folder, DateTime now,
                std::ostream& out);

// Whether a file can be read as a dump.
bool isReadable(const std::filesystem::path& dump);

// Fills an empty database from a dump. What is left to do there is told.
Exit restoreDump(const std::filesystem::path& dump, const std::string& address, std::ostream& out);

}  // namespace bw
