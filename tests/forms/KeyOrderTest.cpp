#include <algorithm>
#include <map>
#include <set>
#include <tuple>

#include "data/BWSQLDoctors.h"
#include "data/BWSQLPatients.h"
#include "data/Literals.h"
#include "data/Schema.h"
#include "data/Tables.h"
#include "tests/forms/Dialogs.h"

namespace bw {
namespace {

// The saved queries that are not called like the table that they have rows for.
constexpr std::pair<std::string_view, std::string_view> kOtherNames[] = {
    {"ChargesDescriptive", "PatientCharges"},
    {"PatientsHistoryDescriptive", "PatientHistory"},
    {"Coverage", "DoctorCoveringDoctors"},
    {"FacilitiesDescriptive", "Facility"},
    {"EMCodesDescriptive", "EvaluationManagement"},
};

// Null when nothing is known of what has that name.
const SchemaTable* tableOf(std::string_view name) {
  for (const auto& [query, table] : kOtherNames)
    if (sameName(query, name)) return &schemaTable(table);
  const SchemaTable* longest = nullptr;
  for (const SchemaTable& table : schemaTables())
    if (sameName(table.name, name.substr(0, table.name.size())) &&
        (longest == nullptr || table.name.size() > longest->name.size()))
      longest = &table;
  return longest;
}

// The word behind the first FROM.
std::string sourceOf(const std::string& statement) {
  const std::string folded = fold(statement);
  const std::size_t from = folded.find(" from ") + 6;
  return statement.substr(from, folded.find(' ', from) - from);
}

bool inKeyOrder(const RowStore& rows, const SchemaTable& table) {
  std::vector<std::vector<std::int64_t>> keys(rows.rowCount());
  for (const SchemaColumn& column : table.key())
    for (std::size_t row = 0; row < keys.size(); ++row)
      keys[row].push_back(rows.columns[rows.indexOf(column.name)].raw(row));
  return std::ranges::is_sorted(keys);
}

// Whatever a list, a combo box or a report is filled with by a statement that asks for no order has
// the order of its key, however the rows came into the file and under each filter.
class KeyOrderTest : public FormsTest {
 protected:
  KeyOrderTest() {
    seedLife();
    for (const char* statement :
         {"INSERT INTO Insurance VALUES (3, 'A', ''), (2, 'B', '')",
          "INSERT INTO Sickness (SicknessCode, Description, SicknessTypeCode) VALUES (4, 'A', 0), "
          "(3, 'B', 0)",
          "INSERT INTO FacilityWards (WardCode, FacilityCode, Description) VALUES (9, 1, 'A'), "
          "(8, 1, 'B')",
          "INSERT INTO DoctorCoveringDoctors VALUES (1, 9), (1, 4)",
          "INSERT INTO PatientHistory VALUES (25000, 4, 0), (25000, 3, 0)",
          "INSERT INTO PatientDoctors VALUES (25000, 9, 1, 1), (25000, 3, 1, 1)",
          "INSERT INTO Patient (PatientId, Names, DateOfBirth, AccountNumber, InsuranceCode) "
          "VALUES "
          "(25009, 'Smith, Ann', #1950/02/28#, 'A1', 1), (25008, '', NULL, '', 1), "
          "(25007, 'Smith, Ann', NULL, '', 1), (25006, 'Smith, Al', NULL, '', 1)"})
      run(statement);
    addCharges();
    takeRecordsOfSmallOffice();
  }

  // Keys fall while dates of care and lots stay or rise.
  static void addCharges() {
    for (int i = 0; i < 60; ++i) {
      const std::string key = concat(25009 - i / 12, ", #2003/06/", 14 - i % 3, "#, #",
                                     clock24(TimeOfDay{5000 - i}), "#");
      run(concat("INSERT INTO PatientCharges VALUES (", key, ", #2003/06/", 15 + i / 40,
                 "#, 1, 1, 1, 2, ", i % 4, ", ", i / 30, ")"));
      for (const int diagnosis : {21 - 10 * (i % 2), 3})
        run(concat("INSERT INTO ChargeDiagnosis VALUES (", key, ", ", diagnosis, ")"));
    }
    for (const char* table : {"ChargeDiagnosis", "ChargeProcedures"})
      run(concat("INSERT INTO ", table, " VALUES (25000, #06/01/2003#, #08:30:00#, 21), ",
                 "(25000, #06/01/2003#, #08:30:00#, 3)"));
  }

  void openViews() {
    std::int16_t view = 0;
    for (const RecordKind& kind : recordKinds()) {
      for (const ViewFilter& filter : kind.filters) openView(view, filter.number);
      openView(view++, 0);
    }
  }
  void openView(std::int16_t view, std::int16_t filter) {
    window().CambiaAVista(view, filter);
    if (view > 0) return;
    for (const char* panel : {"Dates", "Patients", "Insurances", "Doctors"})
      for (const char* option : {"optAll", "optSelected", "optAll"})
        click(frmCharges(), concat(option, panel).c_str());
    click(frmCharges(), "optSelectedLot");
    click(frmCharges(), "optAllLots");
  }

  void openDialogs() {
    const auto leave = [](QWidget&) { press(Qt::Key_Escape); };
    for (const DialogRow& dialog : kDialogs) {
      script.in(dialog.name, leave);
      dialog.open();
    }
    CurrentChargeDate = kSeedDate;
    CurrentChargeTime = kSeedTime;
    script.in("frmEditCharge", leave);
    frmEditCharge().showModal();
  }
};

TEST_F(KeyOrderTest, EveryStatementWithoutAnOrderHasThatOfItsKey) {
  takeStatements();
  openMainWindow();
  openViews();
  openDialogs();
  CoveringDoctorList(1);
  ChargeDiagnosisList(25000, kSeedDate, kSeedTime);  // of reports
  ChargeProceduresList(25000, kSeedDate, kSeedTime);
  std::map<std::string, std::ptrdiff_t> most;  // rows, by what was read
  const Strings issued = takeStatements();
  for (const std::string& statement : std::set<std::string>(issued.begin(), issued.end())) {
    if (fold(statement).find("order by") != std::string::npos) continue;
    const std::string source = sourceOf(statement);
    const RecordSetRef rows = DatabaseConnection.Read(statement);
    const SchemaTable* table = tableOf(source);
    ASSERT_NE(table, nullptr) << statement;
    EXPECT_TRUE(inKeyOrder(*rows->rows(), *table)) << statement;
    std::ptrdiff_t& count = most[fold(source)];
    count = std::max(count, rows->RecordCount());
  }
  for (const std::string& query : schemaQueries()) EXPECT_GT(most[fold(query)], 1) << query;
}

TEST_F(KeyOrderTest, WithoutAPartOfTheKeyTheOthersOrderAndBehindAnOrderTheWholeKey) {
  EXPECT_EQ(rows("SELECT DiagnosisCode FROM ChargeDiagnosis WHERE PatientId = 25000"), "1 3 21");
  const RecordSetRef found =
      DatabaseConnection.Read("SELECT * FROM ChargeDiagnosisDescriptive ORDER BY Description");
  std::vector<std::tuple<std::string, int, Date, TimeOfDay>> keys;
  for (; !found->EOF_(); found->MoveNext())
    keys.emplace_back(found->text("Description"), found->integer("PatientId"),
                      found->date("ChargeDate"), found->time("ChargeTime"));
  EXPECT_EQ(keys.size(), 123);
  EXPECT_TRUE(std::ranges::is_sorted(keys));
}

}  // namespace
}  // namespace bw
