#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <ostream>
#include <system_error>

#include "engine/PostgresAddress.h"
#include "engine/Refusals.h"
#include "engine/Workgroup.h"
#include "files/Files.h"
#include "text/RuntimeError.h"
#include "text/Text.h"
#include "tools/BegunDatabase.h"
#include "tools/Commands.h"
#include "tools/Copies.h"
#include "tools/Registered.h"
#include "tools/ServerDumps.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const char* what, const fs::path& file) {
  throw RuntimeError(ErrorNumber::pathNotFound,
                     concat(what, file.string(), ": ", std::generic_category().message(errno)));
}

// Nobody else has the file of the database open, and nobody can open it, as long as this lives.
class SoleUse {
 public:
  explicit SoleUse(const fs::path& database) {
    // Where every connection of the engine holds a lock.
    constexpr off_t kFirst = 0x40000000;
    constexpr off_t kBytes = 512;
    if (!fs::exists(database)) return;
    descriptor_ = open(database.c_str(), O_RDWR | O_CLOEXEC);
    if (descriptor_ < 0) fail("The database cannot be written: ", database);
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = kFirst;
    lock.l_len = kBytes;
    if (fcntl(descriptor_, F_SETLK, &lock) == 0) return;
    close(descriptor_);
    throw Refused("A program has the database open. Close it on every desktop, then try again: " +
                  database.string());
  }
  SoleUse(const SoleUse&) = delete;
  SoleUse& operator=(const SoleUse&) = delete;
  ~SoleUse() {
    if (descriptor_ >= 0) close(descriptor_);
  }

 private:
  int descriptor_ = -1;
};

// To whom the restored files belong: as those that were there, else as the folder.
struct Rights {
  explicit Rights(const fs::path& database) {
    struct stat status {};
    if (stat(database.c_str(), &status) == 0)
      mode = status.st_mode & 0777U;
    else if (stat(fs::absolute(database).parent_path().c_str(), &status) != 0)
      fail("There is no folder for ", database);
    user = status.st_uid;
    group = status.st_gid;
  }
  void give(const fs::path& file) const {
    const bool own = geteuid() != 0 && geteuid() == user;
    if ((!own && lchown(file.c_str(), user, group) != 0) || chmod(file.c_str(), mode) != 0)
      fail("The file cannot be given to its owner: ", file);
  }

  uid_t user = 0;
  gid_t group = 0;
  mode_t mode = S_IRUSR | S_IWUSR;
};

// What was there: kept under names with the moment in them, and put back when the copy does not
// come into its place. A database without a log beside it keeps its own name, too, until the copy
// takes that in one step: whenever the power fails, one of the two stands there. One with a log
// goes first and comes back last: without it the log cannot be taken for another's.
class Before {
 public:
  Before(const fs::path& database, const fs::path& kept)
      : parts_{part(database, kept), part(database.string() + "-wal", kept.string() + "-wal"),
               part(workgroupPathOf(database.string()), workgroupPathOf(kept.string()))},
        sharedMemory_(database.string() + "-shm") {}

  void keep() {
    for (Part& part : parts_) {
      if (part.stood && !isLinked(part) && rename(part.place.c_str(), part.kept.c_str()) != 0)
        fail("The file cannot be moved: ", part.place);
      part.isKept = true;
    }
    fs::remove(sharedMemory_);
  }

  void putBack(std::ostream& out) const {
    bool isBack = true;
    std::error_code error;
    // Of the copy nothing may be there when parts of the other come back.
    for (const Part& part : parts_)
      if (part.isKept && (hasLog() || !part.stood)) fs::remove(part.place, error);
    for (auto part = parts_.rbegin(); part != parts_.rend(); ++part) {
      if (!part->isKept || !part->stood) continue;
      fs::rename(part->kept, part->place, error);
      isBack = isBack && !error;
      if (!error) fs::remove(part->kept, error);  // two names of one file are left both
    }
    out << (isBack ? "What was there stands as before.\n"
                   : "What was there is kept, and could not be put back:\n");
    if (!isBack) tell(out);
  }

  void tell(std::ostream& out) const {
    for (const Part& part : parts_)
      if (fs::exists(part.kept)) out << "Kept what was there as " << part.kept.string() << ".\n";
  }

 private:
  struct Part {
    fs::path place;
    fs::path kept;
    bool stood;
    bool isKept = false;  // if it stood; the copy's may take the place
  };

  static Part part(const fs::path& place, const fs::path& kept) {
    return {.place = place, .kept = kept, .stood = fs::exists(place)};
  }

  bool hasLog() const noexcept { return parts_[1].stood; }
  // Not every file system knows links.
  bool isLinked(const Part& part) const {
    return !hasLog() && link(part.place.c_str(), part.kept.c_str()) == 0;
  }

  std::array<Part, 3> parts_;
  fs::path sharedMemory_;
};

[[noreturn]] void refuse(const fs::path& copy, const std::string& fault) {
  throw Refused(
      concat("The copy is not good, and nothing was restored: ", copy.string(), ": ", fault));
}

// Copies a copy to be put in place; returns what its tables hold.
std::vector<TablePrint> prepare(const Copy& copy, const fs::path& prepared) {
  std::vector<TablePrint> prints;
  try {
    prints = copySqlite(copy.file.string(), prepared.string());
  } catch (const DatabaseRefusal& refusal) {
    if (refusal.why() != Refusal::damaged) throw;
    refuse(copy.file, refusal.text());
  }
  const std::vector<TablePrint> noted = notedSums(copy);
  const std::vector<std::string> faults =
      faultsOf(prepared, copy.workgroup(), noted.empty() ? prints : noted);
  if (!faults.empty()) refuse(copy.file, faults.front());
  return prints;
}

}  // namespace

Exit restoreDatabase(const fs::path& from, const fs::path& given, DateTime now, std::ostream& out) {
  const fs::path database = givenOrRegistered(given);
  if (isServerAddress(database.string())) return restoreDump(from, database.string(), out);
  const Copy copy{fs::absolute(from), {}};
  if (!fs::is_regular_file(copy.file))
    throw RuntimeError(ErrorNumber::fileNotFound, "There is no copy " + copy.file.string());
  if (fs::exists(database) && fs::equivalent(copy.file, database))
    throw Refused("The copy is the database itself.");
  const SoleUse alone(database);
  const Rights rights(database);
  const BegunDatabase prepared(concat(database.string(), ".", getpid(), ".new"));
  const std::vector<TablePrint> prints = prepare(copy, prepared.file());
  rights.give(prepared.file());

  const fs::path workgroup = workgroupPathOf(database.string());
  const std::string account = workgroupContent(copy.workgroup());
  const Copy kept = newCopy(database.parent_path(),
                            database.parent_path() / concat(database.stem().string(), "-before",
                                                            database.extension().string()),
                            now);
  Before before(database, kept.file);
  try {
    before.keep();
    writeFileWhole(workgroup, account, fs::perms(rights.mode));
    rights.give(workgroup);
    // Before it has its name: from then on programs may write to it.
    if (const auto faults = faultsOf(prepared.file(), workgroup, prints); !faults.empty())
      refuse(copy.file, faults.front());
    nameForGood(prepared.file(), database);
  } catch (const std::exception&) {
    before.putBack(out);
    throw;
  }
  before.tell(out);
  out << "Restored " << database.string() << " from " << copy.file.string()
      << ", and checked it.\n";
  return Exit::done;
}

}  // namespace bw
