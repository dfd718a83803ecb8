#include "files/Files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <system_error>

#include "text/RuntimeError.h"
#include "text/Text.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void refuse(const char* what, const fs::path& path, int error) {
  throw RuntimeError(ErrorNumber::pathNotFound,
                     concat(what, path.string(), ": ", std::generic_category().message(error)));
}

// Returns 0, or the error of the step that failed.
int writeAndSync(int file, std::string_view text, mode_t mode) noexcept {
  while (!text.empty()) {
    const ssize_t written = write(file, text.data(), text.size());
    if (written < 0 && errno != EINTR) return errno;
    if (written > 0) text.remove_prefix(static_cast<std::size_t>(written));
  }
  return fchmod(file, mode) == 0 && fsync(file) == 0 ? 0 : errno;
}

}  // namespace

void writeFileWhole(const fs::path& file, std::string_view text, fs::perms permissions) {
  std::string temporary = file.string() + ".XXXXXX";
  const int opened = mkostemp(temporary.data(), O_CLOEXEC);
  if (opened < 0) refuse("The file cannot be written: ", file, errno);
  int error = writeAndSync(opened, text, static_cast<mode_t>(permissions));
  if (close(opened) != 0 && error == 0) error = errno;
  if (error == 0 && rename(temporary.c_str(), file.c_str()) != 0) error = errno;
  if (error != 0) {
    unlink(temporary.c_str());
    refuse("The file cannot be written: ", file, error);
  }
  syncFolder(file.parent_path());
}

void makeFolder(const fs::path& folder, fs::perms permissions) {
  if (folder.empty() || fs::is_directory(folder)) return;
  makeFolder(folder.parent_path(), permissions);
  if (mkdir(folder.c_str(), static_cast<mode_t>(permissions)) != 0 && errno != EEXIST)
    refuse("The folder cannot be made: ", folder, errno);
  // The umask may have taken some away.
  if (chmod(folder.c_str(), static_cast<mode_t>(permissions)) != 0)
    refuse("The folder cannot be made: ", folder, errno);
}

void syncFolder(const fs::path& folder) {
  const int opened =
      open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (opened < 0) refuse("The folder cannot be read: ", folder, errno);
  const int error = fsync(opened) == 0 ? 0 : errno;
  close(opened);
  // Some file systems keep names by themselves and know of no such call.
  if (error != 0 && error != EINVAL && error != EROFS)
    refuse("The folder cannot be written: ", folder, error);
}

}  // namespace bw
