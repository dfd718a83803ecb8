#include "tools/FileAccess.h"

#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "text/RuntimeError.h"
#include "text/Text.h"

namespace bw {

namespace fs = std::filesystem;

FileAccess::FileAccess(const Access& access)
    : names_(concat(access.owner, access.owner.empty() || access.group.empty() ? "" : ", ",
                    access.group)),
      shared_(!access.group.empty()) {
  if (!access.owner.empty()) {
    const passwd* user = getpwnam(access.owner.c_str());
    if (user == nullptr) throw Refused("This computer has no user " + access.owner);
    user_ = user->pw_uid;
    group_ = user->pw_gid;
  }
  if (access.group.empty()) return;
  const group* members = getgrnam(access.group.c_str());
  if (members == nullptr) throw Refused("This computer has no group " + access.group);
  group_ = members->gr_gid;
}

fs::perms FileAccess::filePermissions() const noexcept {
  using enum fs::perms;
  return owner_read | owner_write | (shared_ ? group_read | group_write : none);
}

fs::perms FileAccess::folderPermissions() const noexcept {
  using enum fs::perms;
  return owner_all | (shared_ ? group_all | set_gid : none);
}

void FileAccess::give(const fs::path& file, fs::perms permissions) const {
  constexpr auto kSame = static_cast<uid_t>(-1);
  const bool given = (!user_ && !group_) ||
                     lchown(file.c_str(), user_.value_or(kSame), group_.value_or(kSame)) == 0;
  // Behind the change of hands, which may take the group's bit away.
  if (given && chmod(file.c_str(), static_cast<mode_t>(permissions)) == 0) return;
  throw RuntimeError(ErrorNumber::pathNotFound,
                     concat("The file cannot be given to ", names_, ": ", file.string(), ": ",
                            std::generic_category().message(errno)));
}

}  // namespace bw
