// What a log of changes costs: the same writes with it and without.

#include <stdexcept>
#include <string>
#include <utility>

#include "bench/Desk.h"
#include "bench/Measure.h"
#include "bench/Office.h"
#include "core/Principal.h"
#include "data/BWSQLCharges.h"
#include "data/SavedQueries.h"
#include "data/Schema.h"
#include "engine/RelaxedSync.h"
#include "engine/SqliteEngine.h"

namespace {

using namespace bw;

constexpr double kMostTimesSingle = 1.15;
constexpr double kMostTimesLoop = 1.4;
constexpr int kSingle = 200;
constexpr int kLoop = 1000;
constexpr bench::OfficeSize kSize{1000, 20000};

// An office at which one writes at a time.
class Office {
 public:
  Office(const std::string& name, bool logged) {
    const std::string path = (bench::folder() / name).string();
    bench::makeOffice(path, kSize);
    auto engine = openSqlite(path);
    if (logged) keepChangeLog(*engine, true);
    connection_ = officeConnection(std::move(engine));
    first_ = connection_.Read("SELECT TOP 1000 * FROM PatientCharges");
  }

  template <class Work>
  double milliseconds(Work work) {
    std::swap(connection_, DatabaseConnection);
    const double taken = bench::milliseconds([&] { work(*this); });
    std::swap(connection_, DatabaseConnection);
    return taken;
  }

  void store() { desk_.store(kSingle); }

  // As posting and archiving do; each time the rows get another status and lot.
  void post() {
    ++lot_;
    RelaxedSync relaxed(DatabaseConnection);
    std::string message;
    for (int i = 1; i <= kLoop; ++i) {
      first_->setAbsolutePosition(i);
      if (ChargeSetPrintLot(first_->code("PatientId"), first_->date("ChargeDate"),
                            first_->time("ChargeTime"), lot_, static_cast<std::int16_t>(lot_ % 2),
                            message) != 0)
        throw std::runtime_error(message);
    }
    relaxed.finish();
  }

 private:
  Connection connection_;
  RecordSetRef first_;
  bench::Desk desk_;
  std::int32_t lot_ = 0;
};

}  // namespace

int main() {
  return bench::run([] {
    Office logged("bench-logged.db", true);
    Office plain("bench-plain.db", false);
    const auto compare = [&](const char* name, double most, auto work) {
      bench::compare(
          name, most, [&] { return logged.milliseconds(work); },
          [&] { return plain.milliseconds(work); });
    };
    compare("log of changes: store 200 charges", kMostTimesSingle, [](Office& at) { at.store(); });
    compare("log of changes: post 1,000 charges", kMostTimesLoop, [](Office& at) { at.post(); });
  });
}
