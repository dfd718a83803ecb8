#include "tools/NewOffice.h"

#include "data/Schema.h"
#include "engine/PostgresAddress.h"
#include "tools/Commands.h"
#include "tools/NewDatabase.h"
#include "tools/ServerDatabase.h"

namespace bw {

void makeOffice(const std::filesystem::path& path, const std::function<void(Engine&)>& fill,
                std::ostream& out, const Access& access) {
  if (!isServerAddress(path.string())) return makeDatabase(path, fill, access);
  if (!access.owner.empty() || !access.group.empty())
    throw Refused("A database on a server has no owner on this computer.");
  makeServerDatabase(
      path.string(), [&fill](Engine& engine) { createSchema(engine, fill); }, out);
}

void refuseBadTarget(const std::filesystem::path& path) {
  const std::string target = path.string();
  if (isServerAddress(target)) {
    if (holdsPassword(target))
      throw Refused(
          "The address holds a password, which everybody on this computer could read. Leave it "
          "out, "
          "and write it into the file ~/.pgpass (see man psql).");
    return;
  }
  if (target.starts_with("postgres:") || target.starts_with("postgresql:"))
    throw Refused("This looks like the address of a server and is none: " + target +
                  ". An address begins with postgresql:// and the name of the server.");
}

}  // namespace bw
