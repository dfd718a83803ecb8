#pragma once

#include <filesystem>

namespace bw {

// A folder that appears with all of its files or not at all, a power cut included: they are written
// under a temporary name beside it. Only its owner can read it.
class NewFolder {
 public:
  // Raises Refused when something stands there that is not an empty folder, or when it would not be
  // the only folder that has to be made.
  explicit NewFolder(const std::filesystem::path& folder);
  NewFolder(const NewFolder&) = delete;
  NewFolder& operator=(const NewFolder&) = delete;
  ~NewFolder();

  // Where its files are written until it is finished.
  const std::filesystem::path& draft() const noexcept { return draft_; }
  // Raises error 76.
  void finish() const;

 private:
  std::filesystem::path folder_;
  std::filesystem::path draft_;
};

}  // namespace bw
