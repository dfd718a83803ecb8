#include <ostream>

#include "data/Schema.h"
#include "engine/EngineMakers.h"
#include "engine/EngineTransaction.h"
#include "engine/PostgresAddress.h"
#include "engine/SqliteEngine.h"
#include "text/Text.h"
#include "tools/Commands.h"
#include "tools/SchemaAge.h"

namespace bw {
namespace {

void upgrade(Engine& file, Engine& model) {
  EngineTransaction transaction(file, TransactionKind::writing);
  SchemaAge(file, model).bringUpToDate(file);
  if (SchemaAge(file, model).isOld())
    throw Refused("It could not be brought to what this version makes. Nothing was changed.");
  for (const std::string& query : schemaQueries())
    file.read(concat("SELECT * FROM ", query, " WHERE 1 = 0"));
  transaction.commit();
}

}  // namespace

Exit upgradeDatabase(const std::filesystem::path& path, DateTime now, std::ostream& out) {
  if (isServerAddress(path.string()))
    throw Refused(
        "Only files are upgraded. Copy the office into a new database with the command copy.");
  const std::unique_ptr<Engine> file = openEngine(path.string());
  const std::unique_ptr<Engine> model = openSqlite(":memory:");
  createSchema(*model);
  const SchemaAge age(*file, *model);
  if (age.isNewer())
    throw Refused("A later version of the program has made this database. Install that version.");
  if (age.lacksTables()) {
    age.tell(out);
    out << "Nothing was changed: no upgrade brings back a table with its rows.\n";
    return Exit::refused;
  }
  if (!age.isOld()) {
    out << "It is what this version makes already: " << path.string() << ".\n";
    return Exit::done;
  }
  age.tell(out);
  if (const Exit copied = backUpDatabase(path, {}, now, out); copied != Exit::done) {
    out << "Nothing was changed.\n";
    return copied;
  }
  upgrade(*file, *model);
  out << "Brought " << path.string() << " to what this version makes.\n";
  return Exit::done;
}

}  // namespace bw
