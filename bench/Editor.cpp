// The charge editor on an office of many doctors who cover for each other, from the command to the
// painted dialog.

#include <QApplication>

#include "bench/EditorWatch.h"
#include "bench/Forms.h"
#include "bench/Measure.h"
#include "bench/Office.h"
#include "charges/frmEditCharge.h"
#include "core/Principal.h"
#include "data/SavedQueries.h"
#include "engine/SqliteEngine.h"
#include "text/Text.h"

namespace {

using namespace bw;

constexpr double kMostLoad = 100;  // ms
constexpr int kDoctors = 1300;

// Each doctor covers for one colleague.
void addDoctors() {
  DatabaseConnection.Execute(concat(bench::numbersTo(kDoctors),
                                    "INSERT OR IGNORE INTO Doctors (DoctorCode, Description) "
                                    "SELECT i, 'Doctor ' || i FROM n"));
  DatabaseConnection.Execute(concat(bench::numbersTo(kDoctors),
                                    "INSERT INTO DoctorCoveringDoctors SELECT i, 1 + i % ",
                                    kDoctors, " FROM n"));
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  bench::setUpForms();
  const std::string path = (bench::folder() / "bench-editor.db").string();
  bench::makeOffice(path, {1000, 20000});
  DatabaseConnection = officeConnection(openSqlite(path));
  addDoctors();
  bench::EditorWatch watch("frmEditCharge", frmEditCharge);
  application.installEventFilter(&watch);

  // The first dialog of a process pays for fonts and styles.
  CurrentChargeDate = kNewCharge;
  watch.load();
  bench::report("charge editor with 1,300 doctors, new charge", "ms", bench::median([&] {
                  CurrentChargeDate = kNewCharge;
                  return watch.load();
                }),
                kMostLoad);
  const RecordSetRef charge = DatabaseConnection.Read("SELECT TOP 1 * FROM PatientCharges");
  CurrentPatientId = charge->code("PatientId");
  bench::report("charge editor with 1,300 doctors, stored charge", "ms", bench::median([&] {
                  CurrentChargeDate = charge->date("ChargeDate");
                  CurrentChargeTime = charge->time("ChargeTime");
                  return watch.load();
                }),
                kMostLoad);
  return bench::verdict();
}
