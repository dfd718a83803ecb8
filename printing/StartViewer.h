#pragma once

#include <filesystem>

namespace bw {

// Starts the program myviewer with a document as its only argument, and does not wait for it: the
// one beside this program, else the first on the path. Raises error 53 when there is none that can
// be started.
void startViewer(const std::filesystem::path& document);

}  // namespace bw
