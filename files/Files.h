#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace bw {

// Writes a small file whole or not at all: under a temporary name beside it, synced, renamed over
// what was there. A failure raises error 76 with a sentence that names the file and the reason;
// nothing half-written is left.
void writeFileWhole(const std::filesystem::path& file, std::string_view text,
                    std::filesystem::perms permissions);

// The text of a file, "" where there is none. Raises error 76 when it cannot be read.
std::string textOfFile(const std::filesystem::path& file);

// Makes a folder and those above it that are missing; the ones it makes get the permissions.
// Raises error 76.
void makeFolder(const std::filesystem::path& folder, std::filesystem::perms permissions);

// Puts the files of a folder on the disk, and their names in it. Raises error 76.
void syncFolder(const std::filesystem::path& folder);

// Gives what was written and synced under one name its own, in the same folder, so that it stands
// there after a power cut too; a file of that name is replaced. Raises error 76: then the name
// stands for what it stood for before, or the sentence says that the new one is there.
void nameForGood(const std::filesystem::path& from, const std::filesystem::path& to);

}  // namespace bw
