#include "tests/crash/Office.h"

#include "core/Principal.h"
#include "data/BWSQLCharges.h"
#include "data/BWSQLPatients.h"
#include "engine/RelaxedSync.h"
#include "tests/data/Routines.h"
#include "text/RuntimeError.h"
#include "tools/Commands.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

using Code = std::int16_t;

Code codeOf(int n) { return static_cast<Code>(3 + n % 20); }
Code patientOf(int n) { return static_cast<Code>(25001 + n % 20); }
std::string textOf(int n) { return concat("text ", n); }

// As posting and archiving do it: what is stored is not told as lost.
int postInLoop(int n, std::string& message) {
  RelaxedSync relaxed(DatabaseConnection);
  const int result = ChargeSetPrintLot(25000, kSeedDate, kSeedTime, n + 1, 1, message);
  try {
    relaxed.finish();
  } catch (const RuntimeError& error) {
    if (!error.text().starts_with("Everything that was done is stored, but")) return 99;
  }
  return result;
}

template <class Number>
Number& nowhere() {
  static Number number;
  return number;
}
Code& newCode() { return nowhere<Code>(); }

// clang-format off
const Routine kRoutines[] = {
    {"DoctorInsert", [](int n, auto& m) { return DoctorInsert(newCode(), textOf(n), "B", ";1;2;3;", m); }},
    {"DoctorUpdate", [](int n, auto& m) { return DoctorUpdate(1, textOf(n), "B", n % 2 == 0 ? ";2;3;" : ";4;", m); }},
    {"CoveringDoctorInsert", [](int n, auto& m) { return CoveringDoctorInsert(2, static_cast<Code>(3 + n % 20), m); }},
    {"CoveringDoctorDelete", [](int n, auto& m) { return CoveringDoctorDelete(2, static_cast<Code>(1 + n % 20), m); }},
    {"PatientInsert", [](int n, auto& m) { return PatientInsert(newCode(), textOf(n), kSeedDate, concat("A", n + 9), 1, m); }},
    {"PatientUpdate", [](int n, auto& m) { return PatientUpdate(25000, textOf(n), kSeedDate, "A1", 1, m); }},
    {"PatientDelete", [](int n, auto& m) { return PatientDelete(patientOf(n), m); }},
    {"PatientHistoryInsert", [](int n, auto& m) { return PatientHistoryInsert(patientOf(n), 1, 0, m); }},
    {"PatientHistoryDelete", [](int n, auto& m) { return PatientHistoryDelete(n % 2 == 0 ? 25000 : patientOf(n), 1, 0, m); }},
    {"PatientSetAdmission", [](int n, auto& m) { return PatientSetAdmission(patientOf(n), 1, 1, 1, m); }},
    {"PatientDoctorInsert", [](int n, auto& m) { return PatientDoctorInsert(patientOf(n), 1, 1, 1, m); }},
    {"PatientDoctorUpdate", [](int n, auto& m) { return PatientDoctorUpdate(25000, 1, static_cast<Code>(2 - n % 2), 1, m); }},
    {"PatientDoctorDelete", [](int n, auto& m) { return PatientDoctorDelete(n % 2 == 0 ? 25000 : patientOf(n), 1, m); }},
    {"PatientTransferCharges", [](int n, auto& m) { return PatientTransferCharges(patientOf(n), 25000, m); }},
    {"ChargeInsert", [](int n, auto& m) { return ChargeInsert(25000, nowhere<Date>(), nowhere<TimeOfDay>(), kSeedDate, 1, 1, 2, 1, ";1;2;", concat(";", 1 + n % 3, ";"), 0, m); }},
    {"ChargeUpdate", [](int n, auto& m) { return ChargeUpdate(25000, kSeedDate, kSeedTime, Date{kSeedDate.day + n}, 1, 1, 2, 1, n % 2 == 0 ? ";2;3;" : ";1;", ";2;", 0, m); }},
    {"ChargeDelete", [](int, auto& m) { return ChargeDelete(25000, kSeedDate, kSeedTime, m); }},
    {"ChargeDiagnosisInsert", [](int, auto& m) { return ChargeDiagnosisInsert(25000, kSeedDate, kSeedTime, 2, m); }},
    {"ChargeDiagnosisDelete", [](int, auto& m) { return ChargeDiagnosisDelete(25000, kSeedDate, kSeedTime, 1, m); }},
    {"ChargeProcedureInsert", [](int, auto& m) { return ChargeProcedureInsert(25000, kSeedDate, kSeedTime, 2, m); }},
    {"ChargeProcedureDelete", [](int, auto& m) { return ChargeProcedureDelete(25000, kSeedDate, kSeedTime, 1, m); }},
    {"ChargeSetPrintLot", [](int n, auto& m) { return ChargeSetPrintLot(25000, kSeedDate, kSeedTime, n + 1, 1, m); }},
    {"posting in a loop", postInLoop},
};
// clang-format on

// Records that no other uses, besides those of seedOffice().
constexpr const char* kUnused[] = {
    "INSERT INTO Insurance VALUES (3, 'unused', '')",
    "INSERT INTO DiagnosisFamily VALUES (3, 'unused')",
    "INSERT INTO Sickness (SicknessCode, Description, SicknessTypeCode) VALUES (3, 'unused', 0)",
    "INSERT INTO Facility VALUES (3, 'unused', 1, '', '')",
    "INSERT INTO FacilityWards (WardCode, FacilityCode, Description) VALUES (3, 1, 'unused')",
    "INSERT INTO EvaluationManagement VALUES (3, 'unused', 1, 1, 2, '', '', 1, 1, 2)",
    "INSERT INTO DoctorCoveringDoctors VALUES (2, 1)"};

std::string officeAtFirst;

}  // namespace

const std::vector<Routine>& writingRoutines() {
  static const std::vector<Routine> routines = [] {
    std::vector<Routine> all(std::begin(kRoutines), std::end(kRoutines));
    for (const Catalogue& one : kCatalogues) {
      const auto add = [&](const char* what, auto call) {
        all.push_back({concat(one.table, what), call});
      };
      add(" insert", [&](int n, auto& m) { return one.insert(newCode(), textOf(n), m); });
      add(" update", [&](int n, auto& m) { return one.update(1, textOf(n), m); });
      add(" delete", [&](int n, auto& m) { return one.remove(codeOf(n), m); });
    }
    return all;
  }();
  return routines;
}

void CrashTest::SetUpTestSuite() {
  const TemporaryFolder folder;
  std::ostringstream out;
  createDatabase(folder / "office.db", out);
  connect(folder / "office.db");
  seedOffice();
  for (const char* statement : kUnused) run(statement);
  closeConnection();
  officeAtFirst = folder.read("office.db");
}

void CrashTest::makeAnew(const std::string& file) {
  closeConnection();
  for (const char* part : {"-wal", "-shm"}) fs::remove(file + part);
  std::ofstream(file, std::ios::binary) << officeAtFirst;
}

void CrashTest::connect(const std::string& file) {
  DatabaseConnection = Connection(openSqlite(file));
}

int CrashTest::call(const Routine& routine, int n) {
  services().now = [n] { return DateTime{kSeedDate, {n % 80'000}}; };
  const int result = routine.call(n, message_);
  takeMessages();
  takeStatements();
  return result;
}

std::string CrashTest::foundAtNextStart() const {
  const std::string found = folder_ / "found.db";
  for (const char* part : {"", "-wal"}) {
    fs::remove(found + part);
    if (fs::exists(file_ + part)) fs::copy_file(file_ + part, found + part);
  }
  return contentOf(found);
}

}  // namespace bw
