#include <ostream>

#include "core/MachineSettings.h"
#include "data/Schema.h"
#include "engine/EngineMakers.h"
#include "engine/PostgresAddress.h"
#include "engine/Workgroup.h"
#include "text/RuntimeError.h"
#include "text/Text.h"
#include "tools/Commands.h"

namespace bw {
namespace {

// The saved queries need all tables between them.
void refuseWhatIsNoOffice(const std::string& target) {
  const std::unique_ptr<Engine> engine = openEngine(target);
  try {
    for (const std::string& query : schemaQueries())
      engine->read(concat("SELECT * FROM ", query, " WHERE 1 = 0"));
  } catch (const RuntimeError& error) {
    throw Refused(concat("This is not the database of an office, or not a whole one: ", target,
                         " (", error.text(), "). The command check names all that it lacks."));
  }
}

}  // namespace

Exit registerDatabase(const std::filesystem::path& path, std::ostream& out) {
  const bool isServer = isServerAddress(path.string());
  const std::string target =
      isServer ? path.string() : std::filesystem::absolute(path).lexically_normal().string();
  if (target.find_first_of("\r\n") != std::string::npos)
    throw Refused("The path has a line break in it and cannot be registered.");
  refuseWhatIsNoOffice(target);
  if (const std::string workgroup = workgroupPathOf(target);
      !isServer && !std::filesystem::exists(workgroup))
    throw Refused("The workgroup file that belongs to the database is missing: " + workgroup);
  writeMachineSetting("SOFTWARE\\Fenmoor Systems\\Brantiwell PC", "Database", target);
  out << "Registered " << target << ": the program on this computer works with it.\n";
  return Exit::done;
}

}  // namespace bw
