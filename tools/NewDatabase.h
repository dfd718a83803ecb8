#pragma once

#include <filesystem>
#include <functional>

#include "platform/Engine.h"

namespace bw {

// Makes a database at a path with its schema and its workgroup file; `fill` may add rows before it
// is seen. It grows under a temporary name in the same folder and gets its own at the end.
// Raises Refused when there is something at the path already, RuntimeError when it cannot be
// written; then nothing is left of it.
void makeDatabase(const std::filesystem::path& path, const std::function<void(Engine&)>& fill);

}  // namespace bw
