// What a server costs beyond the bare library that speaks to it, in an office of some hundred
// thousand charges; under tests/server/with.

#include <libpq-fe.h>

#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/Desk.h"
#include "bench/Measure.h"
#include "bench/Office.h"
#include "core/Principal.h"
#include "data/BWSQLCharges.h"
#include "data/BWSQLPatients.h"
#include "data/SavedQueries.h"
#include "data/Schema.h"
#include "engine/PostgresEngine.h"
#include "engine/RelaxedSync.h"
#include "engine/Rewriter.h"
#include "text/Text.h"

namespace {

using namespace bw;
using bench::Statements;

constexpr double kMostTimesBare = 1.35;
constexpr double kMostTimesPipeline = 1.1;
constexpr double kMostOfOneDay = 8;  // milliseconds
constexpr int kCharges = 1000;
constexpr bench::OfficeSize kSize{8000, 400000};

struct Clear {
  void operator()(PGresult* result) const noexcept { PQclear(result); }
};
using Result = std::unique_ptr<PGresult, Clear>;

// The library alone, binary, row by row.
class Bare {
 public:
  explicit Bare(const std::string& address) : connection_(PQconnectdb(address.c_str())) {
    if (PQstatus(connection_) != CONNECTION_OK) throw std::runtime_error("No server.");
    run("SET max_parallel_workers_per_gather = 0");
    run("SET jit = off");
  }
  ~Bare() { PQfinish(connection_); }
  Bare(const Bare&) = delete;
  Bare& operator=(const Bare&) = delete;

  // Touches every value of every row.
  std::size_t run(const std::string& text) {
    PQsendQueryParams(connection_, text.c_str(), 0, nullptr, nullptr, nullptr, nullptr, 1);
    PQsetSingleRowMode(connection_);
    std::size_t sum = 0;
    while (const Result result{PQgetResult(connection_)}) sum += touch(*result);
    return sum;
  }

  // A trip for each list.
  void pipeline(const Statements& statements) {
    PQenterPipelineMode(connection_);
    for (const std::string& text : statements)
      PQsendQueryParams(connection_, text.c_str(), 0, nullptr, nullptr, nullptr, nullptr, 1);
    PQpipelineSync(connection_);
    for (std::size_t i = 0; i < statements.size(); ++i)
      while (const Result result{PQgetResult(connection_)}) touch(*result);
    const Result end{PQgetResult(connection_)};
    PQexitPipelineMode(connection_);
  }

 private:
  std::size_t touch(const PGresult& result) {
    if (PQresultStatus(&result) == PGRES_FATAL_ERROR)
      throw std::runtime_error(PQresultErrorMessage(&result));
    std::size_t sum = 0;
    for (int row = 0; row < PQntuples(&result); ++row)
      for (int i = 0; i < PQnfields(&result); ++i)
        sum += static_cast<std::size_t>(PQgetlength(&result, row, i)) +
               static_cast<unsigned char>(*PQgetvalue(&result, row, i));
    return sum;
  }

