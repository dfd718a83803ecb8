#include "data/Schema.h"

#include "core/Principal.h"
#include "data/SavedQueries.h"
#include "engine/SqliteEngine.h"
#include "tests/data/DataFixture.h"
#include "tests/text/Raised.h"
#include "text/Text.h"

namespace bw {
namespace {

// An office in which doctor 3 attends, 2 refers and visits, and 4 covers; of insurance, facility
// and ward 2 is unused.
class SchemaTest : public DataTest {
 protected:
  void SetUp() override {
    seedOffice();
    for (const char* statement : {"INSERT INTO Insurance VALUES (2, 'Idle', '')",
                                  "INSERT INTO Facility VALUES (2, 'Spare', 1, '', '')",
                                  "INSERT INTO FacilityWards VALUES (2, 2, 'Spare', 0)",
                                  "INSERT INTO DoctorCoveringDoctors VALUES (1, 2), (4, 3), (3, 4)",
                                  "UPDATE PatientDoctors SET DoctorCode=2",
                                  "UPDATE Patient SET InDoctorCode=3 WHERE PatientId=25000"})
      run(statement);
  }

  static std::string refusal(const std::string& statement) {
    return refusalOf([&] { run(statement); });
  }
};

// What holds of files alone.
class SchemaOfFilesTest : public SchemaTest {
 protected:
  void SetUp() override {
    auto engine = openSqlite(":memory:");
    createSchema(*engine);
    DatabaseConnection = officeConnection(std::move(engine));
    SchemaTest::SetUp();
  }
};

TEST_F(SchemaTest, RefusesValuesThatNoFieldCanHold) {
  const std::string patient = "UPDATE Patient SET ";
  const std::string charge =
      "INSERT INTO PatientCharges (PatientId, ChargeDate, ChargeTime, ChargeRealDate, "
      "FacilityCode, EMCode, DoctorCode, ReferDoctorCode, Status) VALUES ";
  const std::string tooLarge =
      " is out of range: the number is too large or too small to be stored.";
  const std::string astray = "This record cannot be stored: its ";
  // clang-format off
  const std::pair<std::string, std::string> cases[] = {
      {patient + "Names='" + std::string(256, 'x') + "'", "Names is too long: at most 255 characters can be stored."},
      {patient + "InsuranceCode=32768", "InsuranceCode" + tooLarge},
      {patient + "InsuranceCode=NULL", "A value is missing: Patient.InsuranceCode."},
      {"UPDATE PatientCharges SET PrintLot=2147483648", "PrintLot" + tooLarge},
      {charge + "(25001, '2003-06-15', '24:00:00', '2003-06-15', 1, 1, 1, 1, 0)", "ChargeTime is not a time that can be stored."},
      {charge + "(25000, '2003-06-01', '08:30:00', '2003-06-15', 1, 1, 1, 1, 0)", kDuplicateKey},
      {charge + "(0, '2003-06-15', '14:05:10', '2003-06-15', 1, 1, 1, 1, 0)", kMissingParent},
      {charge + "(25000, '2003-06-15', '14:05:10', '2003-06-15', 9, 1, 1, 1, 0)", kMissingParent},
      {"INSERT INTO ChargeDiagnosis VALUES (25000, '2003-06-15', '14:05:10', 1)", kMissingParent},
      {patient + "InsuranceCode=9", kMissingParent},
      {patient + "InFacilityCode=9", astray + "facility does not exist."},
      {patient + "InWardCode=9", astray + "ward does not exist."},
      {"INSERT INTO Patient (PatientId, InsuranceCode, InDoctorCode) VALUES (9, 1, 9)", astray + "doctor does not exist."},
      {"INSERT INTO Doctors VALUES (0, 'None', '')", "DoctorCode" + tooLarge},
      {patient + "InFacilityCode=0, InWardCode=0, InDoctorCode=0", ""},
      {patient + "Names='" + std::string(255, 'x') + "'", ""},
      {"UPDATE PatientCharges SET PrintLot=2147483647, Status=3", ""}};
  // clang-format on
  for (const auto& [statement, sentence] : cases)
    EXPECT_EQ(refusal(statement), sentence) << statement;
}

// A server refuses them by the types of its columns, or reads them.
TEST_F(SchemaOfFilesTest, RefusesWhatIsWrittenInAnotherWay) {
  for (const auto& [value, sentence] :
       {std::pair{"DateOfBirth='2003-02-31'", "DateOfBirth is not a date that can be stored."},
        std::pair{"DateOfBirth='20030615'", "DateOfBirth is not a date that can be stored."},
        std::pair{"ZITS='2003-06-15'", "ZITS is not a date and time that can be stored."},
        std::pair{"InsuranceCode='abc'",
                  "InsuranceCode is out of range: the number is too large or too small to be "
                  "stored."}})
    EXPECT_EQ(refusal(concat("UPDATE Patient SET ", value)), sentence) << value;
}

TEST_F(SchemaTest, RefusesTheDeletionOfARecordInUse) {
  const auto used = [](const std::string& by) {
    return "This record cannot be deleted: " + by + " still use it.";
  };
  // clang-format off
  const std::pair<const char*, std::string> cases[] = {
      {"Insurance WHERE InsuranceCode=1", used("patients")}, {"DiagnosisFamily", used("diagnoses")},
      {"Diagnosis WHERE DiagnosisCode=1", used("charges")}, {"Procedures WHERE ProcedureCode=1", used("charges")},
      {"EvaluationManagement", used("charges")}, {"Facility WHERE FacilityCode=1", used("charges")},
      {"FacilityWards WHERE WardCode=1", used("patients")}, {"Doctors WHERE DoctorCode=1", used("charges")},
      {"Doctors WHERE DoctorCode=2", used("charges")}, {"Doctors WHERE DoctorCode=3", used("patients")},
      {"Sickness WHERE SicknessCode=1", used("patients")}, {"Patient WHERE PatientId=25000", used("charges")},
      {"FacilityTypes WHERE FacilityTypeCode=1", "This record cannot be deleted or changed: other records use it."},
      {"Insurance WHERE InsuranceCode=2", ""}, {"FacilityTypes WHERE FacilityTypeCode=5", ""}};
  // clang-format on
  for (const auto& [record, sentence] : cases)
    EXPECT_EQ(refusal(concat("DELETE FROM ", record)), sentence) << record;
  run("DELETE FROM PatientCharges");
  EXPECT_EQ(refusal("DELETE FROM Facility WHERE FacilityCode=1"), used("patients"));
  EXPECT_EQ(refusal("DELETE FROM Doctors WHERE DoctorCode=2"), used("patients"));  // visits
}

TEST_F(SchemaTest, DetailsFollowTheirRecord) {
  run("UPDATE PatientCharges SET PatientId=25001 WHERE PatientId=25000");
  EXPECT_EQ(rows("SELECT PatientId FROM ChargeDiagnosis"), "25001");
  EXPECT_EQ(rows("SELECT PatientId FROM ChargeProcedures"), "25001");
  for (const char* record : {"PatientCharges", "Patient WHERE PatientId=25000",
                             "Doctors WHERE DoctorCode=4", "Facility WHERE FacilityCode=2"})
    run(concat("DELETE FROM ", record));
  for (const char* table :
       {"ChargeDiagnosis", "ChargeProcedures", "PatientHistory", "PatientDoctors"})
    EXPECT_EQ(count(table), "0") << table;
  EXPECT_EQ(rows("SELECT CoveringDoctorCode FROM DoctorCoveringDoctors"), "2");
  EXPECT_EQ(rows("SELECT WardCode FROM FacilityWards"), "1");
}

// Of the patients whom another attends now: most visits, the lower of equals, none.
TEST_F(SchemaTest, ADoctorsAttentionTypeIsThatOfMostVisitsToOthersPatients) {
  run("DELETE FROM PatientDoctors");
  run("INSERT INTO Patient (PatientId, InsuranceCode) VALUES (20, 1), (19, 1), (18, 1)");
  run("INSERT INTO PatientDoctors VALUES (18, 1, 2, 1), (19, 1, 2, 1), (20, 1, 1, 1), "
      "(18, 3, 2, 1), (19, 3, 1, 1)");
  const auto types = [] { return rows("SELECT AttentionTypeCode FROM DoctorsDescriptive"); };
  EXPECT_EQ(types(), "0 0 0 0");
  run("INSERT INTO PatientDoctors VALUES (20, 2, 1, 1), (19, 2, 1, 1), (18, 2, 2, 1)");
  run("UPDATE Patient SET InFacilityCode=1, InWardCode=1, InDoctorCode=CASE PatientId WHEN 18 THEN "
      "4 ELSE 2 END WHERE PatientId BETWEEN 18 AND 20");
  EXPECT_EQ(types(), "2 2 1 0");
}

// Offices keep the files that they have: a table, index or trigger that a new file makes otherwise
// calls for a way to bring those files up to it.
TEST_F(SchemaOfFilesTest, MakesTablesAsTheyAreInFilesMadeBefore) {
  const std::string made = rows(
      "SELECT coalesce(sql, '') FROM sqlite_schema WHERE type <> 'view' AND name NOT LIKE "
      "'sqlite%' ORDER BY name");
  std::uint64_t sum = 0xcbf29ce484222325U;
  for (const char c : made)
    if (c != ' ' && c != '\n') sum = (sum ^ static_cast<unsigned char>(c)) * 0x100000001b3U;
  EXPECT_EQ(sum, 0xb1e25bb5ea928de9U);
}

}  // namespace
}  // namespace bw
