// The charge editor on an office whose database the environment variable BENCH_OFFICE names,
// from the command to the painted dialog.

#include <QApplication>
#include <QTimer>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <stdexcept>

#include "bench/Measure.h"
#include "charges/frmEditCharge.h"
#include "controls/Dialog.h"
#include "controls/EventGuard.h"
#include "core/Principal.h"
#include "core/Services.h"
#include "data/SavedQueries.h"
#include "engine/SqliteEngine.h"
#include "text/Clock.h"

namespace {

using namespace bw;

constexpr double kMostLoad = 100;  // ms

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

}  // namespace

int main(int argc, char** argv) {
  const char* office = std::getenv("BENCH_OFFICE");
  if (office == nullptr) {
    std::cout << "charge editor: skipped, BENCH_OFFICE names no database\n";
    return EXIT_SUCCESS;
  }
  QApplication application(argc, argv);
  services().now = systemNow;
  unhandledError() = [](const std::exception& error) {
    std::cerr << error.what() << '\n';
    std::_Exit(EXIT_FAILURE);
  };
  DatabaseConnection = officeConnection(openSqlite(office));
  Watch watch;
  application.installEventFilter(&watch);

  // The first dialog of a process pays for fonts and styles.
  CurrentChargeDate = kNewCharge;
  load(watch);
  bench::report("charge editor, new charge", "ms", bench::median([&] {
                  CurrentChargeDate = kNewCharge;
                  return load(watch);
                }),
                kMostLoad);
  const RecordSetRef charge = DatabaseConnection.Read("SELECT TOP 1 * FROM PatientCharges");
  CurrentPatientId = charge->code("PatientId");
  bench::report("charge editor, stored charge", "ms", bench::median([&] {
                  CurrentChargeDate = charge->date("ChargeDate");
                  CurrentChargeTime = charge->time("ChargeTime");
                  return load(watch);
                }),
                kMostLoad);
  return bench::verdict();
}