  PGconn* connection_;
};

std::string addressOf(const std::string& database) {
  const char* server = std::getenv("BRANTIWELL_TEST_SERVER");
  if (server == nullptr) throw std::runtime_error("To be run by tests/server/with.");
  std::string address = server;
  const std::string path = "@/postgres?";
  return address.replace(address.find(path), path.size(), "@/" + database + "?");
}

void compareReads(Bare& bare, const std::string& name, const std::string& conditions) {
  const std::string statement = "SELECT * FROM ChargesDescriptive" + conditions;
  const std::string text = rewriteStatement(statement, SqlDialect::postgres).text;
  bench::compare(
      name, kMostTimesBare,
      [&] { return bench::milliseconds([&] { DatabaseConnection.Read(statement); }); },
      [&] { return bench::milliseconds([&] { bare.run(text); }); });
}

// Gives the charges of a day, one a patient and second, another lot and status.
void setAll(Date day, std::int32_t lot, std::int16_t status) {
  RelaxedSync relaxed(DatabaseConnection);
  for (int i = 0; i < kCharges; ++i) {
    std::string message;
    if (ChargeSetPrintLot(static_cast<std::int16_t>(1 + i), day, {i + 1}, lot, status, message) !=
        0)
      throw std::runtime_error(message);
  }
  relaxed.finish();
}
void post(Date day) { setAll(day, 7, 1); }
void archive(Date day) { setAll(day, -1, 3); }

// All charges of a hundred patients to their neighbours, or back.
void merge(bool back) {
  for (std::int16_t patient = 2001; patient < 2201;
       patient = static_cast<std::int16_t>(patient + 2)) {
    const auto neighbour = static_cast<std::int16_t>(patient + 1);
    std::string message;
    if (PatientTransferCharges(back ? patient : neighbour, back ? neighbour : patient, message) !=
        0)
      throw std::runtime_error(message);
  }
}

// What a desk issues, a list for each transaction, each statement but its first behind a savepoint.
std::vector<Statements> issued(const std::function<void()>& work) {
  std::vector<Statements> lists;
  DatabaseConnection.tap = [&lists](std::string_view text) {
    if (text == "BEGIN") lists.emplace_back();
    const bool isBare = text == "BEGIN" || text == "COMMIT" || lists.back().size() == 1;
    if (!isBare) lists.back().emplace_back("SAVEPOINT s");
    lists.back().push_back(rewriteStatement(text, SqlDialect::postgres).text);
    if (!isBare) lists.back().emplace_back("RELEASE s");
  };
  work();
  DatabaseConnection.tap = nullptr;
  return lists;
}

void compareWrites(Bare& bare) {
  bench::Desk desk;
  std::vector<Statements> inserts = issued([&] { desk.store(kCharges); });
  const std::vector<Statements> posts = issued([&] { post(desk.day()); });
  Date last{40000};
  Date next{50000};
  bench::compare(
      "server: store 1,000 charges", kMostTimesPipeline,
      [&] {
        desk.nextDay();
        return bench::milliseconds([&] { desk.store(kCharges); });
      },
      [&] {
        for (Statements& list : inserts) bench::onDay(list, last, next);
        last = next;
        ++next.day;
        return bench::milliseconds([&] {
          for (const Statements& list : inserts) bare.pipeline(list);
        });
      });
  const auto again = [&bare](const std::vector<Statements>& lists) {
    return bench::milliseconds([&] {
      for (const Statements& list : lists) bare.pipeline(list);
    });
  };
  const auto againRelaxed = [&](const std::vector<Statements>& lists) {
    bare.run("SET synchronous_commit = off");
    const double taken = again(lists);
    bare.run("RESET synchronous_commit");
    return taken;
  };
  bench::compare(
      "server: post 1,000 charges", kMostTimesBare,
      [&] { return bench::milliseconds([&] { post(desk.day()); }); },
      [&] { return againRelaxed(posts); });
  const std::vector<Statements> archived = issued([&] { archive(desk.day()); });
  bench::compare(
      "server: archive 1,000 charges", kMostTimesBare,
      [&] { return bench::milliseconds([&] { archive(desk.day()); }); },
      [&] { return againRelaxed(archived); });
  const std::vector<Statements> merged = issued([] { merge(true); });
  bench::compare(
      "server: merge 100 patients of 100 charges", kMostTimesBare,
      [] { return bench::milliseconds([] { merge(false); }); }, [&] { return again(merged); });
}

void measure() {
  Bare(addressOf("postgres")).run("CREATE DATABASE bench TEMPLATE template0");
  const std::string address = addressOf("bench");
  bench::fillOnServer(address, kSize);
  DatabaseConnection = officeConnection(openPostgres(address));
  Bare bare(address);
  const std::string day = isoDate({bench::kFirstDay.day + 500});
  const std::string oneDay =
      concat(" WHERE ChargeRealDate >= #", day.substr(0, 4), "/", day.substr(5, 2), "/",
             day.substr(8), "#  and ChargeRealDate <= #", day.substr(0, 4), "/", day.substr(5, 2),
             "/", day.substr(8), "#");
  compareReads(bare, "server: whole view of 400,000", "");
  compareReads(bare, "server: one day", oneDay);
  const std::string statement = "SELECT * FROM ChargesDescriptive" + oneDay;
  bench::report("server: one day", "ms", bench::median([&] {
                  return bench::milliseconds([&] { DatabaseConnection.Read(statement); });
                }),
                kMostOfOneDay);
  compareWrites(bare);
}

}  // namespace

int main() { return bench::run(measure); }
