// Reading the unfiltered list of charges into a record set, against the bare engine.

#include <sqlite3.h>

#include <cstdlib>
#include <iostream>
#include <memory>

#include "bench/Measure.h"
#include "bench/Office.h"
#include "data/SavedQueries.h"
#include "engine/Connection.h"
#include "engine/SqliteEngine.h"

namespace {

using namespace bw;

constexpr const char* kStatement = "SELECT * FROM ChargesDescriptive Where [status]<>2";
constexpr double kMostTimesBare = 0.30;
constexpr double kMostBytesOfRow = 24;

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

}  // namespace

int main() {
  const std::string path = bench::grownOffice().string();
  sqlite3* bare = nullptr;
  if (sqlite3_open_v2(path.c_str(), &bare, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr) !=
      SQLITE_OK)
    throw std::runtime_error("The office does not open.");
  Connection connection = officeConnection(openSqlite(path));
  std::size_t sum = 0;
  double bytesOfRow = 0;
  bench::compare(
      "read a million charges", kMostTimesBare,
      [&] {
        RecordSetRef rows;
        const double took =
            bench::processorMilliseconds([&] { rows = connection.Read(kStatement); });
        bytesOfRow =
            static_cast<double>(rows->rows()->bytes()) / static_cast<double>(rows->RecordCount()) +
            sizeof(rows->view().front());
        return took;
      },
      [&] { return bench::processorMilliseconds([&] { sum += stepBare(bare); }); });
  bench::report("memory of a million charges", "bytes a row", bytesOfRow, kMostBytesOfRow);
  sqlite3_close(bare);
  if (sum == 0) return EXIT_FAILURE;
  return bench::verdict();
}
