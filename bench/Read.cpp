// Reading the unfiltered list of charges into a record set, against the bare engine, and what it
// takes of memory. With the argument "curve": the time a row of four million against one million.

#include <sqlite3.h>

#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string_view>

#include "bench/Measure.h"
#include "bench/Office.h"
#include "core/AsisRutinasRecordsets.h"
#include "data/Literals.h"
#include "data/SavedQueries.h"
#include "engine/SqliteEngine.h"
#include "text/Text.h"

namespace {

using namespace bw;

constexpr const char* kStatement = "SELECT * FROM ChargesDescriptive Where [status]<>2";
constexpr double kMostTimesBare = 0.30;
constexpr double kMostBytesOfRow = 24;
constexpr double kMostTimesOfRow = 1.25;

// Touches every value of every row, in its type, and keeps none.
std::size_t stepBare(sqlite3* database) {
  sqlite3_stmt* statement = nullptr;
  if (sqlite3_prepare_v2(database, kStatement, -1, &statement, nullptr) != SQLITE_OK)
    throw std::runtime_error(sqlite3_errmsg(database));
  const int columns = sqlite3_column_count(statement);
  std::size_t sum = 0;
  while (sqlite3_step(statement) == SQLITE_ROW)
    for (int i = 0; i < columns; ++i) switch (sqlite3_column_type(statement, i)) {
        case SQLITE_INTEGER:
          sum += static_cast<std::size_t>(sqlite3_column_int64(statement, i));
          break;
        case SQLITE_NULL:
          break;
        default:
          sum += *sqlite3_column_text(statement, i);
          sum += static_cast<std::size_t>(sqlite3_column_bytes(statement, i));
          break;
      }
  sqlite3_finalize(statement);
  return sum;
}

double readingTime(Connection& connection) {
  return bench::processorMilliseconds([&] { connection.Read(kStatement); });
}

bool measureReading(Connection& connection, const std::string& path) {
  sqlite3* bare = nullptr;
  if (sqlite3_open_v2(path.c_str(), &bare, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr) !=
      SQLITE_OK)
    throw std::runtime_error("The office does not open.");
  std::size_t sum = 0;
  bench::compare(
      "read a million charges", kMostTimesBare, [&] { return readingTime(connection); },
      [&] { return bench::processorMilliseconds([&] { sum += stepBare(bare); }); });
  sqlite3_close(bare);
  return sum > 0;
}

// The charge that the record set stands on, as the database has it.
RecordSetRef stored(Connection& connection, const RecordSetRef& rows) {
  return connection.Read(
      concat("SELECT * FROM ChargesDescriptive WHERE PatientId=", rows->integer("PatientId"),
             " and ChargeDate=#", monthFirst(rows->date("ChargeDate")), "# and ChargeTime=#",
             clock24(rows->time("ChargeTime")), "#"));
}

void post(const RecordSetRef& rows) {
  for (std::ptrdiff_t i = 1; i <= rows->RecordCount(); ++i) {
    rows->setAbsolutePosition(i);
    if (rows->code("Status") != 0) continue;
    rows->set("status", 1);
    rows->set("statusDescription", "Posted");
  }
  rows->MoveFirst();
}

void measureMemory(Connection& connection) {
  const double before = bench::allocatedBytes();
  const RecordSetRef rows = connection.Read(kStatement);
  const auto tell = [&](const char* when) {
    bench::report(concat("memory of a million charges ", when), "bytes a row",
                  (bench::allocatedBytes() - before) / static_cast<double>(rows->RecordCount()),
                  kMostBytesOfRow);
  };
  tell("after loading");
  rows->setAbsolutePosition(rows->RecordCount() / 2);
  const RecordSetRef charge = stored(connection, rows);
  RecordsetUpdateCurrent(rows, charge);
  tell("after a saved one");
  RecordsetAppendFirst(rows, charge);
  tell("after an added one");
  post(rows);
  tell("after posting");
}

int measureGrown() {
  const std::string path = bench::grownOffice().string();
  Connection connection = officeConnection(openSqlite(path));
  if (!measureReading(connection, path)) return EXIT_FAILURE;
  measureMemory(connection);
  return bench::verdict();
}

double timeOfRow(const char* office, int charges) {
  Connection connection = officeConnection(
      openSqlite(bench::keptOffice(office, {bench::kGrownOffice.patients, charges, false})));
  readingTime(connection);  // the first one finds the file outside of memory
  return bench::median([&] { return readingTime(connection); }) * 1e6 / charges;
}

int measureCurve() {
  constexpr int kMillion = 1000000;
  const double million = timeOfRow("bench-curve-1", kMillion);
  const double fourMillion = timeOfRow("bench-curve-4", 4 * kMillion);
  bench::report("read four million charges, against a million", "ns a row", fourMillion,
                kMostTimesOfRow * million);
  return bench::verdict();
}

}  // namespace

int main(int argc, char** argv) {
  return argc > 1 && std::string_view(argv[1]) == "curve" ? measureCurve() : measureGrown();
}
