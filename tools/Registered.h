#pragma once

#include <filesystem>

namespace bw {

// The path, or where it is empty the database that is registered. Raises Refused when none is.
std::filesystem::path givenOrRegistered(const std::filesystem::path& path);

}  // namespace bw
