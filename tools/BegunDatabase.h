#pragma once

#include <filesystem>
#include <string>

namespace bw {

// A database file under a name of its own until it is whole and gets another; empty at first, for
// its owner alone. Gone with this object, with what the engine puts beside it.
class BegunDatabase {
 public:
  // Raises error 76.
  explicit BegunDatabase(std::filesystem::path file);
  BegunDatabase(const BegunDatabase&) = delete;
  BegunDatabase& operator=(const BegunDatabase&) = delete;
  ~BegunDatabase();

  const std::filesystem::path& file() const noexcept { return file_; }

 private:
  std::filesystem::path file_;
};

// The text of a workgroup file. Raises error 76.
std::string workgroupContent(const std::filesystem::path& file);

}  // namespace bw
