#include <ostream>

#include "core/ApoyoConeccion.h"
#include "core/MachineSettings.h"
#include "data/Schema.h"
#include "engine/Connection.h"
#include "text/RuntimeError.h"
#include "text/Text.h"
#include "tools/Commands.h"

namespace bw {
namespace {

// As the program opens it.
Connection openAsRegistered(const std::filesystem::path& file) {
  if (!std::filesystem::is_regular_file(file))
    throw RuntimeError(ErrorNumber::fileNotFound, concat("There is no file ", file.string()));
  Connection connection;
  connection.ConnectionString = connectionStringOf(file.string());
  try {
    connection.Open();
  } catch (const RuntimeError& error) {
    throw Refused(concat("The program would not open it. ", error.text()));
  }
  return connection;
}

// The saved queries need all tables between them.
void refuseWhatIsNoOffice(const std::filesystem::path& file) {
  Connection connection = openAsRegistered(file);
  try {
    for (const std::string& query : schemaQueries())
      connection.Read(concat("SELECT * FROM [", query, "] WHERE 1 = 0"));
  } catch (const RuntimeError& error) {
    throw Refused(
        concat("This is not the database of an office, or not a whole one: ", file.string(), " (",
               error.text(), "). The command check names all that it lacks."));
  }
}

}  // namespace

Exit registerDatabase(const std::filesystem::path& path, std::ostream& out) {
  const std::filesystem::path file = std::filesystem::absolute(path).lexically_normal();
  if (file.string().find_first_of("\r\n;") != std::string::npos)
    throw Refused("The path has a line break or a semicolon in it and cannot be registered.");
  refuseWhatIsNoOffice(file);
  writeMachineSetting("SOFTWARE\\Fenmoor Systems\\Brantiwell PC", "Database", file.string());
  out << "Registered " << file.string() << ": the program on this computer works with it.\n";
  return Exit::done;
}

}  // namespace bw
