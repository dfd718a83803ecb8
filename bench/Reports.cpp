// Reports, posting and archiving against the bare engine and the bare bytes.

#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

#include <fstream>
#include <iterator>
#include <stdexcept>

#include "bench/Bare.h"
#include "bench/Measure.h"
#include "bench/Office.h"
#include "charges/Archiving.h"
#include "core/Principal.h"
#include "core/Services.h"
#include "data/BWSQLCharges.h"
#include "data/SavedQueries.h"
#include "engine/RelaxedSync.h"
#include "engine/SqliteEngine.h"
#include "reports/ApoyoImpresion.h"
#include "text/Formats.h"
#include "text/Text.h"

namespace {

using namespace bw;
namespace fs = std::filesystem;

constexpr double kMostTimesRawBytes = 5;
constexpr double kMostTimesHeldTexts = 1.05;
constexpr double kMostTimesBareDetails = 1.3;
constexpr double kMostTimesBareWrites = 1.1;

constexpr int kArchivedDays = 400;  // more than there are: all but each patient's latest
constexpr bench::OfficeSize kOffice{3200, 103200};

struct Key {
  std::int16_t patient;
  Date date;
  TimeOfDay time;
};

std::string conditionOf(const Key& key) {
  return concat("PatientId = ", key.patient, " and ChargeDate = '", isoDate(key.date),
                "' and ChargeTime = '", isoTime(key.time), "'");
}

std::vector<Key> keysOf(const std::string& statement) {
  std::vector<Key> keys;
  const RecordSetRef charges = DatabaseConnection.Read(statement);
  for (; !charges->EOF_(); charges->MoveNext())
    keys.push_back(
        {charges->code("PatientId"), charges->date("ChargeDate"), charges->time("ChargeTime")});
  return keys;
}

std::string bytesOf(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

void writeBytes(const fs::path& file, const std::string& bytes) {
  const int descriptor = open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC, S_IRUSR | S_IWUSR);
  std::size_t done = 0;
  while (done < bytes.size()) {
    const ssize_t written = write(descriptor, bytes.data() + done, bytes.size() - done);
    if (written < 0) throw std::runtime_error("cannot write");
    done += static_cast<std::size_t>(written);
  }
  close(descriptor);
}

RecordSetRef wholeView() {
  const RecordSetRef charges =
      DatabaseConnection.Read("SELECT * FROM ChargesDescriptive Where [status]<>2");
  charges->setSort("ChargeRealDate");
  return charges;
}

void print(const RecordSetRef& charges, const fs::path& document) {
  const std::string fields =
      "ChargeRealDate,1;Names,2;EMDescription,2;Doctor,2;Facility,2;Insurance,2;"
      "StatusDescription,1;";
  ListReportWrite(charges, document, 8, 11, "", "Outstanding Charges (All)", "", fields, fields);
}

void measureList() {
  const RecordSetRef charges = wholeView();
  const fs::path document = bench::folder() / "list.myv";
  const auto ours = [&] { print(charges, document); };
  ours();
  const std::string bytes = bytesOf(document);
  const std::string name = concat("list report of ", charges->RecordCount(), " charges, ",
                                  bytes.size() / 1000000, " MB");
  bench::compare(
      name, kMostTimesRawBytes, [&] { return bench::milliseconds(ours); },
      [&] { return bench::milliseconds([&] { writeBytes(bench::folder() / "raw.myv", bytes); }); });
  // A value of a column that is looked up is at the end of a longer road than one that is held.
  DatabaseConnection.lookedUpQueries = {};
  const RecordSetRef held = wholeView();
  DatabaseConnection.lookedUpQueries = lookedUpQueries();
  bench::compare(
      name + ", against texts that the engine delivered", kMostTimesHeldTexts,
      [&] { return bench::processorMilliseconds(ours); },
      [&] { return bench::processorMilliseconds([&] { print(held, document); }); });
}

void measureDetails(const std::string& database) {
  const char* statement = "SELECT * FROM ChargesDescriptive Where [status]<>2 LIMIT 10000";
  const RecordSetRef charges = DatabaseConnection.Read(statement);
  const std::vector<Key> keys = keysOf(statement);
  bench::Bare bare(database);
  const auto bareDetails = [&] {
    for (const Key& key : keys) {
      bare.run(
          "SELECT ChargeDiagnosis.*, Diagnosis.Description, Diagnosis.RealDiagnosisCode, "
          "Diagnosis.BillingDiagnosisCode FROM Diagnosis INNER JOIN ChargeDiagnosis ON "
          "Diagnosis.DiagnosisCode = ChargeDiagnosis.DiagnosisCode WHERE " +
          conditionOf(key));
      bare.run(
          "SELECT ChargeProcedures.*, Procedures.Description, Procedures.RealProcedureCode, "
          "Procedures.BillingProcedureCode FROM Procedures INNER JOIN ChargeProcedures ON "
          "Procedures.ProcedureCode = ChargeProcedures.ProcedureCode WHERE " +
          conditionOf(key));
    }
  };
  bench::compare(
      "detailed report of 10000 charges", kMostTimesBareDetails,
      [&] {
        return bench::milliseconds([&] {
          ChargesDetailReport(charges, bench::folder() / "detail.myv", 8, 11, "", "Charges", "",
                              true);
        });
      },
      [&] { return bench::milliseconds(bareDetails); });
}

// The same statements and commits as the program's, as quick as the engine can.
void bareUpdates(bench::Bare& bare, const std::vector<Key>& keys, const std::string& set) {
  bare.run("PRAGMA synchronous=NORMAL");
  for (const Key& key : keys) {
    bare.run("BEGIN");
    bare.run("UPDATE PatientCharges SET " + set + " WHERE " + conditionOf(key));
    bare.run("COMMIT");
  }
  bare.run("PRAGMA synchronous=FULL");
  bare.run("BEGIN IMMEDIATE");
  bare.run("PRAGMA user_version=0");
  bare.run("COMMIT");
}

void measurePosting(const std::string& database) {
  const char* statement = "SELECT * FROM ChargesDescriptive Where [status]<>2 LIMIT 1000";
  const std::vector<Key> keys = keysOf(statement);
  bench::Bare bare(database);
  bench::compare(
      "posting 1000 charges", kMostTimesBareWrites,
      [&] {
        const RecordSetRef charges = DatabaseConnection.Read(statement);
        return bench::milliseconds([&] {
          RelaxedSync relaxed(DatabaseConnection);
          std::string message;
          for (std::ptrdiff_t i = 1; i <= charges->RecordCount(); ++i) {
            charges->setAbsolutePosition(i);
            if (ChargeSetPrintLot(charges->code("PatientId"), charges->date("ChargeDate"),
                                  charges->time("ChargeTime"), 7, 1, message) != 0)
              throw std::runtime_error(message);
            charges->set("status", 1);
            charges->set("statusDescription", "Posted");
          }
          relaxed.finish();
        });
      },
      [&] {
        return bench::milliseconds([&] { bareUpdates(bare, keys, "PrintLot = 7, Status = 1"); });
      });
}

// On two copies: what the one archives stays ready in the other.
void measureArchiving(const std::string& database) {
  const std::string other = database + ".bare";
  DatabaseConnection.Execute("UPDATE PatientCharges SET Status = 0");
  DatabaseConnection = Connection();
  // A log that an earlier run left would spoil the copy.
  for (const char* ending : {"", "-wal", "-shm"}) fs::remove(other + ending);
  fs::copy_file(database, other);
  DatabaseConnection = officeConnection(openSqlite(database));
  bench::Bare bare(other);
  const Date until{bench::kFirstDay.day + kArchivedDays};
  std::vector<Key> keys;
  std::int16_t last = 0;
  const std::string read =
      "SELECT * FROM PatientCharges WHERE [Status] <> 3 ORDER BY PatientId, ChargeRealDate DESC";
  const RecordSetRef all = DatabaseConnection.Read(read);
  for (; !all->EOF_(); all->MoveNext()) {
    const Key key{all->code("PatientId"), all->date("ChargeDate"), all->time("ChargeTime")};
    if (key.patient == last && all->date("ChargeRealDate") < until) keys.push_back(key);
    last = key.patient;
  }
  const char* ready = "UPDATE PatientCharges SET Status = 0 WHERE Status = 3";
  bench::compare(
      concat("archiving ", keys.size(), " charges"), kMostTimesBareWrites,
      [&] {
        DatabaseConnection.Execute(ready);
        return bench::milliseconds([&] {
          std::string message;
          if (!archiveCharges(until, message)) throw std::runtime_error(message);
        });
      },
      [&] {
        bare.run(ready);
        return bench::milliseconds([&] {
          bare.run(read);
          bareUpdates(bare, keys, "Status = 3");
        });
      });
  if (DatabaseConnection.Read("SELECT * FROM PatientCharges WHERE Status = 3")->RecordCount() !=
      std::ssize(keys))
    throw std::runtime_error("the two did not archive the same");
}

}  // namespace

int main() {
  services().view = [](const fs::path&) {};
  const std::string database = (bench::folder() / "reports.db").string();
  bench::makeOffice(database, kOffice);
  DatabaseConnection = officeConnection(openSqlite(database));
  measureList();
  measureDetails(database);
  measurePosting(database);
  measureArchiving(database);
  return bench::verdict();
}
