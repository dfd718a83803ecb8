#include "tools/NewDatabase.h"

#include <unistd.h>

#include <system_error>

#include "data/Schema.h"
#include "platform/Files.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"
#include "platform/Workgroup.h"
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

// A database under its temporary name, and what the engine puts beside it; gone with this object.
// So is the folder, when it was made for it and holds nothing.
class Unfinished {
 public:
  explicit Unfinished(fs::path file) : file_(std::move(file)) {
    const fs::path folder = file_.parent_path();
    if (!fs::exists(folder)) madeFolder_ = folder;
    makeFolder(folder, fs::perms::owner_all);
  }
  Unfinished(const Unfinished&) = delete;
  Unfinished& operator=(const Unfinished&) = delete;
  ~Unfinished() {
    std::error_code ignored;
    for (const char* ending : {"", "-wal", "-shm", "-journal"})
      fs::remove(file_.string() + ending, ignored);
    // Does nothing to a folder with the finished database in it.
    if (!madeFolder_.empty()) fs::remove(madeFolder_, ignored);
  }

  const fs::path& file() const noexcept { return file_; }

 private:
  fs::path file_;
  fs::path madeFolder_;
};

void moveTo(const fs::path& from, const fs::path& to) {
  std::error_code error;
  fs::rename(from, to, error);
  if (error)
    throw RuntimeError(ErrorNumber::pathNotFound,
                       "The file cannot be written: " + to.string() + ": " + error.message());
}

}  // namespace

void makeDatabase(const fs::path& path, const std::function<void(Engine&)>& fill) {
  using enum fs::perms;
  const fs::path file = fs::absolute(path);
  const fs::path workgroup = workgroupPathOf(file.string());
  if (!file.has_filename() || workgroup == file)
    throw Refused("A database's name cannot end in \"/\" or \"w\"; " +
                  std::string("brantiwell.db is a good one: ") + path.string());
  refuseExisting(file);
  refuseExisting(workgroup);

  const Unfinished unfinished(concat(file.string(), ".", getpid(), ".new"));
  {
    const std::unique_ptr<Engine> engine = createSqlite(unfinished.file().string());
    createSchema(*engine);
    if (fill) fill(*engine);
  }
  writeFileWhole(workgroup, workgroupText(kAccount, kAccount), owner_read | owner_write);
  try {
    moveTo(unfinished.file(), file);
  } catch (const RuntimeError&) {
    std::error_code ignored;
    fs::remove(workgroup, ignored);
    throw;
  }
  syncFolder(file.parent_path());
}

}  // namespace bw
