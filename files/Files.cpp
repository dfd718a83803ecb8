#include "files/Files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <sstream>
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

// Returns 0, or the error.
int syncPath(const fs::path& path, int flags) noexcept {
  const int opened = open(path.c_str(), O_RDONLY | O_CLOEXEC | flags);
  if (opened < 0) return errno;
  const int error = fsync(opened) == 0 ? 0 : errno;
  close(opened);
  return error;
}

// Makes the names in a folder survive a power cut. Returns 0, or the error.
int syncNames(const fs::path& folder) noexcept {
  const int error = syncPath(folder.empty() ? fs::path(".") : folder, O_DIRECTORY);
  // Some file systems keep names by themselves and know of no such call.
  return error == EINVAL || error == EROFS ? 0 : error;
}

}  // namespace

void writeFileWhole(const fs::path& file, std::string_view text, fs::perms permissions) {
  std::string temporary = file.string() + ".XXXXXX";
  const int opened = mkostemp(temporary.data(), O_CLOEXEC);
  if (opened < 0) refuse("The file cannot be written: ", file, errno);
  int error = writeAndSync(opened, text, static_cast<mode_t>(permissions));
  if (close(opened) != 0 && error == 0) error = errno;
  try {
    if (error != 0) refuse("The file cannot be written: ", file, error);
    nameForGood(temporary, file);
  } catch (const RuntimeError&) {
    unlink(temporary.c_str());
    throw;
  }
}

std::string textOfFile(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  const int error = stream ? 0 : errno;
  if (error == ENOENT) return {};
  std::ostringstream text;
  text << stream.rdbuf();
  if (error != 0 || text.bad()) refuse("The file cannot be read: ", file, error != 0 ? error : EIO);
  return text.str();
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
  for (const fs::directory_entry& entry : fs::directory_iterator(folder))
    if (const int error = syncPath(entry.path(), 0); error != 0)
      refuse("The file cannot be written: ", entry.path(), error);
  if (const int error = syncNames(folder); error != 0)
    refuse("The folder cannot be written: ", folder, error);
}

void nameForGood(const fs::path& from, const fs::path& to) {
  // A second name for what is replaced: the way back. Where there can be none, the new one stays.
  const std::string before = from.string() + ".before";
  unlink(before.c_str());
  const bool replaces = link(to.c_str(), before.c_str()) == 0;
  const bool isNew = !replaces && errno == ENOENT;
  int error = rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
  bool isAsBefore = error != 0;
  if (error == 0 && (error = syncNames(to.parent_path())) != 0)
    isAsBefore = replaces ? rename(before.c_str(), to.c_str()) == 0
                          : isNew && rename(to.c_str(), from.c_str()) == 0;
  if (replaces) unlink(before.c_str());
  if (error != 0)
    refuse(isAsBefore ? "The file cannot be written: "
                      : "The disk did not confirm this file. It is there, and may be gone after a "
                        "power cut: ",
           to, error);
}

}  // namespace bw
