#pragma once

#include <sys/types.h>

#include <filesystem>
#include <optional>
#include <string>

#include "tools/Commands.h"

namespace bw {

// Gives files and folders to those who work with them.
class FileAccess {
 public:
  // Raises Refused when there is no such user or group.
  explicit FileAccess(const Access& access);

  // Of a database's files: read and write for the owner, and the group if there is one.
  std::filesystem::perms filePermissions() const noexcept;
  // Of its folder; what a group's members make in it belongs to the group.
  std::filesystem::perms folderPermissions() const noexcept;

  // Raises error 76.
  void give(const std::filesystem::path& file, std::filesystem::perms permissions) const;

 private:
  std::string names_;
  std::optional<uid_t> user_;
  std::optional<gid_t> group_;  // with the user alone: the user's own
  bool shared_ = false;
};

}  // namespace bw
