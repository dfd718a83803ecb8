#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "engine/Engine.h"

namespace bw {

struct SqliteOptions {
  std::chrono::milliseconds busyTimeout{5000};
  bool quickCheck = true;  // false opens a damaged file too, as far as that goes
  EngineAccess access = EngineAccess::readWrite;
};

// Opens an existing file; it is never created. Missing, damaged or refused: raises
// DatabaseRefusal. The path ":memory:" gives an empty database of its own.
std::unique_ptr<Engine> openSqlite(const std::string& path, const SqliteOptions& options = {});

// Makes an empty database file, readable and writable by its owner alone, and opens it.
// A file that is there already, or one that cannot be made: raises DatabaseRefusal.
std::unique_ptr<Engine> createSqlite(const std::string& path, const SqliteOptions& options = {});

}  // namespace bw
