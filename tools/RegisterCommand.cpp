#include <ostream>

#include "core/ApoyoConeccion.h"
#include "core/MachineSettings.h"
#include "data/Schema.h"
#include "engine/Connection.h"
#include "engine/PostgresAddress.h"
#include "text/RuntimeError.h"
#include "text/Text.h"
#include "tools/Commands.h"

namespace bw {
namespace {

// As the program opens it.
Connection openAsRegistered(const std::string& target) {
  if (!isServerAddress(target) && !std::filesystem::is_regular_file(target))
    throw RuntimeError(ErrorNumber::fileNotFound, concat("There is no file ", target));
  Connection connection;
  connection.ConnectionString = connectionStringOf(target);
  try {
    connection.Open();
  } catch (const RuntimeError& error) {
    throw Refused(concat("The program would not open it. ", error.text()));
  }
  return connection;
}

// The saved queries need all tables between them.
void refuseWhatIsNoOffice(const std::string& target) {
  Connection connection = openAsRegistered(target);
  try {
    for (const std::string& query : schemaQueries())
      connection.Read(concat("SELECT * FROM [", query, "] WHERE 1 = 0"));
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
  if (target.find_first_of("\r\n;") != std::string::npos)
    throw Refused("The path has a line break or a semicolon in it and cannot be registered.");
  refuseWhatIsNoOffice(target);
  writeMachineSetting("SOFTWARE\\Fenmoor Systems\\Brantiwell PC", "Database", target);
  out << "Registered " << target << ": the program on this computer works with it.\n";
  return Exit::done;
}

}  // namespace bw
