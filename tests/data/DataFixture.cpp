#include "tests/data/DataFixture.h"

#include "core/Principal.h"
#include "data/SavedQueries.h"
#include "data/Schema.h"

namespace bw {

DataTest::DataTest()
    : now{makeDate(2003, 6, 15).value(), makeTime(14, 5, 9).value()}, saved_(services()) {
  resetShared();
  auto engine = openSqlite(":memory:");
  createSchema(*engine);
  DatabaseConnection = officeConnection(std::move(engine));
  DatabaseConnection.tap = [this](std::string_view statement) {
    statements_.emplace_back(statement);
    if (onStatement) onStatement(statement);
  };
  services().now = [this] { return now; };
  services().message = [this](const std::string& text) { messages_.push_back(text); };
}

DataTest::~DataTest() {
  services() = saved_;
  resetShared();
}

void DataTest::TearDown() {
  EXPECT_EQ(messages_, std::vector<std::string>{});
  EXPECT_FALSE(inTransaction());
}

void DataTest::run(const std::string& statement) { DatabaseConnection.Execute(statement); }

std::string DataTest::rows(const std::string& statement) {
  const RecordSetRef found = DatabaseConnection.Read(statement);
  std::string text;
  for (; !found->EOF_(); found->MoveNext()) {
    if (!text.empty()) text += ' ';
    for (std::size_t i = 0; i < found->fieldCount(); ++i) {
      if (i > 0) text += '|';
      text += found->isNull(i) ? "null" : found->text(i);
    }
  }
  return text;
}

std::string DataTest::count(const std::string& table) {
  return rows("SELECT count(*) FROM " + table);
}

void DataTest::seedOffice() {
  for (const char* statement : {
           "INSERT INTO Insurance VALUES (1, 'Mutual', 'MU')",
           "INSERT INTO DiagnosisFamily VALUES (1, 'Heart')",
           "INSERT INTO Diagnosis (DiagnosisCode, Description, DiagnosisFamilyCode) VALUES "
           "(1, 'd1', 1), (2, 'd2', 1), (3, 'd3', 1), (11, 'd11', 1), (21, 'd21', 1)",
           "INSERT INTO Procedures (ProcedureCode, Description) VALUES "
           "(1, 'p1'), (2, 'p2'), (3, 'p3'), (11, 'p11'), (21, 'p21')",
           "INSERT INTO Sickness (SicknessCode, Description, SicknessTypeCode) VALUES "
           "(1, 'Pollen', 0), (2, 'Fracture', 1)",
           "INSERT INTO Facility VALUES (1, 'General', 1, 'GI', 'GO')",
           "INSERT INTO FacilityWards (WardCode, FacilityCode, Description) VALUES (1, 1, 'East')",
           "INSERT INTO Doctors VALUES (1, 'Ames', 'A'), (2, 'Bell', 'B'), (3, 'Cole', ''), "
           "(4, 'Dunn', '')",
           "INSERT INTO EvaluationManagement VALUES (1, 'Visit', 1, 1, 1, 'BV', '99231', 1, 1, 2)",
           "INSERT INTO Patient (PatientId, Names, DateOfBirth, AccountNumber, InsuranceCode, "
           "InFacilityCode, InWardCode, InDoctorCode) VALUES "
           "(25000, 'Smith, Ann', #1950/02/28#, 'A1', 1, 1, 1, 1), "
           "(25001, 'Jones, Bob', #1961/12/31#, 'A2', 1, 0, 0, 0)",
           "INSERT INTO PatientHistory VALUES (25000, 1, 0)",
           "INSERT INTO PatientDoctors VALUES (25000, 1, 1, 1)",
           "INSERT INTO PatientCharges VALUES (25000, #06/01/2003#, #08:30:00#, #06/01/2003#, "
           "1, 1, 1, 2, 0, NULL)",
           "INSERT INTO ChargeDiagnosis VALUES (25000, #06/01/2003#, #08:30:00#, 1)",
           "INSERT INTO ChargeProcedures VALUES (25000, #06/01/2003#, #08:30:00#, 1)",
       })
    run(statement);
}

std::vector<std::string> DataTest::takeStatements() { return std::exchange(statements_, {}); }
std::vector<std::string> DataTest::takeMessages() { return std::exchange(messages_, {}); }
void DataTest::closeConnection() { DatabaseConnection = Connection(); }
bool DataTest::inTransaction() { return DatabaseConnection.transactionLevel() != 0; }

}  // namespace bw
