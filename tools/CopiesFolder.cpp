#include "tools/CopiesFolder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <ostream>
#include <system_error>

#include "files/Files.h"
#include "text/RuntimeError.h"
#include "text/Text.h"

namespace bw {
namespace {

namespace fs = std::filesystem;
using enum fs::perms;

[[noreturn]] void fail(const std::string& sentence) {
  throw RuntimeError(ErrorNumber::pathNotFound, sentence);
}

void make(const fs::path& path, bool mayBeMade) {
  if (!mayBeMade || !fs::is_directory(fs::absolute(path).parent_path()))
    fail(concat("There is no folder for copies ", path.string(),
                ": is its disk there, and the path right?"));
  makeFolder(path, owner_all);
}

}  // namespace

CopiesFolder::CopiesFolder(fs::path path, bool mayBeMade) : path_(std::move(path)) {
  if (!fs::is_directory(path_)) make(path_, mayBeMade);
  descriptor_ = open(path_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor_ < 0 || flock(descriptor_, LOCK_EX) != 0)
    fail(concat("The folder for copies cannot be used: ", path_.string(), ": ",
                std::generic_category().message(errno)));
}

CopiesFolder::~CopiesFolder() {
  if (descriptor_ >= 0) close(descriptor_);
}

void CopiesFolder::tellWhoSees(std::ostream& out) const {
  if ((fs::status(path_).permissions() & (group_all | others_all)) != none)
    out << "Note: other users of this computer can look into " << path_.string() << ".\n";
}

void CopiesFolder::refuseShortSpace(std::uintmax_t bytes) const {
  constexpr std::uintmax_t kSpare = 16U << 20U;
  const std::uintmax_t needed = bytes + kSpare;
  if (const std::uintmax_t free = fs::space(path_).available; free < needed)
    fail(concat("There is too little space for a copy in ", path_.string(), ": ",
                static_cast<long>(needed >> 20U), " MiB are needed, ",
                static_cast<long>(free >> 20U), " MiB are free."));
}

}  // namespace bw
