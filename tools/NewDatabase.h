#pragma once

#include <filesystem>
#include <functional>

#include "engine/Engine.h"
#include "tools/Commands.h"

namespace bw {

// Makes a database at a path with its schema and its workgroup file; `fill` may add rows before it
// is seen. It grows under a temporary name in the same folder and gets its own at the end, when all
// of it is on the disk and opens as the program opens it. The folder is made, those above are not.
// Raises Refused when there is something at the path already, RuntimeError when it cannot be
// written or given away; then nothing is left of it.
void makeDatabase(const std::filesystem::path& path, const std::function<void(Engine&)>& fill,
                  const Access& access = {});

}  // namespace bw
