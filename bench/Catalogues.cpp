// The views of the catalogues with 5,000 rows each: from the choice in the tree to the filled list,
// and to the paint.

#include <QApplication>

#include "bench/Bare.h"
#include "bench/Forms.h"
#include "bench/Measure.h"
#include "core/Principal.h"
#include "data/SavedQueries.h"
#include "engine/Connection.h"
#include "engine/SqliteEngine.h"
#include "shell/frmMain.h"

namespace {

using namespace bw;

constexpr double kMostFilled = 15;   // ms
constexpr double kMostPainted = 40;  // ms
constexpr double kMostTimesBare = 1.5;
constexpr int kRows = 5000;

struct Catalogue {
  std::int16_t view;
  const char* name;
  const char* statement;
  const char* table;   // and its columns
  const char* values;  // of row i
};
// clang-format off
constexpr Catalogue kCatalogues[] = {
    {2, "doctors", "SELECT * FROM Doctors", "Doctors (DoctorCode, Description, BillingDoctorCode)",
     "i, 'Doctor ' || i, 'D' || i"},
    {3, "facilities", "SELECT * FROM FacilitiesDescriptive",
     "Facility (FacilityCode, Description, FacilityTypeCode, BillingFacilityCode)",
     "i, 'Facility ' || i, (SELECT min(FacilityTypeCode) FROM FacilityTypes), 'F' || i"},
    {4, "diagnoses", "SELECT * FROM DiagnosisDescriptive",
     "Diagnosis (DiagnosisCode, Description, DiagnosisFamilyCode, RealDiagnosisCode)",
     "i, 'Diagnosis ' || i, (SELECT min(DiagnosisFamilyCode) FROM DiagnosisFamily), i"},
    {5, "procedures", "SELECT * FROM Procedures",
     "Procedures (ProcedureCode, Description, RealProcedureCode)", "i, 'Procedure ' || i, i"},
    {6, "insurances", "SELECT * FROM Insurance",
     "Insurance (InsuranceCode, Description, BillingInsuranceCode)", "i, 'Insurance ' || i, i"},
    {7, "concepts", "SELECT * FROM EMCodesDescriptive",
     "EvaluationManagement (EMCode, Description, FacilityTypeCode, ChargeTypeCode, "
     "AttentionTypeCode, ShowOnFirst, ShowOnNext, IsDischarge)",
     "i, 'Concept ' || i, (SELECT min(FacilityTypeCode) FROM FacilityTypes), 1, 1, 1, 1, 0"},
    {8, "history items", "SELECT * FROM SicknessDescriptive",
     "Sickness (SicknessCode, Description, SicknessTypeCode)",
     "i, 'Item ' || i, (SELECT min(SicknessTypeCode) FROM SicknessType)"},
    {9, "diagnosis groups", "SELECT * FROM DiagnosisFamily",
     "DiagnosisFamily (DiagnosisFamilyCode, DiagnosisFamilyDescription)", "i, 'Group ' || i"},
};
// clang-format on

void grow(const Catalogue& catalogue) {
  DatabaseConnection.Execute(concat(bench::numbersTo(kRows), "INSERT OR IGNORE INTO ",
                                    catalogue.table, " SELECT ", catalogue.values, " FROM n"));
}

// The charges stand in between: their list is empty.
double fill(std::int16_t view) {
  MainWindow->CambiaAVista(0, 0);
  QApplication::processEvents();
  return bench::milliseconds([&] { MainWindow->CambiaAVista(view, 0); });
}

double fillAndPaint(std::int16_t view) {
  const double filled = fill(view);
  return filled + bench::milliseconds([] { QApplication::processEvents(); });
}

void measure(const Catalogue& catalogue, frmMain& window, bench::Bare& bare) {
  const std::string name = catalogue.name;
  bench::report(name + ", first opening to the filled list", "ms", fill(catalogue.view),
                kMostFilled);
  bench::report(name + ", to the filled list", "ms",
                bench::median([&] { return fill(catalogue.view); }), kMostFilled);
  bench::report(name + ", to the paint", "ms",
                bench::median([&] { return fillAndPaint(catalogue.view); }), kMostPainted);
  bench::compare(
      name + ", read and filled, against the engine", kMostTimesBare,
      [&] { return bench::milliseconds([&] { window.callView("Refresca"); }); },
      [&] { return bench::milliseconds([&] { bare.run(catalogue.statement); }); });
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  bench::setUpForms();
  const std::string path = (bench::folder() / "bench-catalogues.db").string();
  bench::makeOffice(path, {1, 0});
  DatabaseConnection = officeConnection(openSqlite(path));
  for (const Catalogue& catalogue : kCatalogues) grow(catalogue);
  bench::Bare bare(path);

  frmMain window;
  window.load();
  window.resize(1100, 600);
  window.show();
  for (const Catalogue& catalogue : kCatalogues) measure(catalogue, window, bare);
  return bench::verdict();
}
