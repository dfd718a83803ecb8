#include "data/Schema.h"

#include <gtest/gtest.h>

#include <array>

#include "engine/Rewriter.h"
#include "engine/SqliteEngine.h"
#include "tests/server/TestDatabase.h"
#include "text/RuntimeError.h"

namespace bw {
namespace {

// One row in every catalogue; patient 7 with a charge, a history item and a visiting doctor.
constexpr std::array kRows{
    "INSERT INTO Insurance VALUES (1, 'Mutual', 'IN1'), (2, 'Idle', '')",
    "INSERT INTO DiagnosisFamily VALUES (1, 'Heart')",
    "INSERT INTO Diagnosis VALUES (1, 'Angina', 1, 'R1', 'B1', 0)",
    "INSERT INTO Procedures VALUES (1, 'Tracing', 'R1', 'B1', 0)",
    "INSERT INTO EvaluationManagement VALUES (1, 'Visit', 1, 1, 2, 'B1', 'R1', 1, 0, 1)",
    "INSERT INTO Facility VALUES (1, 'General', 1, 'B1', 'O1'), (2, 'Spare', 1, '', '')",
    "INSERT INTO FacilityWards VALUES (1, 1, 'East', 0), (2, 2, 'Spare', 0)",
    "INSERT INTO Doctors VALUES (1, 'One', 'D1'), (2, 'Two', 'D2'), (3, 'Three', ''), (4, 'Four', "
    "'')",
    "INSERT INTO DoctorCoveringDoctors VALUES (1, 2), (4, 3), (3, 4)",
    "INSERT INTO Sickness VALUES (1, 'Latex', 0, 0)",
    "INSERT INTO Patient (PatientId, Names, DateOfBirth, AccountNumber, InsuranceCode) "
    "VALUES (7, 'Ada', '1950-01-31', 'A7', 1), (8, 'Bea', '1951-02-01', 'A8', 1)",
    "UPDATE Patient SET InFacilityCode=1, InWardCode=1, InDoctorCode=3 WHERE PatientId=8",
    "INSERT INTO PatientHistory VALUES (7, 1, 0)",
    "INSERT INTO PatientDoctors VALUES (7, 2, 1, 1)",
    "INSERT INTO PatientCharges VALUES (7, '2003-06-15', '14:05:09', '2003-06-14', 1, 1, 1, 2, 0, "
    "NULL)",
    "INSERT INTO ChargeDiagnosis VALUES (7, '2003-06-15', '14:05:09', 1)",
    "INSERT INTO ChargeProcedures VALUES (7, '2003-06-15', '14:05:09', 1)",
};

class SchemaTest : public testing::Test {
 protected:
  SchemaTest() : SchemaTest(emptyOffice()) {}
  explicit SchemaTest(std::unique_ptr<Engine> engine) : engine_(std::move(engine)) {}

  void fill() {
    for (const char* row : kRows) engine_->execute(row);
  }
  // The sentence of the refusal, "" when the statement passed.
  std::string refusal(const std::string& statement) {
    try {
      engine_->execute(statement);
      return "";
    } catch (const RuntimeError& error) {
      return error.text();
    }
  }
  // The first column's values, each closed by a blank.
  std::string firstColumn(const std::string& statement) {
    const std::shared_ptr<RowStore> rows =
        engine_->read(rewriteStatement(statement, engine_->dialect()));
    std::string list;
    for (std::size_t row = 0; row < rows->rowCount(); ++row)
      list += textOrEmpty(rows->columns.front().value(row)) + " ";
    return list;
  }

