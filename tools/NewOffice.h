#pragma once

#include <filesystem>
#include <functional>
#include <iosfwd>
#include <string>

#include "engine/Engine.h"
#include "tools/Commands.h"

namespace bw {

// Makes a new database with its schema, as a file (see NewDatabase.h) or in an empty database on a
// server (see ServerDatabase.h); `fill` may add rows before it is seen.
void makeOffice(const std::filesystem::path& path, const std::function<void(Engine&)>& fill,
                std::ostream& out, const Access& access = {});

}  // namespace bw
