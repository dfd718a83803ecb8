#include "tests/data/DataFixture.h"

#include "core/Principal.h"
#include "data/SavedQueries.h"
#include "tests/records/Rows.h"
#include "tests/server/TestDatabase.h"

namespace bw {

DataTest::DataTest()
    : now{makeDate(2003, 6, 15).value(), makeTime(14, 5, 9).value()}, saved_(services()) {
  resetShared();
  DatabaseConnection = officeConnection(emptyOffice());
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
  EXPECT_EQ(messages_, Strings{});
  EXPECT_FALSE(inTransaction());
}

void DataTest::run(const std::string& statement) { DatabaseConnection.Execute(statement); }

std::string DataTest::rows(const std::string& statement) {
  return told(*DatabaseConnection.Read(statement));
}

std::string DataTest::count(const std::string& table) {
  return rows("SELECT count(*) FROM " + table);
}

namespace {

void insertAll(std::initializer_list<const char*> rows) {
  for (const char* row : rows) DatabaseConnection.Execute(std::string("INSERT INTO ") + row);
}

}  // namespace

// clang-format off
void DataTest::seedOffice() {
  insertAll({
      "Insurance VALUES (1, 'Mutual', 'MU')",
      "DiagnosisFamily VALUES (1, 'Heart')",
      "Diagnosis (DiagnosisCode, Description, DiagnosisFamilyCode) VALUES "
      "(1, 'd1', 1), (2, 'd2', 1), (3, 'd3', 1), (11, 'd11', 1), (21, 'd21', 1)",
      "Procedures (ProcedureCode, Description) VALUES (1, 'p1'), (2, 'p2'), (3, 'p3'), (11, 'p11'), (21, 'p21')",
      "Sickness (SicknessCode, Description, SicknessTypeCode) VALUES (1, 'Pollen', 0), (2, 'Fracture', 1)",
      "Facility VALUES (1, 'General', 1, 'GI', 'GO')",
      "FacilityWards (WardCode, FacilityCode, Description) VALUES (1, 1, 'East')",
      "Doctors VALUES (1, 'Ames', 'A'), (2, 'Bell', 'B'), (3, 'Cole', ''), (4, 'Dunn', '')",
      "EvaluationManagement VALUES (1, 'Visit', 1, 1, 2, 'BV', '99231', 1, 1, 2)",
      "Patient (PatientId, Names, DateOfBirth, AccountNumber, InsuranceCode, InFacilityCode, InWardCode, InDoctorCode) "
      "VALUES (25000, 'Smith, Ann', #1950/02/28#, 'A1', 1, 1, 1, 1), (25001, 'Jones, Bob', #1961/12/31#, 'A2', 1, 0, 0, 0)",
      "PatientHistory VALUES (25000, 1, 0)",
      "PatientDoctors VALUES (25000, 1, 1, 1)",
      "PatientCharges VALUES (25000, #06/01/2003#, #08:30:00#, #06/01/2003#, 1, 1, 1, 2, 0, NULL)",
      "ChargeDiagnosis VALUES (25000, #06/01/2003#, #08:30:00#, 1)",
      "ChargeProcedures VALUES (25000, #06/01/2003#, #08:30:00#, 1)"});
}

void DataTest::seedLife() {
  insertAll({
      "DiagnosisFamily VALUES (2, 'Lungs'), (3, 'Bones and joints')",
      "Diagnosis (DiagnosisCode, Description, DiagnosisFamilyCode, RealDiagnosisCode, BillingDiagnosisCode) VALUES "
      "(31, 'Asthma', 2, 'J45', 'AS'), (32, 'Cough', 2, 'R05', ''), (33, 'Fracture of ankle', 3, 'S82.890A', 'FX1'), "
      "(34, 'Fracture of rib', 3, 'S22.30XA-0007B', 'FX2'), (35, 'Knee pain', 3, '', '')",
      "Procedures (ProcedureCode, Description) VALUES (31, 'Knee X-ray'), (32, 'X-ray of rib'), (33, 'EKG')",
      "Facility VALUES (2, 'Oakhill', 2, 'OI', 'OO'), (3, 'St. Joseph Hospital', 1, 'SJ3', 'SJ-000000000003'), "
      "(4, 'St. Joseph Hospital', 1, '', ''), (5, 'St. Joseph Village', 2, 'SJV', 'SJV'), (6, 'Office, Main St.', 5, '', 'OFF')",
      "FacilityWards (WardCode, FacilityCode, Description) VALUES (2, 3, 'East'), (3, 4, 'East'), (4, 2, 'House A')",
      "Doctors VALUES (5, 'Garcia, Luis', 'GL5'), (6, 'Garcia, Luisa M.', 'G-0000000000006'), (7, 'Garcia-Lopez, Ana', ''), "
      "(8, 'St. John, Ian', 'SJ8'), (9, 'van der Berg, Jo, Jr.', 'VDB'), (10, 'O’Brien, Kate', 'OBK')",
      "DoctorCoveringDoctors VALUES (1, 2), (3, 1), (5, 6), (6, 5)",
      "EvaluationManagement "
      "WITH place(t, p) AS (VALUES (1, 'Hospital'), (2, 'Care home'), (5, 'Office')), "
      "sts(c, s) AS (VALUES (1, ' inpatient'), (2, ' outpatient')), role(a, r) AS (VALUES (1, ' consult, '), (2, ' visit, ')), "
      "level(n, w, q) AS (VALUES (1, 'first, short', 1), (2, 'first, long', 1), (3, 'daily, short', 2), (4, 'daily', 2), "
      "(5, 'daily, long', 2), (6, 'last', 3)) "
      "SELECT 1000 * t + 100 * c + 10 * a + n, p || s || r || w, t, c, a, CASE n WHEN 5 THEN '' ELSE "
      "substr('E' || t || c || a || n || '-0123456789', 1, 3 + (t + c + a + n) % 13) END, '99' || t || c || n, "
      "CASE q WHEN 1 THEN 1 ELSE 0 END, CASE q WHEN 1 THEN 0 ELSE 1 END, q FROM place, sts, role, level",
      "Patient (PatientId, Names, DateOfBirth, AccountNumber, InsuranceCode, InFacilityCode, InWardCode, InDoctorCode) VALUES "
      "(25002, 'Smith, Anna Lee', NULL, '', 1, 0, 0, 0), (25003, 'Smith-Jones, Al', #1950/02/28#, 'A4', 1, 3, 2, 5), "
      "(25004, 'O’Neil, Pat', #1944/07/01#, '', 1, 4, 3, 8), (25005, 'St. Clair, Kay', #1938/01/09#, 'A-00000000000006', 1, 0, 0, 0)",
      "PatientDoctors VALUES (25003, 5, 1, 1), (25003, 8, 2, 1), (25004, 8, 1, 1), (25004, 9, 1, 2)"});
}
// clang-format on

Strings DataTest::takeStatements() { return std::exchange(statements_, {}); }
Strings DataTest::takeMessages() { return std::exchange(messages_, {}); }
void DataTest::closeConnection() { DatabaseConnection = Connection(); }
bool DataTest::inTransaction() { return DatabaseConnection.transactionLevel() != 0; }

}  // namespace bw
