#include "tools/NewFolder.h"

#include <unistd.h>

#include "files/Files.h"
#include "text/Text.h"
#include "tools/Commands.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

fs::path withoutSlash(const fs::path& folder) {
  const fs::path whole = fs::absolute(folder).lexically_normal();
  return whole.has_filename() ? whole : whole.parent_path();
}

}  // namespace

NewFolder::NewFolder(const fs::path& folder)
    : folder_(withoutSlash(folder)), draft_(concat(folder_.string(), ".", getpid(), ".new")) {
  if (fs::exists(fs::symlink_status(folder_)) &&
      !(fs::is_directory(folder_) && fs::is_empty(folder_)))
    throw Refused("Say a new or an empty folder. This one is left as it is: " + folder_.string());
  if (!fs::is_directory(folder_.parent_path()))
    throw Refused("There is no folder " + folder_.parent_path().string());
  makeFolder(draft_, fs::perms::owner_all);
}

NewFolder::~NewFolder() {
  std::error_code ignored;
  fs::remove_all(draft_, ignored);
}

void NewFolder::finish() const {
  syncFolder(draft_);
  nameForGood(draft_, folder_);
}

}  // namespace bw
