#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "engine/Engine.h"

namespace bw {

// Makes a database at a path with its schema and its workgroup file; `fill` may add rows before it
// is seen. It grows under a temporary name in the same folder and gets its own at the end.
// Raises Refused when there is something at the path already, RuntimeError when it cannot be
// written or given away; then nothing is left of it.
// `owner` is the user that its files, and the folders made for them, are given to; whoever runs
// this when it is empty.
void makeDatabase(const std::filesystem::path& path, const std::function<void(Engine&)>& fill,
                  const std::string& owner = {});

}  // namespace bw
