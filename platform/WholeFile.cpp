#include "platform/WholeFile.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace bw {

WholeFile::WholeFile(std::filesystem::path file, std::filesystem::perms permissions)
    : file_(std::move(file)), temporary_(file_.string() + ".XXXXXX"),
      buffer_(std::make_unique_for_overwrite<char[]>(kBuffer)) {
  descriptor_ = mkostemp(temporary_.data(), O_CLOEXEC);
  if (descriptor_ < 0) refuse(errno);
  if (fchmod(descriptor_, static_cast<mode_t>(permissions)) == 0) return;
  const int error = errno;
  close(descriptor_);
  unlink(temporary_.c_str());
  refuse(error);
}

WholeFile::~WholeFile() {
  if (descriptor_ < 0) return;
  close(descriptor_);
  unlink(temporary_.c_str());
}

void WholeFile::finish() {
  flush();
  // Some file systems tell of a full disk only now.
  if (close(std::exchange(descriptor_, -1)) != 0 ||
      rename(temporary_.c_str(), file_.c_str()) != 0) {
    const int error = errno;
    unlink(temporary_.c_str());
    refuse(error);
  }
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
