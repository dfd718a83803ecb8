#include <numeric>
#include <ostream>

#include "engine/PostgresAddress.h"
#include "text/Text.h"
#include "tools/Commands.h"
#include "tools/Copies.h"
#include "tools/Registered.h"
#include "tools/ServerDumps.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

// How many rows a copy has and whether it is good; of a dump whether it can be read.
std::string verdictOn(const Copy& copy, bool isDump, bool& good) {
  if (isDump) {
    good = isReadable(copy.file);
    return good ? "can be read" : "not good";
  }
  const std::vector<TablePrint> noted = notedSums(copy);
  const std::int64_t rows =
      std::accumulate(noted.begin(), noted.end(), std::int64_t{0},
                      [](std::int64_t sum, const TablePrint& print) { return sum + print.rows; });
  const std::vector<std::string> faults = faultsOf(copy.file, copy.workgroup(), noted);
  good = faults.empty();
  return concat(static_cast<long>(rows), " rows  ", good ? "good" : "not good: " + faults.front());
}

// Lists the copies of a folder; whether all of them are good.
bool list(const fs::path& folder, const fs::path& database, std::ostream& out) {
  const std::vector<Copy> copies = copiesIn(folder, database);
  out << folder.string() << ": " << copies.size() << (copies.size() == 1 ? " copy\n" : " copies\n");
  bool allGood = true;
  for (const Copy& copy : copies) {
    bool good = true;
    const std::string verdict = verdictOn(copy, isServerAddress(database.string()), good);
    allGood = allGood && good;
    out << "  " << copy.file.filename().string() << "  " << fs::file_size(copy.file) << " bytes  "
        << verdict << '\n';
  }
  return allGood;
}

}  // namespace

Exit listCopies(const fs::path& given, const fs::path& folder, std::ostream& out) {
  const fs::path database = givenOrRegistered(given);
  const std::vector<fs::path> folders =
      folder.empty() ? copiesFolders(database) : std::vector<fs::path>{folder};
  bool good = true;
  for (const fs::path& one : folders) good = list(one, database, out) && good;
  return good ? Exit::done : Exit::findings;
}

}  // namespace bw
