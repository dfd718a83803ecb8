#pragma once

#include <filesystem>
#include <string_view>

namespace bw {

// Writes a small file whole or not at all: under a temporary name beside it, synced, renamed over
// what was there. A failure raises error 76 with a sentence that names the file and the reason;
// nothing half-written is left.
void writeFileWhole(const std::filesystem::path& file, std::string_view text,
                    std::filesystem::perms permissions);

// Makes a folder and those above it that are missing; the ones it makes get the permissions.
// Raises error 76.
void makeFolder(const std::filesystem::path& folder, std::filesystem::perms permissions);

// Makes the names in a folder survive a power cut. Raises error 76.
void syncFolder(const std::filesystem::path& folder);

}  // namespace bw
