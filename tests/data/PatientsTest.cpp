#include "data/BWSQLPatients.h"

#include "tests/data/DataFixture.h"

namespace bw {
namespace {

using Strings = std::vector<std::string>;

class PatientsTest : public DataTest {
 protected:
  void SetUp() override {
    seedOffice();
    takeStatements();
  }

  std::string message;
};

TEST_F(PatientsTest, NumbersStartAt25000AndEndAt32767) {
  for (const char* table : {"PatientCharges", "Patient"}) run(std::string("DELETE FROM ") + table);
  EXPECT_EQ(PatientNextId(), 25000);
  const auto add = [](const std::string& id) {
    run("INSERT INTO Patient (PatientId, InsuranceCode) VALUES (" + id + ", 1)");
  };
  add("24999");
  EXPECT_EQ(PatientNextId(), 25000);
  add("32766");
  std::int16_t id = 0;
  EXPECT_EQ(PatientInsert(id, "Last", day(2000, 2, 29), "", 1, message), 0);
  EXPECT_EQ(id, 32767);
  EXPECT_EQ(PatientInsert(id, "Beyond", day(2000, 2, 29), "", 1, message), 1);
  EXPECT_EQ(message, "");
  EXPECT_EQ(id, 32767);
  EXPECT_EQ(takeMessages(), Strings{"Overflow"});
}

TEST_F(PatientsTest, OnlyUpdateAndAdmissionStampTheRow) {
  const auto stampOf = [](const char* id) {
    return rows(std::string("SELECT ZITS FROM Patient WHERE PatientId=") + id);
  };
  std::int16_t id = 0;
  ASSERT_EQ(PatientInsert(id, "Brown, Cy", day(1970, 3, 1), "A3", 1, message), 0);
  EXPECT_EQ(id, 25002);
  EXPECT_EQ(PatientDoctorInsert(id, 2, 2, 3, message), 0);
  EXPECT_EQ(PatientDoctorUpdate(id, 2, 1, 2, message), 0);
  EXPECT_EQ(PatientHistoryInsert(id, 2, 1, message), 0);
  EXPECT_EQ(PatientTransferCharges(id, 25000, message), 0);
  EXPECT_EQ(stampOf("25002"), "null");
  takeStatements();
  ASSERT_EQ(PatientUpdate(id, "Brown, Cyd", day(1970, 1, 3), "A4", 1, message), 0);
  EXPECT_EQ(takeStatements(),
            (Strings{"BEGIN",
                     "UPDATE Patient SET [Names]='Brown, Cyd',  DateOfBirth = #1970/01/03#,  "
                     "AccountNumber='A4',  InsuranceCode=1,  ZITS = #2003/06/15 14:05:09#  "
                     "WHERE PatientId = 25002",
                     "COMMIT"}));
  EXPECT_EQ(stampOf("25002"), "6/15/2003 2:05:09 PM");
  EXPECT_EQ(PatientGet(id)->date("DateOfBirth"), day(1970, 1, 3));
  now.time = {};
  ASSERT_EQ(PatientSetAdmission(id, 1, 1, 2, message), 0);
  EXPECT_EQ(stampOf("25002"), "6/15/2003");
}

TEST_F(PatientsTest, AMissingDateOfBirthIsRefusedByName) {
  const std::string told = "The date of birth is missing: please fill in DOB. Nothing was stored.";
  EXPECT_EQ(PatientUpdate(25000, "Smith, Anna", {}, "", 1, message), 1);
  EXPECT_EQ(std::exchange(message, {}), told);
  EXPECT_NE(takeStatements().at(1).find(" DateOfBirth = ##, "), std::string::npos);
  std::int16_t id = 0;
  EXPECT_EQ(PatientInsert(id, "Brown, Cy", {}, "", 1, message), 1);
  EXPECT_EQ(std::exchange(message, {}), told);
  EXPECT_EQ(id, 0);
  EXPECT_EQ(PatientUpdate(25000, "O'Brien", day(1980, 2, 29), "", 1, message), 1);
  EXPECT_NE(message, told);
  EXPECT_EQ(rows("SELECT Names FROM Patient"), "Smith, Ann Jones, Bob");
}

TEST_F(PatientsTest, OnlyADischargeResetsTheLastChargeDate) {
  const std::string state =
      "SELECT InFacilityCode, InWardCode, InDoctorCode, LastChargeDate FROM Patient "
      "WHERE PatientId=25000";
  ASSERT_EQ(PatientSetAdmission(25000, 1, 0, 2, message), 0);
  EXPECT_EQ(rows(state), "1|0|2|null");
  ASSERT_EQ(PatientSetAdmission(25000, 0, 0, 0, message), 0);
  EXPECT_EQ(rows(state), "0|0|0|1/1/1990");
  EXPECT_EQ(PatientSetAdmission(25000, 77, 0, 0, message), 1);
  EXPECT_EQ(rows(state), "0|0|0|1/1/1990");
}

TEST_F(PatientsTest, DetailRowsTellDoublesAndWhatHasGone) {
  EXPECT_EQ(PatientHistoryInsert(25000, 1, 0, message), 1);
  EXPECT_EQ(message, "This item is in the medical history already.");
  EXPECT_EQ(PatientHistoryInsert(25000, 1, 2, message), 0) << "all three columns are the key";
  EXPECT_EQ(PatientHistoryDelete(25000, 1, 0, message), 0);
  EXPECT_EQ(rows("SELECT SicknessCode, SicknessTypeCode FROM PatientHistory"), "1|2");
  EXPECT_EQ(PatientDoctorInsert(25000, 1, 2, 2, message), 1);
  EXPECT_EQ(PatientDoctorInsert(25000, 9, 1, 1, message), 1);
  EXPECT_EQ(message, kMissingParent);
  EXPECT_EQ(PatientDoctorUpdate(25000, 1, 2, 3, message), 0);
  EXPECT_EQ(rows("SELECT * FROM PatientDoctors"), "25000|1|2|3");
  EXPECT_EQ(PatientDoctorDelete(25000, 1, message), 0);

  EXPECT_EQ(PatientHistoryDelete(25000, 1, 0, message), 2);
  EXPECT_EQ(PatientDelete(25009, message), 2);
  EXPECT_EQ(PatientDoctorDelete(25000, 1, message), 2);
  EXPECT_EQ(message, "U:IMPELIENT");
  EXPECT_EQ(PatientDoctorUpdate(25000, 1, 2, 3, message), 2);
  EXPECT_EQ(PatientSetAdmission(25009, 0, 0, 0, message), 2);
  EXPECT_EQ(PatientUpdate(25009, "", day(1970, 1, 1), "", 1, message), 2);
  EXPECT_EQ(message, "U:IMPACTENT");
}

}  // namespace
}  // namespace bw
