#include "tools/ServerDumps.h"

#include <unistd.h>

#include <ostream>

#include "engine/EngineTransaction.h"
#include "engine/PostgresAddress.h"
#include "engine/PostgresEngine.h"
#include "files/Files.h"
#include "text/RuntimeError.h"
#include "text/Text.h"
#include "tools/BegunDatabase.h"
#include "tools/Copies.h"
#include "tools/OfficeRows.h"
#include "tools/OtherProgram.h"
#include "tools/ServerDatabase.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

std::string valueOf(Engine& engine, const std::string& expression) {
  return textOrEmpty(engine.read("SELECT " + expression)->columns.front().value(0));
}

[[noreturn]] void fail(const char* program, const char* what) {
  throw RuntimeError(ErrorNumber::pathNotFound,
                     concat(what, " (", program, " of the package postgresql-client)."));
}

// The sizes of the tables stand for that of the dump, which is smaller.
std::uintmax_t sizeOf(Engine& engine) {
  return std::stoull(valueOf(engine, "pg_database_size(current_database())::text"));
}

// A database of its own on the server, gone with this object.
class TrialDatabase {
 public:
  explicit TrialDatabase(const std::string& address)
      : server_("--maintenance-db=" + connectionText(address)),
        name_(concat("bw_trial_", getpid())), text_(connectionText(address, name_)) {
    if (!runProgram(
            {"createdb", server_, "--template=template0", "--encoding=UTF8", "--locale=C", name_}))
      fail("createdb", "The database in which the copy is tried cannot be made");
  }
  TrialDatabase(const TrialDatabase&) = delete;
  TrialDatabase& operator=(const TrialDatabase&) = delete;
  ~TrialDatabase() { runProgram({"dropdb", server_, "--if-exists", name_}); }

  const std::string& connection() const noexcept { return text_; }

 private:
  std::string server_;
  std::string name_;
  std::string text_;
};

void restoreInto(const std::string& connection, const fs::path& dump) {
  if (!runProgram({"pg_restore", "--exit-on-error", "--single-transaction", "--no-owner",
                   "--no-privileges", "--dbname=" + connection, dump.string()}))
    fail("pg_restore", "The copy cannot be restored");
}

// In what a dump differs from what the office was when it was made; "" when in nothing.
std::string faultOf(Engine& office, const std::string& address, const fs::path& dump) {
  const TrialDatabase trial(address);
  restoreInto(trial.connection(), dump);
  const std::unique_ptr<Engine> restored = openPostgres(trial.connection());
  for (const SchemaTable& table : schemaTables())
    if (std::string fault = differenceOf(*rowsOf(office, table), *rowsOf(*restored, table), table);
        !fault.empty())
      return fault;
  return {};
}

// How a dump was checked; raises what is wrong with it.
const char* checked(Engine& office, const std::string& address, const fs::path& dump) {
  if (valueOf(office,
              "(rolsuper OR rolcreatedb)::int FROM pg_roles WHERE rolname = current_user") == "0") {
    if (!isReadable(dump)) fail("pg_restore", "The copy cannot be read");
    return ", and listed it. An account that may make databases checks more: it restores the copy "
           "for trial.\n";
  }
  if (const std::string fault = faultOf(office, address, dump); !fault.empty())
    throw Refused(fault);
  return ", restored it for trial, and compared its rows.\n";
}

}  // namespace

bool isReadable(const fs::path& dump) {
  return runProgram({"pg_restore", "--list", dump.string()});
}

Exit dumpServer(const std::string& address, const CopiesFolder& folder, DateTime now,
                std::ostream& out) {
  sweepCopies(folder.path(), address);
  const std::unique_ptr<Engine> office = openPostgres(address);
  folder.refuseShortSpace(sizeOf(*office));
  EngineTransaction snapshot(*office, TransactionKind::snapshot);
  const BegunDatabase begun(begunCopy(folder.path(), address));
  if (!runProgram({"pg_dump", "--format=custom",
                   "--snapshot=" + valueOf(*office, "pg_export_snapshot()"),
                   "--file=" + begun.file().string(), "--dbname=" + connectionText(address)}))
    fail("pg_dump", "The server's database cannot be copied");
  const char* how = checked(*office, address, begun.file());
  snapshot.end();
  const Copy copy = newCopy(folder.path(), address, now);
  nameForGood(begun.file(), copy.file);
  out << "Made the copy " << copy.file.string() << how;
  dropOutlived(copiesIn(folder.path(), address), out);
  return Exit::done;
}

Exit restoreDump(const fs::path& dump, const std::string& address, std::ostream& out) {
  if (!isReadable(dump)) throw Refused("This is no copy of a server's database: " + dump.string());
  makeServerDatabase(
      address, [&](Engine&) { restoreInto(connectionText(address), dump); }, out);
  out << "Restored " << dump.string() << ".\n";
  return checkDatabase(address, out);
}

}  // namespace bw
