#include <ostream>

#include "core/MachineSettings.h"
#include "data/Schema.h"
#include "engine/EngineMakers.h"
#include "engine/Workgroup.h"
#include "text/RuntimeError.h"
#include "text/Text.h"
#include "tools/Commands.h"

namespace bw {
namespace {

// The saved queries need all tables between them.
void refuseWhatIsNoOffice(const std::filesystem::path& file) {
  const std::unique_ptr<Engine> engine = openEngine(file.string());
  try {
    for (const std::string& query : schemaQueries())
      engine->read(concat("SELECT * FROM [", query, "] WHERE 1 = 0"));
  } catch (const RuntimeError& error) {
    throw Refused(
        concat("This is not the database of an office, or not a whole one: ", file.string(), " (",
               error.text(), "). The command check names all that it lacks."));
  }
}

}  // namespace

Exit registerDatabase(const std::filesystem::path& path, std::ostream& out) {
  const std::filesystem::path file = std::filesystem::absolute(path).lexically_normal();
  if (file.string().find_first_of("\r\n") != std::string::npos)
    throw Refused("The path has a line break in it and cannot be registered.");
  refuseWhatIsNoOffice(file);
  if (const std::string workgroup = workgroupPathOf(file.string());
      !std::filesystem::exists(workgroup))
    throw Refused("The workgroup file that belongs to the database is missing: " + workgroup);
  writeMachineSetting("SOFTWARE\\Fenmoor Systems\\Brantiwell PC", "Database", file.string());
  out << "Registered " << file.string() << ": the program on this computer works with it.\n";
  return Exit::done;
}

}  // namespace bw
