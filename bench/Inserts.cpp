// Storing a thousand charges with their details, against the same statements on the bare engine.

#include <sqlite3.h>

#include <stdexcept>
#include <string>
#include <string_view>

#include "bench/Desk.h"
#include "bench/Measure.h"
#include "bench/Office.h"
#include "core/Principal.h"
#include "data/SavedQueries.h"
#include "engine/Rewriter.h"
#include "engine/SqliteEngine.h"

namespace {

using namespace bw;
using bench::Statements;

constexpr double kMostTimesBare = 1.15;
constexpr int kCharges = 1000;
constexpr bench::OfficeSize kSize{1000, 20000};

// What a desk issues for a day, as the engine gets it.
Statements issued(bench::Desk& desk) {
  Statements statements;
  DatabaseConnection.tap = [&statements](std::string_view text) {
    statements.push_back(rewriteStatement(text, SqlDialect::sqlite).text);
  };
  desk.store(kCharges);
  DatabaseConnection.tap = nullptr;
  return statements;
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
  bench::makeOffice(ours, kSize);
  bench::makeOffice(other, kSize);
  DatabaseConnection = officeConnection(openSqlite(ours));
  bench::Desk desk;
  Date day = desk.day();
  Statements statements = issued(desk);
  sqlite3* bare = openBare(other);
  runBare(bare, statements);
  bench::compare(
      "store 1,000 charges", kMostTimesBare,
      [&] {
        desk.nextDay();
        return bench::milliseconds([&] { desk.store(kCharges); });
      },
      [&] {
        bench::onDay(statements, day, {day.day + 1});
        ++day.day;
        return bench::milliseconds([&] { runBare(bare, statements); });
      });
  sqlite3_close(bare);
}

}  // namespace

int main() { return bench::run(measure); }
