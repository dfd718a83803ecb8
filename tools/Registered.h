#pragma once

#include <filesystem>

namespace bw {

// The whole path or address, or where it is empty that of the database that is registered. Raises
// Refused when none is.
std::filesystem::path givenOrRegistered(const std::filesystem::path& path);

}  // namespace bw
