#include <ostream>

#include "core/MachineSettings.h"
#include "platform/Engine.h"
#include "platform/Workgroup.h"
#include "tools/Commands.h"

namespace bw {

Exit registerDatabase(const std::filesystem::path& path, std::ostream& out) {
  const std::filesystem::path file = std::filesystem::absolute(path).lexically_normal();
  if (file.string().find_first_of("\r\n") != std::string::npos)
    throw Refused("The path has a line break in it and cannot be registered.");
  openSqlite(file.string());
  if (const std::string workgroup = workgroupPathOf(file.string());
      !std::filesystem::exists(workgroup))
    throw Refused("The workgroup file that belongs to the database is missing: " + workgroup);
  writeMachineSetting("SOFTWARE\\Fenmoor Systems\\Brantiwell PC", "Database", file.string());
  out << "Registered " << file.string() << ": the program on this computer works with it.\n";
  return Exit::done;
}

}  // namespace bw
