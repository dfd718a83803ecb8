#include "tests/server/TestDatabase.h"

#include <unistd.h>

#include <cstdlib>

#include "data/Schema.h"
#include "engine/PostgresEngine.h"
#include "engine/PostgresLink.h"
#include "engine/SqliteEngine.h"
#include "text/Text.h"

namespace bw {
namespace {

const char* serverAddress() { return std::getenv("BRANTIWELL_TEST_SERVER"); }

std::string addressOf(const std::string& database) {
  std::string address = serverAddress();
  const std::string_view kPath = "@/postgres?";
  return address.replace(address.find(kPath), kPath.size(), concat("@/", database, "?"));
}

// Databases of this process, each a copy of one that has what it needs.
class Databases {
 public:
  Databases() : link_(serverAddress(), {}) {}
  ~Databases() {
    for (const std::string& name : {latest_, office_})
      if (!name.empty()) drop(name);
  }

  std::unique_ptr<Engine> make(const std::string& from) {
    if (!latest_.empty()) drop(latest_);
    latest_ = named(++count_);
    link_.query(concat("CREATE DATABASE ", latest_, " TEMPLATE ", from, ""));
    return openPostgres(address());
  }
  const std::string& office() {
    if (office_.empty()) {
      office_ = concat(named(0), "_office");
      link_.query(concat("CREATE DATABASE ", office_, " TEMPLATE template0"));
      createSchema(*openPostgres(addressOf(office_)));
    }
    return office_;
  }
  void cut() {
    link_.query("SELECT pg_terminate_backend(pid, 10000) FROM pg_stat_activity WHERE datname = " +
                link_.quoted(latest_));
  }
  std::string address() const { return addressOf(latest_); }

 private:
  static std::string named(int number) { return concat("t", getpid(), "_", number); }
  void drop(const std::string& name) {
    link_.query(concat("DROP DATABASE ", name, " WITH (FORCE)"));
  }

  PostgresLink link_;
  std::string office_;
  std::string latest_;
  int count_ = 0;
};

Databases& databases() {
  static Databases databases;
  return databases;
}

}  // namespace

bool onServer() { return serverAddress() != nullptr; }

std::unique_ptr<Engine> emptyDatabase() {
  return onServer() ? databases().make("template0") : openSqlite(":memory:");
}

std::unique_ptr<Engine> emptyOffice() {
  if (onServer()) return databases().make(databases().office());
  std::unique_ptr<Engine> engine = openSqlite(":memory:");
  createSchema(*engine);
  return engine;
}

std::string noSuchColumn(const std::string& name) {
  if (!onServer()) return "no such column: " + name;
  return concat("column \"", fold(name), "\" does not exist");
}

std::string relationsOff() {
  return onServer() ? "SET session_replication_role = replica" : "PRAGMA foreign_keys=OFF";
}

void cutConnections() { databases().cut(); }

std::string addressOfDatabase() { return databases().address(); }

}  // namespace bw
