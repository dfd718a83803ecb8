#pragma once

struct sqlite3;

namespace bw {

// The log beside a database file, in which commits stand until they are brought into the file.

// Commits a transaction that changes nothing: what the log holds before it is synced with it.
// Raises DatabaseRefusal; no transaction is open then.
void commitNothing(sqlite3& database);

// Whether the statement that has just failed, and ended its transaction, may stand in the log as a
// whole commit: whoever reads the log from its beginning would take it for stored.
bool mayStandInLog(sqlite3& database) noexcept;

// Puts another commit in the place of the one that failed. False when that cannot be done.
bool takeBackCommit(sqlite3& database) noexcept;

}  // namespace bw
