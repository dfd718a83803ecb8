#include "tools/Registered.h"

#include "core/ApoyoRegistry.h"
#include "tools/Commands.h"

namespace bw {

std::filesystem::path givenOrRegistered(const std::filesystem::path& path) {
  if (!path.empty()) return path;
  std::string registered = installationText("Database");
  if (registered.empty())
    throw Refused("No database is registered on this computer: say which one you mean.");
  return registered;
}

}  // namespace bw
