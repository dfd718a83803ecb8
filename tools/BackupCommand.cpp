#include <unistd.h>

#include <algorithm>
#include <ostream>
#include <sstream>
#include <system_error>

#include "core/ApoyoRegistry.h"
#include "engine/EngineMakers.h"
#include "engine/PostgresAddress.h"
#include "engine/Workgroup.h"
#include "files/Files.h"
#include "text/RuntimeError.h"
#include "text/Text.h"
#include "tools/BegunDatabase.h"
#include "tools/Commands.h"
#include "tools/Copies.h"
#include "tools/CopiesFolder.h"
#include "tools/Notification.h"
#include "tools/Registered.h"
#include "tools/ServerDumps.h"

namespace bw {
namespace {

namespace fs = std::filesystem;
using enum fs::perms;

// What a copy needs at most.
std::uintmax_t sizeOf(const fs::path& database) {
  std::error_code none;
  const std::uintmax_t log = fs::file_size(database.string() + "-wal", none);
  return fs::file_size(database) + (none ? 0 : log);
}

// Whether the newest copy holds what the database holds. Then that is noted.
bool isUpToDate(const std::vector<Copy>& copies, const fs::path& database) {
  if (copies.empty()) return false;
  const Copy& newest = copies.back();
  const std::vector<TablePrint> noted = notedSums(newest);
  if (noted.empty() || printsOf(database.string()) != noted) return false;
  if (!faultsOf(newest.file, newest.workgroup(), noted).empty()) return false;
  fs::last_write_time(newest.sums(), fs::file_time_type::clock::now());
  return true;
}

// Rows that name rows which do not exist are copied with the others; whoever restores must know.
void tellRelations(const fs::path& file, std::ostream& out) {
  const std::size_t astray =
      openEngine(file.string())->read("PRAGMA foreign_key_check")->rowCount();
  if (astray > 0)
    out << "Note: " << astray
        << " rows name rows that do not exist; the command check tells which.\n";
}

// Puts what was begun among the copies, when it is good. Nothing of it stays otherwise.
Exit finishCopy(const fs::path& begun, const Copy& copy, const fs::path& database,
                const std::vector<TablePrint>& prints, std::ostream& out) {
  try {
    writeFileWhole(copy.workgroup(), workgroupContent(workgroupPathOf(database.string())),
                   owner_read | owner_write);
    writeFileWhole(copy.sums(), sumsText(prints), owner_read | owner_write);
    if (const auto faults = faultsOf(begun, copy.workgroup(), prints); !faults.empty()) {
      for (const std::string& fault : faults) out << fault << '\n';
      out << "The copy is not good, and was dropped. The command check tells of the database.\n";
      drop(copy);
      return Exit::findings;
    }
    tellRelations(begun, out);
    nameForGood(begun, copy.file);
  } catch (const std::exception&) {
    drop(copy);
    throw;
  }
  out << "Made the copy " << copy.file.string() << ", and checked it.\n";
  return Exit::done;
}

Exit copyInto(const CopiesFolder& folder, const fs::path& database, DateTime now,
              std::ostream& out) {
  sweepCopies(folder.path(), database);
  std::vector<Copy> copies = copiesIn(folder.path(), database);
  if (isUpToDate(copies, database)) {
    out << "Nothing has changed since the copy " << copies.back().file.string() << ".\n";
    return Exit::done;
  }
  folder.refuseShortSpace(sizeOf(database));
  const BegunDatabase begun(begunCopy(folder.path(), database));
  const std::vector<TablePrint> prints = copySqlite(database.string(), begun.file().string());
  copies.push_back(newCopy(folder.path(), database, now));
  const Exit result = finishCopy(begun.file(), copies.back(), database, prints, out);
  if (result == Exit::done) dropOutlived(copies, out);
  return result;
}

Exit backUpInto(const fs::path& path, bool mayBeMade, const fs::path& database, DateTime now,
                std::ostream& out) {
  try {
    const CopiesFolder folder(path, mayBeMade);
    folder.tellWhoSees(out);
    return isServerAddress(database.string()) ? dumpServer(database.string(), folder, now, out)
                                              : copyInto(folder, database, now, out);
  } catch (const std::exception& error) {  // RuntimeError, and what the file system raises
    out << error.what() << "\nNo copy was made in " << path.string() << ".\n";
    return Exit::unavailable;
  }
}

// How old copies are is told when they get no younger.
void tellAge(const fs::path& folder, const fs::path& database, std::ostream& out) {
  const int days = ageInDays(copiesIn(folder, database));
  if (days >= kOldInDays)
    out << "The newest good copy in " << folder.string() << " is " << days << " days old.\n";
}

}  // namespace

Exit backUpDatabase(const fs::path& given, const fs::path& folder, DateTime now,
                    std::ostream& out) {
  const fs::path database = givenOrRegistered(given);
  if (!isServerAddress(database.string()) && !fs::is_regular_file(database))
    throw RuntimeError(ErrorNumber::fileNotFound, "There is no file " + database.string());
  const std::vector<fs::path> folders =
      folder.empty() ? copiesFolders(database) : std::vector<fs::path>{folder};
  Exit result = Exit::done;
  for (const fs::path& one : folders) {
    const Exit copied = backUpInto(one, one == folders.front(), database, now, out);
    if (copied != Exit::done) tellAge(one, database, out);
    result = std::max(result, copied);
  }
  return result;
}

Exit backUpByItself(DateTime now, std::ostream& out) {
  const std::string database = installationText("Database");
  // Of the users of a computer only those who work with the database copy it. One on a server is
  // copied from the computers where it is said where to.
  const bool isOurs = isServerAddress(database) ? !installationText("CopiesFolder").empty()
                                                : access(database.c_str(), R_OK | W_OK) == 0;
  if (database.empty() || !isOurs) return Exit::done;
  std::ostringstream said;
  const Exit result = backUpDatabase(database, {}, now, said);
  out << said.str();
  if (result != Exit::done) notify("No copy of the office's data was made", said.str());
  return result;
}

}  // namespace bw
