#pragma once

#include <filesystem>
#include <iosfwd>
#include <string>
#include <vector>

#include "engine/SqliteCopy.h"
#include "text/Moment.h"

namespace bw {

// A copy of a database file is three files in a folder, named by the database and the moment: the
// database, its workgroup file, and the sums of its tables (.sum), whose time tells when the copy
// was last known to hold what the database holds. The database's file is named last and dropped
// first, so that whatever has its name is whole. A copy of a database on a server is one file, by
// the server's own program (ServerDumps.h).
struct Copy {
  std::filesystem::path file;
  std::string moment;  // "2026-11-25-101500", local time

  std::filesystem::path sums() const;
  std::filesystem::path workgroup() const;
};

// From so many days on a copy is old.
inline constexpr int kOldInDays = 7;

// The folders that are set for the copies of a database on this computer: the first is made when it
// is not there; a second must be. Raises Refused when none is set for a database on a server.
std::vector<std::filesystem::path> copiesFolders(const std::filesystem::path& database);

// The copies of a database in the first of them.
std::vector<Copy> copiesOf(const std::filesystem::path& database);

// The copies of a database in a folder, the oldest first; none when there is no such folder.
std::vector<Copy> copiesIn(const std::filesystem::path& folder,
                           const std::filesystem::path& database);

// Removes what a run that was ended before left: nothing of it counts as a copy.
void sweepCopies(const std::filesystem::path& folder, const std::filesystem::path& database);
// Under which name a copy is begun.
std::filesystem::path begunCopy(const std::filesystem::path& folder,
                                const std::filesystem::path& database);

// The next name in a folder that is not taken, from a moment on.
Copy newCopy(const std::filesystem::path& folder, const std::filesystem::path& database,
             DateTime moment);

std::string sumsText(const std::vector<TablePrint>& prints);
// What was noted of a copy; empty when there is nothing that can be read.
std::vector<TablePrint> notedSums(const Copy& copy);

// What is wrong with a database that is to stand for those sums, a sentence each: it must open as
// the program opens it, be whole, and hold what was noted. `workgroup` is the file beside it.
std::vector<std::string> faultsOf(const std::filesystem::path& file,
                                  const std::filesystem::path& workgroup,
                                  const std::vector<TablePrint>& noted);

// Those to drop of copies, the oldest first: the last 20 stay, and the last of each month.
std::vector<Copy> outlived(const std::vector<Copy>& copies);
// False when something of it cannot be removed.
bool drop(const Copy& copy);
// Drops what a new copy makes too many, and tells what stays all the same.
void dropOutlived(const std::vector<Copy>& copies, std::ostream& out);

// Whole days since the newest copy was last known to be up to date; -1 when there is none, or when
// it lacks its sums.
int ageInDays(const std::vector<Copy>& copies);

}  // namespace bw
