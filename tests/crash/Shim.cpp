#include "tests/crash/Shim.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <filesystem>

namespace bw {
namespace {

Fault fault;
std::array<int, kCalls> counted{};
int callsToLive = 0;  // 0: for ever
std::vector<Deed>* record = nullptr;

bool dies() { return callsToLive > 0 && --callsToLive == 0; }

// Whether this call fails; `errno` is set then.
bool fails(Call call) {
  const int count = ++counted.at(static_cast<std::size_t>(call));
  if (call != fault.call || fault.nth == 0 || count < fault.nth) return false;
  if (count > fault.nth && !fault.lasts) return false;
  errno = fault.error;
  return true;
}

// The same for a call that does all or nothing.
bool failsOrDies(Call call) {
  if (dies()) raise(SIGKILL);
  return fails(call);
}

void note(Call call, int file, off_t at, std::string bytes = {}) {
  if (record == nullptr) return;
  std::error_code none;
  const std::string link = "/proc/self/fd/" + std::to_string(file);
  record->push_back({call, std::filesystem::read_symlink(link, none), at, std::move(bytes)});
}

// The function that this one stands in front of.
template <auto Self>
auto next(const char* name) {
  static const auto found = reinterpret_cast<decltype(Self)>(dlsym(RTLD_NEXT, name));
  return found;
}

// `write` takes a number of bytes. What fails or is cut short leaves half of them behind.
template <class Write>
ssize_t writing(int file, const void* bytes, std::size_t size, off_t at, Write write) {
  const bool isLast = dies();
  const bool isFault = !isLast && fails(Call::write);
  if (!isLast && !isFault) {
    note(Call::write, file, at, {static_cast<const char*>(bytes), size});
    return write(size);
  }
  const int error = errno;
  write(size / 2);
  if (isLast) raise(SIGKILL);
  errno = error;
  return -1;
}

}  // namespace

FaultyDisk::FaultyDisk(const Fault& wanted) {
  counted = {};
  fault = wanted;
}
FaultyDisk::~FaultyDisk() { fault = {}; }
const std::array<int, kCalls>& FaultyDisk::counts() { return counted; }

void dieAt(int nth) { callsToLive = nth; }
void recordDeeds(std::vector<Deed>* deeds) { record = deeds; }

}  // namespace bw

using bw::Call;
using bw::next;

extern "C" {

ssize_t write(int file, const void* bytes, size_t size) {
  return bw::writing(file, bytes, size, -1,
                     [&](size_t some) { return next<&write>("write")(file, bytes, some); });
}
ssize_t pwrite(int file, const void* bytes, size_t size, off_t at) {
  return bw::writing(file, bytes, size, at,
                     [&](size_t some) { return next<&pwrite>("pwrite")(file, bytes, some, at); });
}
ssize_t pwrite64(int, const void*, size_t, off64_t) __attribute__((alias("pwrite")));
ssize_t writev(int file, const iovec* pieces, int count) {
  return bw::failsOrDies(Call::write) ? -1 : next<&writev>("writev")(file, pieces, count);
}

int fsync(int file) {
  if (bw::failsOrDies(Call::sync)) return -1;
  bw::note(Call::sync, file, 0);
  return 0;
}
int fdatasync(int) __attribute__((alias("fsync")));

int ftruncate(int file, off_t size) noexcept {
  if (bw::failsOrDies(Call::truncate)) return -1;
  bw::note(Call::truncate, file, size);
  return next<&ftruncate>("ftruncate")(file, size);
}
int ftruncate64(int, off64_t) noexcept __attribute__((alias("ftruncate")));

int open(const char* path, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(rest, mode_t) : 0;
  va_end(rest);
  return bw::failsOrDies(Call::open) ? -1 : next<&open>("open")(path, flags, mode);
}
int open64(const char*, int, ...) __attribute__((alias("open")));
int mkostemp(char* path, int flags) {
  return bw::failsOrDies(Call::open) ? -1 : next<&mkostemp>("mkostemp")(path, flags);
}
int mkdir(const char* path, mode_t mode) noexcept {
  return bw::failsOrDies(Call::open) ? -1 : next<&mkdir>("mkdir")(path, mode);
}
FILE* fopen(const char* path, const char* mode) {
  return bw::failsOrDies(Call::open) ? nullptr : next<&fopen>("fopen")(path, mode);
}
FILE* fopen64(const char*, const char*) __attribute__((alias("fopen")));

int rename(const char* from, const char* to) noexcept {
  return bw::failsOrDies(Call::name) ? -1 : next<&rename>("rename")(from, to);
}
int link(const char* from, const char* to) noexcept {
  return bw::failsOrDies(Call::name) ? -1 : next<&link>("link")(from, to);
}
int linkat(int folder, const char* from, int other, const char* to, int flags) noexcept {
  if (bw::failsOrDies(Call::name)) return -1;
  return next<&linkat>("linkat")(folder, from, other, to, flags);
}
int unlink(const char* path) noexcept {
  if (bw::dies()) raise(SIGKILL);
  return next<&unlink>("unlink")(path);
}

}  // extern "C"
