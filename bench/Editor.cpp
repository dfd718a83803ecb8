// The charge editor on an office of many doctors who cover for each other, from the command to the
// painted dialog.

#include <QApplication>
#include <QTimer>
#include <chrono>
#include <stdexcept>

#include "bench/Forms.h"
#include "bench/Measure.h"
#include "bench/Office.h"
#include "charges/frmEditCharge.h"
#include "controls/Dialog.h"
#include "core/Principal.h"
#include "data/SavedQueries.h"
#include "engine/SqliteEngine.h"
#include "text/Text.h"

namespace {

using namespace bw;

constexpr double kMostLoad = 100;  // ms
constexpr int kDoctors = 1300;

// Closes the charge editor when it has been painted, and remembers when that was.
class Watch : public QObject {
 public:
  std::chrono::steady_clock::time_point painted;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint && watched->objectName() == "frmEditCharge")
      QTimer::singleShot(0, watched, [this, watched] {
        painted = std::chrono::steady_clock::now();
        static_cast<Dialog*>(watched)->unload();
      });
    return false;
  }
};

double load(Watch& watch) {
  watch.painted = {};
  const auto begin = std::chrono::steady_clock::now();
  frmEditCharge().showModal();
  if (watch.painted < begin) throw std::runtime_error("The editor was not shown.");
  return std::chrono::duration<double, std::milli>(watch.painted - begin).count();
}

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
  Watch watch;
  application.installEventFilter(&watch);

  // The first dialog of a process pays for fonts and styles.
  CurrentChargeDate = kNewCharge;
  load(watch);
  bench::report("charge editor with 1,300 doctors, new charge", "ms", bench::median([&] {
                  CurrentChargeDate = kNewCharge;
                  return load(watch);
                }),
                kMostLoad);
  const RecordSetRef charge = DatabaseConnection.Read("SELECT TOP 1 * FROM PatientCharges");
  CurrentPatientId = charge->code("PatientId");
  bench::report("charge editor with 1,300 doctors, stored charge", "ms", bench::median([&] {
                  CurrentChargeDate = charge->date("ChargeDate");
                  CurrentChargeTime = charge->time("ChargeTime");
                  return load(watch);
                }),
                kMostLoad);
  return bench::verdict();
}
