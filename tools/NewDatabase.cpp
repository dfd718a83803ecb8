#include "tools/NewDatabase.h"

#include <unistd.h>

#include <system_error>

#include "data/Schema.h"
#include "engine/SqliteEngine.h"
#include "engine/Workgroup.h"
#include "files/Files.h"
#include "text/RuntimeError.h"
#include "text/Text.h"
#include "tools/FileAccess.h"

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
// So is the folder that was made for it, as long as it holds nothing.
class Unfinished {
 public:
  explicit Unfinished(fs::path file) : file_(std::move(file)) {
    const fs::path folder = file_.parent_path();
    if (fs::is_directory(folder)) return;
    if (!fs::is_directory(folder.parent_path()))
      throw Refused("There is no folder " + folder.parent_path().string() +
                    ": is the path right? Only the last folder of a path is made.");
    makeFolder(folder, fs::perms::owner_all);
    madeFolder_ = folder;
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

  void give(const FileAccess& access) const {
    if (!madeFolder_.empty()) access.give(madeFolder_, access.folderPermissions());
    access.give(file_, access.filePermissions());
  }

 private:
  fs::path file_;
  fs::path madeFolder_;
};

// All of it stands in the one file that is given its name, and on the disk. The engine says nothing
// of a failure when it is closed.
void finish(std::unique_ptr<Engine> engine, const fs::path& file) {
  const std::shared_ptr<RowStore> ended = engine->read("PRAGMA wal_checkpoint(TRUNCATE)");
  if (ended->columns.front().raw(0) != 0) throw DatabaseRefusal(Refusal::locked);
  engine.reset();
  const std::unique_ptr<Engine> opened = openSqlite(file.string());
  for (const std::string& query : schemaQueries())
    opened->read(concat("SELECT * FROM [", query, "] WHERE 1 = 0"));
}

}  // namespace

void makeDatabase(const fs::path& path, const std::function<void(Engine&)>& fill,
                  const Access& access) {
  const fs::path file = fs::absolute(path);
  const fs::path workgroup = workgroupPathOf(file.string());
  if (!file.has_filename() || workgroup == file)
    throw Refused("A database's name cannot end in \"/\" or \"w\"; " +
                  std::string("brantiwell.db is a good one: ") + path.string());
  refuseExisting(file);
  refuseExisting(workgroup);

  const FileAccess given(access);
  const Unfinished unfinished(concat(file.string(), ".", getpid(), ".new"));
  std::unique_ptr<Engine> engine = createSqlite(unfinished.file().string());
  createSchema(*engine, fill);
  finish(std::move(engine), unfinished.file());
  unfinished.give(given);
  writeFileWhole(workgroup, workgroupText(kAccount, kAccount), given.filePermissions());
  try {
    given.give(workgroup, given.filePermissions());
    nameForGood(unfinished.file(), file);
  } catch (const RuntimeError&) {
    std::error_code ignored;
    fs::remove(workgroup, ignored);
    fs::remove(file, ignored);
    throw;
  }
}

}  // namespace bw
