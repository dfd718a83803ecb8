// Storing a thousand charges with their details, against the same statements on the bare engine.

#include <sqlite3.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "bench/Measure.h"
#include "bench/Office.h"
#include "core/Principal.h"
#include "core/Services.h"
#include "data/BWSQLCharges.h"
#include "data/SavedQueries.h"
#include "engine/Rewriter.h"
#include "engine/SqliteEngine.h"

namespace {

using namespace bw;

constexpr double kMostTimesBare = 1.15;
constexpr int kCharges = 1000;
constexpr bench::OfficeSize kSize{1000, 20000};

using Statements = std::vector<std::string>;

// Stores charges, one a second of a clock that begins where it did for every other desk.
class Desk {
 public:
  explicit Desk(const std::string& path) {
    bench::makeOffice(path, kSize);
    DatabaseConnection = officeConnection(openSqlite(path));
    services().now = [this] { return DateTime{{40000}, {++second_}}; };
  }

  void store() {
    for (int i = 0; i < kCharges; ++i) {
      Date date;
      TimeOfDay time;
      std::string message;
      if (ChargeInsert(static_cast<std::int16_t>(1 + i), date, time, {40000}, 1 + i % 90, 7, 8,
                       static_cast<std::int16_t>(1 + i % 150), ";12;7;305;", ";", 0, message) != 0)
        throw std::runtime_error(message);
    }
  }

 private:
  std::int32_t second_ = 0;
};

// What a desk issues, as the engine gets it; a list each time that it stores.
std::vector<Statements> issued(const std::string& path) {
  Desk desk(path);
  std::vector<Statements> runs(bench::kRuns + 1);
  for (Statements& run : runs) {
    DatabaseConnection.tap = [&run](std::string_view text) {
      run.push_back(rewriteStatement(text, SqlDialect::sqlite).text);
    };
    desk.store();
  }
  DatabaseConnection = Connection();
  return runs;
}

sqlite3* openBare(const std::string& path) {
  sqlite3* database = nullptr;
  if (sqlite3_open_v2(path.c_str(), &database, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX,
                      nullptr) != SQLITE_OK ||
      sqlite3_exec(database, "PRAGMA synchronous=FULL; PRAGMA foreign_keys=ON", nullptr, nullptr,
                   nullptr) != SQLITE_OK)
    throw std::runtime_error("The office does not open.");
  return database;
}

void runBare(sqlite3* database, const Statements& statements) {
  for (const std::string& statement : statements)
    if (sqlite3_exec(database, statement.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
      throw std::runtime_error(sqlite3_errmsg(database));
}

void measure() {
  const std::string ours = (bench::folder() / "bench-inserts.db").string();
  const std::string other = (bench::folder() / "bench-inserts-bare.db").string();
  const std::vector<Statements> runs = issued(ours);
  bench::makeOffice(other, kSize);
  sqlite3* bare = openBare(other);
  Desk desk(ours);
  std::size_t run = 0;
  desk.store();
  runBare(bare, runs[run]);
  bench::compare(
      "store 1,000 charges", kMostTimesBare,
      [&] { return bench::milliseconds([&] { desk.store(); }); },
      [&] { return bench::milliseconds([&] { runBare(bare, runs[++run]); }); });
  sqlite3_close(bare);
}

}  // namespace

int main() { return bench::run(measure); }
