#include "tools/ServerDatabase.h"

#include <algorithm>
#include <iterator>
#include <ostream>
#include <vector>

#include "engine/ChangeLog.h"
#include "engine/EngineMakers.h"
#include "engine/EngineTransaction.h"
#include "text/Text.h"
#include "tools/Commands.h"

namespace bw {
namespace {

std::string valueOf(Engine& engine, const std::string& expression) {
  return textOrEmpty(engine.read("SELECT " + expression)->columns.front().value(0));
}

// A name as it stands in a statement.
std::string quoted(std::string name) {
  for (std::size_t at = name.find('"'); at != std::string::npos; at = name.find('"', at + 2))
    name.insert(at, 1, '"');
  return concat("\"", name, "\"");
}

// What a role needs of the log of changes, as far as there is one. A copy by the server's own
// program reads all that there is.
std::vector<std::string> logStatements(Engine& engine, const std::string& role) {
  std::vector<std::string> statements;
  if (engine.hasTable(kChangeLogTable))
    for (const char* right :
         {"REVOKE ALL ON ChangeLog FROM ", "GRANT SELECT, INSERT ON ChangeLog TO ",
          "GRANT SELECT ON SEQUENCE changelog_number_seq TO "})
      statements.push_back(right + role);
  if (engine.hasTable(kChangeLogStopped))
    statements.push_back("GRANT SELECT ON ChangeLogStopped TO " + role);
  return statements;
}

class NewOffice {
 public:
  explicit NewOffice(Engine& engine)
      : engine_(engine), database_(valueOf(engine, "current_database()::text")),
        role_(concat(database_, "_desks")) {}

  void refuseUnfit() const {
    const std::string facts =
        valueOf(engine_,
                "pg_encoding_to_char(encoding) || ' ' || datctype::text || ' ' || datcollate::text"
                " FROM pg_database WHERE datname = current_database()");
    if (facts != "UTF8 C C")
      throw Refused(concat("The texts of this database would not compare as they do in a file (",
                           facts,
                           "). Make it anew with:\n  createdb --template=template0 "
                           "--encoding=UTF8 --locale=C ",
                           database_));
    if (valueOf(engine_,
                "count(*) FROM pg_class WHERE relkind IN ('r', 'v') AND"
                " relnamespace = to_regnamespace('public')") != "0")
      throw Refused("There is something in this database already, and it is left as it is: " +
                    database_);
  }

  // False when the account may not make roles.
  bool makeRole() const {
    try {
      EngineTransaction transaction(engine_);
      for (const std::string& statement : roleStatements()) engine_.execute(statement);
      transaction.commit();
      return true;
    } catch (const DatabaseRefusal& refusal) {
      if (refusal.why() != Refusal::notAllowed) throw;
      return false;
    }
  }

  void tellWhatIsLeft(std::ostream& out, bool hasRole) const {
    out << "What is left to do on the server, as an administrator:\n";
    if (!hasRole)
      for (const std::string& statement : roleStatements()) out << "  " << statement << ";\n";
    out << "  CREATE ROLE anna LOGIN;                    -- for each person or desk\n"
        << "  \\password anna                             -- in psql\n"
        << "  GRANT " << quoted(role_) << " TO anna;\n"
        << "and in pg_hba.conf, for the computers of the office:\n"
        << "  hostssl " << database_ << " +" << role_ << " 192.168.1.0/24 scram-sha-256\n"
        << "On each computer: the certificate of the server in ~/.postgresql/root.crt, the "
           "password\n"
        << "in ~/.pgpass, and then\n"
        << "  sudo brantiwell-database register postgresql://anna@SERVER/" << database_ << '\n';
  }

 private:
  std::vector<std::string> roleStatements() const {
    const std::string role = quoted(role_);
    std::vector<std::string> statements;
    if (valueOf(engine_, concat("count(*) FROM pg_roles WHERE quote_ident(rolname::text) = "
                                "quote_ident('",
                                escaped(role_), "')")) == "0")
      statements.push_back(concat("CREATE ROLE ", role, " NOLOGIN"));
    statements.push_back(concat("GRANT USAGE ON SCHEMA public TO ", role));
    statements.push_back(
        concat("GRANT SELECT, INSERT, UPDATE, DELETE ON ALL TABLES IN SCHEMA public TO ", role));
    std::ranges::move(logStatements(engine_, role), std::back_inserter(statements));
    return statements;
  }
  static std::string escaped(std::string text) {
    for (std::size_t at = text.find('\''); at != std::string::npos; at = text.find('\'', at + 2))
      text.insert(at, 1, '\'');
    return text;
  }

  Engine& engine_;
  std::string database_;
  std::string role_;
};

}  // namespace

void makeServerDatabase(const std::string& address, const std::function<void(Engine&)>& make,
                        std::ostream& out) {
  const std::unique_ptr<Engine> engine = openEngine(address);
  const NewOffice office(*engine);
  office.refuseUnfit();
  make(*engine);
  office.tellWhatIsLeft(out, office.makeRole());
}

void letDesksLog(Engine& engine) {
  const std::shared_ptr<RowStore> roles = engine.read(
      "SELECT DISTINCT CASE grantee WHEN 0 THEN 'PUBLIC' ELSE grantee::regrole::text END"
      " FROM pg_class, aclexplode(relacl) WHERE oid = 'patientcharges'::regclass"
      " AND privilege_type = 'INSERT' AND grantee <> relowner");
  for (std::size_t row = 0; row < roles->rowCount(); ++row)
    for (const std::string& statement :
         logStatements(engine, textOrEmpty(roles->columns.front().value(row))))
      engine.execute(statement);
}

bool keepsChecksums(Engine& engine) {
  return valueOf(engine, "current_setting('data_checksums')") == "on";
}

}  // namespace bw
