// How many trips to a server the daily work takes, and how long the charge editor takes with 300
// doctors who cover for each other where a trip costs two milliseconds; under tests/server/with.

#include <QApplication>
#include <cstdlib>
#include <stdexcept>

#include "bench/EditorWatch.h"
#include "bench/Forms.h"
#include "bench/Measure.h"
#include "bench/Office.h"
#include "bench/SlowLine.h"
#include "charges/frmEditCharge.h"
#include "core/Principal.h"
#include "data/BWSQLCharges.h"
#include "data/SavedQueries.h"
#include "engine/PostgresEngine.h"
#include "text/Text.h"

namespace {

using namespace bw;

constexpr double kMostLoad = 100;  // ms
constexpr std::chrono::milliseconds kTrip{2};
constexpr std::int16_t kPatient = 7;

std::string addressIn(const std::string& folder) {
  return concat("postgresql://postgres@/postgres?host=", folder);
}

void done(int result, const std::string& message) {
  if (result != 0) throw std::runtime_error(message);
}

class DailyWork {
 public:
  explicit DailyWork(bench::SlowLine& line) : line_(line) {
    services().now = [this] { return DateTime{bench::kFirstDay, now_}; };
  }

  void insert() {
    count("insert a charge with three details", 1, [this] {
      ++now_.second;
      std::string message;
      done(ChargeInsert(kPatient, date_, time_, bench::kFirstDay, 1, 7, 8, 1, ";12;7;305;", ";", 0,
                        message),
           message);
    });
  }
  void post() {
    count("post a charge", 2, [this] {
      std::string message;
      done(ChargeSetPrintLot(kPatient, date_, time_, 7, 1, message), message);
    });
  }
  void open(bench::EditorWatch& watch) {
    CurrentPatientId = kPatient;
    const auto both = [&](const char* name, int most, Date date, TimeOfDay time) {
      const auto load = [&] {
        CurrentChargeDate = date;
        CurrentChargeTime = time;
        return watch.load();
      };
      count(name, most, load);
      line_.take(kTrip);
      bench::report(concat("at 2 ms a trip: ", name), "ms", bench::median(load), kMostLoad);
      line_.take({});
    };
    both("open the editor, new charge", 1, kNewCharge, {});
    both("open the editor, stored charge", 5, date_, time_);
  }

 private:
  // The second time: the first one prepares statements and reads which keys the tables have.
  template <class Work>
  void count(const char* name, int most, Work work) {
    work();
    line_.trips();
    work();
    bench::report(concat("trips: ", name), "", line_.trips(), most);
  }

  bench::SlowLine& line_;
  TimeOfDay now_{};
  Date date_;
  TimeOfDay time_;
};

void measure(QApplication& application) {
  const char* folder = std::getenv("BRANTIWELL_TEST_SERVER_FOLDER");
  if (folder == nullptr) throw std::runtime_error("To be run by tests/server/with.");
  bench::fillOnServer(addressIn(folder), {1000, 20000});
  bench::SlowLine line(folder);
  DatabaseConnection = officeConnection(openPostgres(addressIn(line.folder())));
  DatabaseConnection.Execute(concat("INSERT INTO DoctorCoveringDoctors SELECT i, 1 + i % ",
                                    bench::kDoctors, " FROM generate_series(1, ", bench::kDoctors,
                                    ") AS i"));
  bench::EditorWatch watch("frmEditCharge", frmEditCharge);
  application.installEventFilter(&watch);
  DailyWork work(line);
  work.insert();
  work.post();
  work.open(watch);
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  bench::setUpForms();
  return bench::run([&application] { measure(application); });
}
