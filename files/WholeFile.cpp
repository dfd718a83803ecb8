#include "files/WholeFile.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

#include "text/RuntimeError.h"
#include "text/Text.h"

namespace bw {

WholeFile::WholeFile(std::filesystem::path file, std::filesystem::perms permissions)
    : file_(std::move(file)), buffer_(std::make_unique_for_overwrite<char[]>(kBuffer)) {
  open(permissions);
  if (fchmod(descriptor_, static_cast<mode_t>(permissions)) == 0) return;
  const int error = errno;
  giveUp();
  refuse(error);
}

WholeFile::~WholeFile() {
  if (descriptor_ >= 0) giveUp();
}

void WholeFile::open(std::filesystem::perms permissions) {
  const std::filesystem::path folder = file_.has_parent_path() ? file_.parent_path() : ".";
  descriptor_ =
      ::open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, static_cast<mode_t>(permissions));
  if (descriptor_ >= 0) return;
  temporary_ = file_.string() + ".XXXXXX";
  descriptor_ = mkostemp(temporary_.data(), O_CLOEXEC);
  if (descriptor_ < 0) refuse(errno);
}

void WholeFile::giveUp() noexcept {
  close(std::exchange(descriptor_, -1));
  if (!temporary_.empty()) unlink(temporary_.c_str());
}

// A name can be given to a nameless file, but not one that another file has.
bool WholeFile::giveName() {
  if (!temporary_.empty()) return true;
  std::string name = concat(file_.string(), ".", getpid());
  unlink(name.c_str());
  const std::string self = concat("/proc/self/fd/", descriptor_);
  if (linkat(AT_FDCWD, self.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) != 0) return false;
  temporary_ = std::move(name);
  return true;
}

void WholeFile::finish() {
  flush();
  // Some file systems tell of a full disk only when the file is closed.
  if (giveName() && close(std::exchange(descriptor_, -1)) == 0 &&
      rename(temporary_.c_str(), file_.c_str()) == 0)
    return;
  const int error = errno;
  giveUp();
  refuse(error);
}

void WholeFile::appendSlowly(std::string_view piece) {
  flush();
  if (piece.size() > kBuffer) return write(piece);
  append(piece);
}

void WholeFile::flush() { write({buffer_.get(), std::exchange(used_, 0)}); }

void WholeFile::write(std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = ::write(descriptor_, text.data(), text.size());
    if (written < 0 && errno != EINTR) refuse(errno);
    if (written > 0) text.remove_prefix(static_cast<std::size_t>(written));
  }
}

void WholeFile::refuse(int error) const {
  throw RuntimeError(ErrorNumber::pathNotFound,
                     concat("The document cannot be written: ", file_.string(), ": ",
                            std::generic_category().message(error),
                            ". The document that was there before is unchanged."));
}

}  // namespace bw
