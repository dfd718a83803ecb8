#pragma once

#include <cstdint>
#include <filesystem>
#include <iosfwd>

namespace bw {

// The folder of the copies, which one process at a time works in.
class CopiesFolder {
 public:
  // Waits for another process in it. Raises error 76 when it is not there, cannot be made, or may
  // not be made.
  CopiesFolder(std::filesystem::path path, bool mayBeMade);
  CopiesFolder(const CopiesFolder&) = delete;
  CopiesFolder& operator=(const CopiesFolder&) = delete;
  ~CopiesFolder();

  const std::filesystem::path& path() const noexcept { return path_; }

  // Tells when other users can look into it.
  void tellWhoSees(std::ostream& out) const;
  // Raises error 76 unless so many bytes are free, and some to spare.
  void refuseShortSpace(std::uintmax_t bytes) const;

 private:
  std::filesystem::path path_;
  int descriptor_ = -1;
};

}  // namespace bw
