#include "tools/NewDatabase.h"

#include <pwd.h>
#include <unistd.h>

#include <cerrno>
#include <optional>
#include <system_error>
#include <vector>

#include "data/Schema.h"
#include "engine/SqliteEngine.h"
#include "engine/Workgroup.h"
#include "files/Files.h"
#include "text/RuntimeError.h"
#include "text/Text.h"
#include "tools/Commands.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

// The account that the program opens every database with.
constexpr const char* kAccount = "Kelps";

void refuseExisting(const fs::path& file) {
  if (fs::exists(fs::symlink_status(file)))
    throw Refused("There is a file already, and it is left as it is: " + file.string());
}

// Whom files are given to; nobody when no name was said.
class Owner {
 public:
  explicit Owner(const std::string& name) : name_(name) {
    if (name.empty()) return;
    const passwd* user = getpwnam(name.c_str());
    if (user == nullptr) throw Refused("This computer has no user " + name);
    ids_ = {user->pw_uid, user->pw_gid};
  }

  void give(const fs::path& file) const {
    if (!ids_ || lchown(file.c_str(), ids_->first, ids_->second) == 0) return;
    throw RuntimeError(ErrorNumber::pathNotFound, "The file cannot be given to " + name_ + ": " +
                                                      file.string() + ": " +
                                                      std::generic_category().message(errno));
  }

 private:
  std::string name_;
  std::optional<std::pair<uid_t, gid_t>> ids_;
};

// A database under its temporary name, and what the engine puts beside it; gone with this object.
// So are the folders that were made for it, as long as they hold nothing.
class Unfinished {
 public:
  explicit Unfinished(fs::path file) : file_(std::move(file)) {
    for (fs::path folder = file_.parent_path(); !fs::exists(folder); folder = folder.parent_path())
      madeFolders_.push_back(folder);
    makeFolder(file_.parent_path(), fs::perms::owner_all);
  }
  Unfinished(const Unfinished&) = delete;
  Unfinished& operator=(const Unfinished&) = delete;
  ~Unfinished() {
    std::error_code ignored;
    for (const char* ending : {"", "-wal", "-shm", "-journal"})
      fs::remove(file_.string() + ending, ignored);
    // Does nothing to a folder with the finished database in it.
    for (const fs::path& folder : madeFolders_) fs::remove(folder, ignored);
  }

  const fs::path& file() const noexcept { return file_; }

  void give(const Owner& owner) const {
    for (const fs::path& folder : madeFolders_) owner.give(folder);
    owner.give(file_);
  }

 private:
  fs::path file_;
  std::vector<fs::path> madeFolders_;  // deepest first
};

void moveTo(const fs::path& from, const fs::path& to) {
  std::error_code error;
  fs::rename(from, to, error);
  if (error)
    throw RuntimeError(ErrorNumber::pathNotFound,
                       "The file cannot be written: " + to.string() + ": " + error.message());
}

}  // namespace

void makeDatabase(const fs::path& path, const std::function<void(Engine&)>& fill,
                  const std::string& owner) {
  using enum fs::perms;
  const fs::path file = fs::absolute(path);
  const fs::path workgroup = workgroupPathOf(file.string());
  if (!file.has_filename() || workgroup == file)
    throw Refused("A database's name cannot end in \"/\" or \"w\"; " +
                  std::string("brantiwell.db is a good one: ") + path.string());
  refuseExisting(file);
  refuseExisting(workgroup);

  const Owner newOwner(owner);
  const Unfinished unfinished(concat(file.string(), ".", getpid(), ".new"));
  {
    const std::unique_ptr<Engine> engine = createSqlite(unfinished.file().string());
    createSchema(*engine);
    if (fill) fill(*engine);
  }
  unfinished.give(newOwner);
  writeFileWhole(workgroup, workgroupText(kAccount, kAccount), owner_read | owner_write);
  try {
    newOwner.give(workgroup);
    moveTo(unfinished.file(), file);
  } catch (const RuntimeError&) {
    std::error_code ignored;
    fs::remove(workgroup, ignored);
    throw;
  }
  syncFolder(file.parent_path());
}

}  // namespace bw
