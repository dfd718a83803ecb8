// How long the pages of Review take from the reading to their rows, on offices of two sizes.
// The limits, of processor time, are what a user does not notice, and a second.

#include <filesystem>
#include <string>

#include "bench/Measure.h"
#include "bench/Office.h"
#include "core/Principal.h"
#include "core/Services.h"
#include "data/SavedQueries.h"
#include "engine/SqliteEngine.h"
#include "review/PageKind.h"
#include "text/Text.h"

namespace {

using namespace bw;

struct Size {
  const char* name;
  bench::OfficeSize office;
  double limit;  // milliseconds a page
};
constexpr Size kSizes[] = {
    {.name = "100000 charges", .office = {3200, 100000}, .limit = 100},
    {.name = "a million charges", .office = bench::kGrownOffice, .limit = 1000},
};

// Every tenth patient is admitted and seen by two doctors.
std::filesystem::path officeWithAdmissions(const Size& size) {
  const std::filesystem::path path =
      bench::folder() / concat("bench-review-", size.office.charges, ".db");
  if (std::filesystem::exists(path)) return path;
  const std::filesystem::path growing = path.string() + ".part";
  bench::makeOffice(growing, size.office);
  const auto engine = openSqlite(growing.string());
  engine->execute(
      "UPDATE Patient SET InFacilityCode = 1 + PatientId % 150, "
      "InDoctorCode = 1 + PatientId % 300 WHERE PatientId % 10 = 0");
  engine->execute(
      "INSERT INTO PatientDoctors SELECT PatientId, 1 + (PatientId + n) % 300, 2, 1 + n "
      "FROM Patient, (SELECT 1 AS n UNION SELECT 2) WHERE InFacilityCode <> 0");
  engine->execute("PRAGMA wal_checkpoint(TRUNCATE)");
  std::filesystem::rename(growing, path);
  return path;
}

Chosen firstOfAll(const PageKind& kind) {
  Chosen chosen;
  for (const PageChoice& choice : kind.choices)
    chosen.push_back(choice.kind == PageChoice::Kind::day ? today().day : 0);
  return chosen;
}

}  // namespace

int main() {
  services().settingsFolder = [] { return bench::folder() / "bench-review-settings"; };
  for (const Size& size : kSizes) {
    DatabaseConnection = officeConnection(
        openSqlite(officeWithAdmissions(size).string(), {.access = EngineAccess::readOnly}));
    for (const PageKind* kind : pageKinds()) {
      const Chosen chosen = firstOfAll(*kind);
      const double taken =
          bench::median([&] { return bench::processorMilliseconds([&] { kind->read(chosen); }); });
      bench::report(concat("review, ", kind->name, ", ", size.name), "ms", taken, size.limit);
    }
    DatabaseConnection = Connection();
  }
  return bench::verdict();
}
