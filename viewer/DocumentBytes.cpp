#include "viewer/DocumentBytes.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace bw {

namespace {

class Descriptor {
 public:
  explicit Descriptor(int fd) noexcept : fd_(fd) {}
  ~Descriptor() {
    if (fd_ >= 0) ::close(fd_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  bool valid() const noexcept { return fd_ >= 0; }
  int get() const noexcept { return fd_; }

 private:
  int fd_;
};

std::error_code lastError() { return {errno, std::generic_category()}; }

// On a disk rather than in a folder that lives in memory.
int namelessFile() {
  for (const char* folder : {"/var/tmp", "/tmp"}) {
    const int fd = ::open(folder, O_TMPFILE | O_RDWR | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (fd >= 0) return fd;
  }
  return -1;
}

// The bytes copied: fewer than `size` when the file shrank meanwhile, -1 when copying failed.
ssize_t copyInKernel(int from, int to, std::size_t size) {
  std::size_t done = 0;
  while (done < size) {
    const ssize_t step = ::copy_file_range(from, nullptr, to, nullptr, size - done, 0);
    if (step < 0 && errno == EINTR) continue;
    if (step < 0) return -1;
    if (step == 0) break;
    done += static_cast<std::size_t>(step);
  }
  return static_cast<ssize_t>(done);
}

}  // namespace

DocumentBytes::DocumentBytes(const std::string& path, std::error_code& error) {
  // Without O_NONBLOCK a pipe under that name would hold the window for ever.
  const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat status = {};
  if (!file.valid() || ::fstat(file.get(), &status) != 0) {
    error = lastError();
    return;
  }
  if (!S_ISREG(status.st_mode)) {
    error = std::make_error_code(S_ISDIR(status.st_mode) ? std::errc::is_a_directory
                                                         : std::errc::invalid_argument);
    return;
  }
  error.clear();
  const auto size = static_cast<std::size_t>(status.st_size);
  if (size > kInMemory && mapCopy(file.get(), size)) return;
  if (!readAll(file.get(), size)) error = lastError();
}

DocumentBytes::DocumentBytes(std::string_view bytes) {
  const std::shared_ptr<char[]> copy(new char[bytes.size() + 1]);
  if (!bytes.empty()) std::memcpy(copy.get(), bytes.data(), bytes.size());
  owner_ = std::shared_ptr<const char>(copy, copy.get());
  view_ = {copy.get(), bytes.size()};
}

bool DocumentBytes::mapCopy(int file, std::size_t size) {
  const Descriptor copy(namelessFile());
  if (!copy.valid()) return false;
  const ssize_t copied = copyInKernel(file, copy.get(), size);
  if (copied <= 0) return false;
  const auto length = static_cast<std::size_t>(copied);
  void* start = ::mmap(nullptr, length, PROT_READ, MAP_PRIVATE | MAP_POPULATE, copy.get(), 0);
  if (start == MAP_FAILED) return false;
  owner_ = std::shared_ptr<const char>(static_cast<const char*>(start),
                                       [start, length](const char*) { ::munmap(start, length); });
  view_ = {owner_.get(), length};
  return true;
}

bool DocumentBytes::readAll(int file, std::size_t size) {
  const std::shared_ptr<char[]> bytes(new char[size + 1]);
  std::size_t done = 0;
  while (done < size) {
    const ssize_t step = ::pread(file, bytes.get() + done, size - done, static_cast<off_t>(done));
    if (step < 0 && errno == EINTR) continue;
    if (step < 0) return false;
    if (step == 0) break;
    done += static_cast<std::size_t>(step);
  }
  owner_ = std::shared_ptr<const char>(bytes, bytes.get());
  view_ = {bytes.get(), done};
  return true;
}

}  // namespace bw
