// The filters of the charges view, against the best plans found by hand.

#include <cstdlib>
#include <iostream>
#include <string>

#include "bench/Measure.h"
#include "bench/Office.h"
#include "data/Literals.h"
#include "data/SavedQueries.h"
#include "engine/SqliteEngine.h"
#include "text/Text.h"

namespace {

using namespace bw;

constexpr double kMostMillisecondsOfDay = 10;
constexpr double kMostTimesByHand = 1.5;

constexpr const char* kBase = "SELECT * FROM ChargesDescriptive Where [status]<>2 and ";

// The view's columns and joins, with the place of the charges left to the plan by hand.
constexpr const char* kColumns =
    "SELECT c.PatientId, c.ChargeDate, c.ChargeTime, c.ChargeRealDate, c.FacilityCode, c.EMCode,"
    " c.DoctorCode, c.ReferDoctorCode, c.Status, c.PrintLot,"
    " CASE c.Status WHEN 0 THEN 'Ready' WHEN 1 THEN 'Posted' WHEN 2 THEN 'Archived' ELSE '' END,"
    " p.Names, p.DateOfBirth, p.AccountNumber, p.InsuranceCode, i.Description,"
    " e.Description, e.RealEMCode, e.BillingEMCode, e.ChargeTypeCode,"
    " f.Description, f.BillingFacilityCode, f.BillingFacilityCodeOut,"
    " d.Description, d.BillingDoctorCode, r.Description, r.BillingDoctorCode FROM ";
constexpr const char* kCatalogues =
    " CROSS JOIN EvaluationManagement e ON e.EMCode = c.EMCode"
    " CROSS JOIN Facility f ON f.FacilityCode = c.FacilityCode"
    " CROSS JOIN Doctors d ON d.DoctorCode = c.DoctorCode"
    " CROSS JOIN Doctors r ON r.DoctorCode = c.ReferDoctorCode";
constexpr const char* kPatientBehind =
    " CROSS JOIN Patient p ON p.PatientId = c.PatientId"
    " CROSS JOIN Insurance i ON i.InsuranceCode = p.InsuranceCode";

struct Filter {
  const char* name;
  const char* condition;
  std::string byHand;
};

const Filter kFilters[] = {
    {"charges of one patient", "PatientId= 17000",
     concat(kColumns, "PatientCharges c INDEXED BY sqlite_autoindex_PatientCharges_1",
            kPatientBehind, kCatalogues, " WHERE c.Status <> 2 AND c.PatientId = 17000")},
    {"charges of one lot", "PrintLot = 1200",
     concat(kColumns, "PatientCharges c INDEXED BY ChargesByLot", kPatientBehind, kCatalogues,
            " WHERE c.Status <> 2 AND c.PrintLot = 1200")},
    {"charges of one doctor", "DoctorCode= 120",
     concat(kColumns, "PatientCharges c NOT INDEXED", kPatientBehind, kCatalogues,
            " WHERE c.Status <> 2 AND c.DoctorCode = 120")},
    // Reading the table is as quick as going from the insurance's patients to their charges, which
    // lie apart.
    {"charges of one insurance", "InsuranceCode= 17",
     concat(kColumns, "PatientCharges c NOT INDEXED", kPatientBehind, kCatalogues,
            " WHERE c.Status <> 2 AND p.InsuranceCode = 17")},
    {"charges of one insurance, from its patients", "InsuranceCode= 17",
     concat(kColumns,
            "Patient p CROSS JOIN Insurance i ON i.InsuranceCode = p.InsuranceCode"
            " CROSS JOIN PatientCharges c INDEXED BY sqlite_autoindex_PatientCharges_1"
            " ON c.PatientId = p.PatientId",
            kCatalogues, " WHERE c.Status <> 2 AND p.InsuranceCode = 17")},
};

double timeOf(Connection& connection, const std::string& statement, std::ptrdiff_t& rows) {
  return bench::processorMilliseconds([&] { rows = connection.Read(statement)->RecordCount(); });
}

}  // namespace

int main() {
  Connection connection = officeConnection(openSqlite(bench::grownOffice().string()));
  std::ptrdiff_t rows = 0;
  const std::string day = monthFirst({bench::kFirstDay.day + 1200});
  const std::string ofDay =
      concat(kBase, "ChargeRealDate >= #", day, "# and ChargeRealDate <= #", day, "#");
  timeOf(connection, ofDay, rows);
  bench::report("charges of one day", "ms",
                bench::median([&] { return timeOf(connection, ofDay, rows); }),
                kMostMillisecondsOfDay);
  if (rows == 0) return EXIT_FAILURE;
  for (const Filter& filter : kFilters) {
    std::ptrdiff_t byHand = 0;
    const std::string statement = concat(kBase, filter.condition);
    timeOf(connection, statement, rows);
    bench::compare(
        filter.name, kMostTimesByHand, [&] { return timeOf(connection, statement, rows); },
        [&] { return timeOf(connection, filter.byHand, byHand); });
    if (rows == 0 || rows != byHand) {
      std::cerr << filter.name << ": " << rows << " rows, by hand " << byHand << '\n';
      return EXIT_FAILURE;
    }
  }
  return bench::verdict();
}
