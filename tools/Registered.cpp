#include "tools/Registered.h"

#include "core/ApoyoRegistry.h"
#include "engine/PostgresAddress.h"
#include "tools/Commands.h"

namespace bw {

std::filesystem::path givenOrRegistered(const std::filesystem::path& path) {
  const std::filesystem::path target =
      path.empty() ? std::filesystem::path(installationText("Database")) : path;
  if (target.empty())
    throw Refused("No database is registered on this computer: say which one you mean.");
  return isServerAddress(target.string()) ? target : std::filesystem::absolute(target);
}

}  // namespace bw