  std::unique_ptr<Engine> engine_;
};

std::unique_ptr<Engine> emptyFile() {
  auto engine = openSqlite(":memory:");
  createSchema(*engine);
  return engine;
}

// What holds of files alone.
class SchemaOfFilesTest : public SchemaTest {
 protected:
  SchemaOfFilesTest() : SchemaTest(emptyFile()) {}
};

TEST_F(SchemaTest, RefusesValuesThatNoFieldCanHold) {
  fill();
  const std::string patient = "UPDATE Patient SET ";
  const std::string charge =
      "INSERT INTO PatientCharges (PatientId, ChargeDate, ChargeTime, ChargeRealDate, "
      "FacilityCode, EMCode, DoctorCode, ReferDoctorCode, Status) VALUES ";
  const std::string tooLarge =
      " is out of range: the number is too large or too small to be stored.";
  const std::string noParent =
      "The record refers to another record that does not exist (any more).";
  struct Case {
    std::string statement, sentence;
  };
  const std::array cases{
      Case{patient + "Names='" + std::string(256, 'x') + "'",
           "Names is too long: at most 255 characters can be stored."},
      Case{patient + "InsuranceCode=32768", "InsuranceCode" + tooLarge},
      Case{patient + "InsuranceCode=NULL", "A value is missing: Patient.InsuranceCode."},
      Case{"UPDATE PatientCharges SET PrintLot=2147483648", "PrintLot" + tooLarge},
      Case{charge + "(7, '2003-06-15', '24:00:00', '2003-06-15', 1, 1, 1, 1, 0)",
           "ChargeTime is not a time that can be stored."},
      Case{charge + "(7, '2003-06-15', '14:05:09', '2003-06-15', 1, 1, 1, 1, 0)",
           "There is a record with the same key already."},
      Case{charge + "(0, '2003-06-15', '14:05:10', '2003-06-15', 1, 1, 1, 1, 0)", noParent},
      Case{charge + "(7, '2003-06-15', '14:05:10', '2003-06-15', 9, 1, 1, 1, 0)", noParent},
      Case{"INSERT INTO ChargeDiagnosis VALUES (7, '2003-06-15', '14:05:10', 1)", noParent},
      Case{patient + "InsuranceCode=9", noParent},
      Case{patient + "InFacilityCode=9",
           "This record cannot be stored: its facility does not exist."},
      Case{patient + "InWardCode=9", "This record cannot be stored: its ward does not exist."},
      Case{"INSERT INTO Patient (PatientId, InsuranceCode, InDoctorCode) VALUES (9, 1, 9)",
           "This record cannot be stored: its doctor does not exist."},
      Case{"INSERT INTO Doctors VALUES (0, 'None', '')", "DoctorCode" + tooLarge},
      Case{patient + "InFacilityCode=0, InWardCode=0, InDoctorCode=0", ""},
      Case{patient + "Names='" + std::string(255, 'x') + "'", ""},
      Case{"UPDATE PatientCharges SET PrintLot=2147483647, Status=3", ""},
  };
  for (const auto& [statement, sentence] : cases)
    EXPECT_EQ(refusal(statement), sentence) << statement;
}

// A server refuses them by the types of its columns, or reads them.
TEST_F(SchemaOfFilesTest, RefusesWhatIsWrittenInAnotherWay) {
  fill();
  for (const auto& [value, sentence] :
       {std::pair{"DateOfBirth='2003-02-31'", "DateOfBirth is not a date that can be stored."},
        std::pair{"DateOfBirth='20030615'", "DateOfBirth is not a date that can be stored."},
        std::pair{"ZITS='2003-06-15'", "ZITS is not a date and time that can be stored."},
        std::pair{"InsuranceCode='abc'",
                  "InsuranceCode is out of range: the number is too large or too small to be "
                  "stored."}})
    EXPECT_EQ(refusal(std::string("UPDATE Patient SET ") + value), sentence) << value;
}

TEST_F(SchemaTest, RefusesTheDeletionOfARecordInUse) {
  fill();
  const auto used = [](const std::string& by) {
    return "This record cannot be deleted: " + by + " still use it.";
  };
  struct Case {
    const char* record;
    std::string sentence;
  };
  const std::array cases{
      Case{"Insurance WHERE InsuranceCode=1", used("patients")},
      Case{"DiagnosisFamily", used("diagnoses")},
      Case{"Diagnosis", used("charges")},
      Case{"Procedures", used("charges")},
      Case{"EvaluationManagement", used("charges")},
      Case{"Facility WHERE FacilityCode=1", used("charges")},
      Case{"FacilityWards WHERE WardCode=1", used("patients")},
      Case{"Doctors WHERE DoctorCode=1", used("charges")},   // renders
      Case{"Doctors WHERE DoctorCode=2", used("charges")},   // refers
      Case{"Doctors WHERE DoctorCode=3", used("patients")},  // attends
      Case{"Sickness", used("patients")},
      Case{"Patient WHERE PatientId=7", used("charges")},
      Case{"FacilityTypes WHERE FacilityTypeCode=1",
           "This record cannot be deleted or changed: other records use it."},
      Case{"Insurance WHERE InsuranceCode=2", ""},
      Case{"FacilityTypes WHERE FacilityTypeCode=5", ""},
  };
  for (const auto& [record, sentence] : cases)
    EXPECT_EQ(refusal(std::string("DELETE FROM ") + record), sentence) << record;
  engine_->execute("DELETE FROM PatientCharges");
  EXPECT_EQ(refusal("DELETE FROM Facility WHERE FacilityCode=1"), used("patients"));
  EXPECT_EQ(refusal("DELETE FROM Doctors WHERE DoctorCode=2"), used("patients"));  // visits
}

TEST_F(SchemaTest, DetailsFollowTheirRecord) {
  fill();
  engine_->execute("UPDATE PatientCharges SET PatientId=8 WHERE PatientId=7");
  EXPECT_EQ(firstColumn("SELECT PatientId FROM ChargeDiagnosis"), "8 ");
  EXPECT_EQ(firstColumn("SELECT PatientId FROM ChargeProcedures"), "8 ");
  engine_->execute("DELETE FROM PatientCharges WHERE PatientId=8");
  engine_->execute("DELETE FROM Patient WHERE PatientId=7");
  engine_->execute("DELETE FROM Doctors WHERE DoctorCode=4");
  engine_->execute("DELETE FROM Facility WHERE FacilityCode=2");
  for (const char* table :
       {"ChargeDiagnosis", "ChargeProcedures", "PatientHistory", "PatientDoctors"})
    EXPECT_EQ(firstColumn(std::string("SELECT * FROM ") + table), "") << table;
  EXPECT_EQ(firstColumn("SELECT CoveringDoctorCode FROM DoctorCoveringDoctors"), "2 ");
  EXPECT_EQ(firstColumn("SELECT WardCode FROM FacilityWards"), "1 ");
}

// Of the patients whom another attends now: most visits, the lower of equals, none.
TEST_F(SchemaTest, ADoctorsAttentionTypeIsThatOfMostVisitsToOthersPatients) {
  fill();
  for (const char* row :
       {"INSERT INTO Patient (PatientId, InsuranceCode) VALUES (20, 1), (19, 1), (18, 1)",
        "INSERT INTO PatientDoctors VALUES (18, 1, 2, 1), (19, 1, 2, 1), (20, 1, 1, 1), "
        "(18, 3, 2, 1), (19, 3, 1, 1)"})
    engine_->execute(row);
  const auto types = [this] {
    return firstColumn("SELECT AttentionTypeCode FROM DoctorsDescriptive");
  };
  EXPECT_EQ(types(), "0 0 0 0 ");
  engine_->execute("INSERT INTO PatientDoctors VALUES (20, 2, 1, 1), (19, 2, 1, 1), (18, 2, 2, 1)");
  engine_->execute(
      "UPDATE Patient SET InFacilityCode=1, InWardCode=1, InDoctorCode=CASE PatientId WHEN 18 THEN "
      "4 ELSE 2 END WHERE PatientId BETWEEN 18 AND 20");
  EXPECT_EQ(types(), "2 2 1 0 ");
}

// Offices keep the files that they have: a table, index or trigger that a new file makes otherwise
// calls for a way to bring those files up to it.
TEST_F(SchemaOfFilesTest, MakesTablesAsTheyAreInFilesMadeBefore) {
  const std::shared_ptr<RowStore> made = engine_->read(
      "SELECT sql FROM sqlite_schema WHERE type <> 'view' AND name NOT LIKE 'sqlite%' "
      "ORDER BY name");
  std::uint64_t sum = 0xcbf29ce484222325U;
  for (std::size_t row = 0; row < made->rowCount(); ++row)
    for (const char c : textOrEmpty(made->columns.front().value(row)))
      if (c != ' ' && c != '\n') sum = (sum ^ static_cast<unsigned char>(c)) * 0x100000001b3U;
  EXPECT_EQ(sum, 0xb1e25bb5ea928de9U);
}

}  // namespace
}  // namespace bw
