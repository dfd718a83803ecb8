#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <ostream>
#include <sstream>
#include <system_error>

#include "core/ApoyoRegistry.h"
#include "engine/EngineMakers.h"
#include "engine/Workgroup.h"
#include "files/Files.h"
#include "text/RuntimeError.h"
#include "text/Text.h"
#include "tools/BegunDatabase.h"
#include "tools/Commands.h"
#include "tools/Copies.h"
#include "tools/Notification.h"
#include "tools/Registered.h"

namespace bw {
namespace {

namespace fs = std::filesystem;
using enum fs::perms;

[[noreturn]] void fail(const std::string& sentence) {
  throw RuntimeError(ErrorNumber::pathNotFound, sentence);
}

// The folder of the copies, which one process at a time works in.
class CopiesFolder {
 public:
  CopiesFolder(fs::path path, bool mayBeMade) : path_(std::move(path)) {
    if (!fs::is_directory(path_)) make(mayBeMade);
    descriptor_ = open(path_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor_ < 0 || flock(descriptor_, LOCK_EX) != 0)
      fail(concat("The folder for copies cannot be used: ", path_.string(), ": ",
                  std::generic_category().message(errno)));
  }
  CopiesFolder(const CopiesFolder&) = delete;
  CopiesFolder& operator=(const CopiesFolder&) = delete;
  ~CopiesFolder() {
    if (descriptor_ >= 0) close(descriptor_);
  }

  const fs::path& path() const noexcept { return path_; }

  bool isOpenToOthers() const {
    return (fs::status(path_).permissions() & (group_all | others_all)) != none;
  }

 private:
  void make(bool mayBeMade) const {
    if (!mayBeMade || !fs::is_directory(fs::absolute(path_).parent_path()))
      fail(concat("There is no folder for copies ", path_.string(),
                  ": is its disk there, and the path right?"));
    makeFolder(path_, owner_all);
  }

  fs::path path_;
  int descriptor_ = -1;
};

// What a run that was ended before left: nothing of it counts as a copy.
void sweep(const fs::path& folder, const fs::path& database) {
  const std::string begun = concat(".", database.stem().string(), "-");
  std::vector<fs::path> left;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    const std::string name = entry.path().filename().string();
    if (name.starts_with(begun) && name.find(".new") != std::string::npos)
      left.push_back(entry.path());
    if (name.ends_with(".sum") && name.starts_with(begun.substr(1)) &&
        !fs::exists(folder / entry.path().stem())) {
      left.push_back(entry.path());
      left.emplace_back(workgroupPathOf((folder / entry.path().stem()).string()));
    }
  }
  for (const fs::path& file : left) fs::remove(file);
}

void refuseShortSpace(const fs::path& folder, const fs::path& database) {
  constexpr std::uintmax_t kSpare = 16U << 20U;
  std::error_code none;
  const std::uintmax_t log = fs::file_size(database.string() + "-wal", none);
  const std::uintmax_t needed = fs::file_size(database) + (none ? 0 : log) + kSpare;
  if (const std::uintmax_t free = fs::space(folder).available; free < needed)
    fail(concat("There is too little space for a copy in ", folder.string(), ": ",
                static_cast<long>(needed >> 20U), " MiB are needed, ",
                static_cast<long>(free >> 20U), " MiB are free."));
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

Exit copyInto(const CopiesFolder& folder, const fs::path& database, DateTime now,
              std::ostream& out) {
  sweep(folder.path(), database);
  const std::vector<Copy> before = copiesIn(folder.path(), database);
  if (isUpToDate(before, database)) {
    out << "Nothing has changed since the copy " << before.back().file.string() << ".\n";
    return Exit::done;
  }
  refuseShortSpace(folder.path(), database);
  const BegunDatabase begun(folder.path() /
                            concat(".", database.stem().string(), "-", getpid(), ".new"));
  const std::vector<TablePrint> prints = copySqlite(database.string(), begun.file().string());
  const Copy copy = newCopy(folder.path(), database, now);
  writeFileWhole(copy.workgroup(), workgroupContent(workgroupPathOf(database.string())),
                 owner_read | owner_write);
  writeFileWhole(copy.sums(), sumsText(prints), owner_read | owner_write);
  if (const auto faults = faultsOf(begun.file(), copy.workgroup(), prints); !faults.empty()) {
    for (const std::string& fault : faults) out << fault << '\n';
    out << "The copy is not good, and was dropped. The command check tells of the database.\n";
    drop(copy);
    return Exit::findings;
  }
  tellRelations(begun.file(), out);
  fs::rename(begun.file(), copy.file);
  syncFolder(folder.path());
  out << "Made the copy " << copy.file.string() << ", and checked it.\n";
  for (const Copy& old : outlived(copiesIn(folder.path(), database))) drop(old);
  return Exit::done;
}

Exit backUpInto(const fs::path& path, bool mayBeMade, const fs::path& database, DateTime now,
                std::ostream& out) {
  try {
    const CopiesFolder folder(path, mayBeMade);
    if (folder.isOpenToOthers())
      out << "Note: other users of this computer can look into " << path.string() << ".\n";
    return copyInto(folder, database, now, out);
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
  const fs::path database = fs::absolute(givenOrRegistered(given));
  if (!fs::is_regular_file(database))
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
  // Of the users of a computer only those who work with the database copy it.
  if (database.empty() || access(database.c_str(), R_OK | W_OK) != 0) return Exit::done;
  std::ostringstream said;
  const Exit result = backUpDatabase(database, {}, now, said);
  out << said.str();
  if (result != Exit::done) notify("No copy of the office's data was made", said.str());
  return result;
}

}  // namespace bw
