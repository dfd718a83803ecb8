// The patients: their view on a grown office, the search for doubles, a merge, the editor.

#include <QApplication>
#include <cstdlib>
#include <stdexcept>

#include "bench/Bare.h"
#include "bench/EditorWatch.h"
#include "bench/Forms.h"
#include "bench/Measure.h"
#include "bench/Office.h"
#include "core/Principal.h"
#include "data/BWSQLPatients.h"
#include "data/SavedQueries.h"
#include "engine/SqliteEngine.h"
#include "patients/frmEditPatient.h"
#include "patients/frmPatients.h"
#include "shell/frmMain.h"
#include "text/Text.h"

namespace {

using namespace bw;

constexpr double kMostView = 60;         // ms
constexpr double kMostDuplicates = 120;  // ms
constexpr double kMostTimesBareRead = 1.5;
constexpr double kMostTimesBareMerge = 1.2;
constexpr double kMostEditor = 40;  // ms

constexpr int kMergedCharges = 5000;

struct FilterRow {
  std::int16_t number;
  const char* name;
  const char* statement;
};
constexpr FilterRow kDuplicates[] = {
    {15, "doubles by date of birth", "SELECT * FROM PatientsDescriptiveDupDOB"},
    {16, "doubles by name", "SELECT * FROM PatientsDescriptiveDupName"},
    {17, "doubles by both", "SELECT * FROM PatientsDescriptiveDupDOBName"},
    {18, "doubles by account", "SELECT * FROM PatientsDescriptiveDupAccount"},
};

// Patient 1 with charges of two or three diagnoses and one procedure each, and a long history.
void addPatientOfMerge() {
  DatabaseConnection.BeginTrans();
  const auto run = [](const std::string& text) { DatabaseConnection.Execute(text); };
  run("INSERT INTO Procedures (ProcedureCode, Description) VALUES (1, 'Procedure')");
  run(bench::numbersTo(kMergedCharges) +
      "INSERT INTO PatientCharges SELECT 1, date('2003-06-15', (i / 400) || ' days'), "
      "time(i * 13 % 86400, 'unixepoch'), '2003-06-15', 1, 1, 1, 1, 1, 1 FROM n");
  run("INSERT INTO ChargeDiagnosis SELECT PatientId, ChargeDate, ChargeTime, 1 FROM "
      "PatientCharges");
  run("INSERT INTO ChargeDiagnosis SELECT PatientId, ChargeDate, ChargeTime, 2 FROM "
      "PatientCharges");
  run("INSERT INTO ChargeDiagnosis SELECT PatientId, ChargeDate, ChargeTime, 3 FROM PatientCharges "
      "WHERE rowid <= 2000");
  run("INSERT INTO ChargeProcedures SELECT PatientId, ChargeDate, ChargeTime, 1 FROM "
      "PatientCharges");
  for (int i = 1; i <= 300; ++i)
    run(concat("INSERT OR IGNORE INTO Insurance VALUES (", i, ", 'Insurance ", i, "', '')"));
  for (int i = 1; i <= 170; ++i) {
    run(concat("INSERT INTO Sickness (SicknessCode, Description, SicknessTypeCode) VALUES (", i,
               ", 'Item ", i, "', ", i % 3, ")"));
    run(concat("INSERT INTO PatientHistory VALUES (1, ", i, ", ", i % 3, ")"));
  }
  DatabaseConnection.CommitTrans();
}

double timeView(std::int16_t filter) {
  MainWindow->FiltroActualNumero = filter;
  return bench::milliseconds([] {
    frmPatients().Refresca();
    QApplication::processEvents();
  });
}

void measureView(bench::Bare& bare) {
  frmPatients().resize(1100, 600);
  MainWindow->show();
  frmPatients().show();
  timeView(0);
  bench::report("view of 32,000 patients, ms", "to the paint",
                bench::median([] { return timeView(0); }), kMostView);
  for (const FilterRow& row : kDuplicates) {
    bench::report(row.name, "ms", bench::median([&] { return timeView(row.number); }),
                  kMostDuplicates);
    bench::compare(
        std::string(row.name) + " against the engine", kMostTimesBareRead,
        [&] { return timeView(row.number); },
        [&] { return bench::milliseconds([&] { bare.run(row.statement); }); });
  }
}

void measureMerge(bench::Bare& bare) {
  const auto there = [] {
    std::string message;
    if (PatientTransferCharges(2, 1, message) != 0) throw std::runtime_error(message);
  };
  const auto back = [&] {
    bare.run("BEGIN");
    bare.run("UPDATE PatientCharges SET PatientId=1 WHERE PatientId = 2");
    bare.run("COMMIT");
  };
  // In turns: what one moves the other moves back.
  double ours = 0;
  bench::compare(
      "merge of 5,000 charges", kMostTimesBareMerge, [&] { return ours; },
      [&] {
        ours = bench::processorMilliseconds(there);
        return bench::processorMilliseconds(back);
      });
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  bench::setUpForms();
  const std::string path = (bench::folder() / "bench-patients.db").string();
  bench::makeOffice(path, {32000, 0});
  DatabaseConnection = officeConnection(openSqlite(path));
  addPatientOfMerge();
  bench::Bare bare(path);

  frmMain window;
  measureView(bare);
  measureMerge(bare);
  CurrentPatientId = 1;
  bench::EditorWatch watch("frmEditPatient", frmEditPatient);
  application.installEventFilter(&watch);
  watch.load();  // the first dialog of a process pays for fonts and styles
  bench::report("patient editor, 300 insurances, 170 history items", "ms",
                bench::median([&] { return watch.load(); }), kMostEditor);
  return bench::verdict();
}
