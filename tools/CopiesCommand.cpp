#include <numeric>
#include <ostream>

#include "tools/Commands.h"
#include "tools/Copies.h"
#include "tools/Registered.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

// Lists the copies of a folder; whether all of them are good.
bool list(const fs::path& folder, const fs::path& database, std::ostream& out) {
  const std::vector<Copy> copies = copiesIn(folder, database);
  out << folder.string() << ": " << copies.size() << (copies.size() == 1 ? " copy\n" : " copies\n");
  bool good = true;
  for (const Copy& copy : copies) {
    const std::vector<TablePrint> noted = notedSums(copy);
    const std::int64_t rows =
        std::accumulate(noted.begin(), noted.end(), std::int64_t{0},
                        [](std::int64_t sum, const TablePrint& print) { return sum + print.rows; });
    const std::vector<std::string> faults = faultsOf(copy.file, copy.workgroup(), noted);
    good = good && faults.empty();
    out << "  " << copy.file.filename().string() << "  " << fs::file_size(copy.file) << " bytes  "
        << rows << " rows  " << (faults.empty() ? "good" : "not good: " + faults.front()) << '\n';
  }
  return good;
}

}  // namespace

Exit listCopies(const fs::path& given, const fs::path& folder, std::ostream& out) {
  const fs::path database = fs::absolute(givenOrRegistered(given));
  const std::vector<fs::path> folders =
      folder.empty() ? copiesFolders(database) : std::vector<fs::path>{folder};
  bool good = true;
  for (const fs::path& one : folders) good = list(one, database, out) && good;
  return good ? Exit::done : Exit::findings;
}

}  // namespace bw
