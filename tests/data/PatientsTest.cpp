#include "data/BWSQLPatients.h"

#include "tests/data/Routines.h"

namespace bw {
namespace {

class PatientsTest : public RoutineTest {};

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
  EXPECT_EQ(told(PatientInsert(id, "Beyond", day(2000, 2, 29), "", 1, message)), "1");
  EXPECT_EQ(id, 32767);
  EXPECT_EQ(takeMessages(), Strings{"Overflow"});
}

TEST_F(PatientsTest, OnlyUpdateAndAdmissionStampTheRow) {
  const auto stamp = [] { return rows("SELECT ZITS FROM Patient WHERE PatientId=25002"); };
  std::int16_t id = 0;
  ASSERT_EQ(PatientInsert(id, "Brown, Cy", day(1970, 3, 1), "A3", 1, message), 0);
  EXPECT_EQ(id, 25002);
  EXPECT_EQ(PatientDoctorInsert(id, 2, 2, 3, message), 0);
  EXPECT_EQ(PatientDoctorUpdate(id, 2, 1, 2, message), 0);
  EXPECT_EQ(PatientHistoryInsert(id, 2, 1, message), 0);
  EXPECT_EQ(PatientTransferCharges(id, 25000, message), 0);
  EXPECT_EQ(stamp(), "null");
  ASSERT_EQ(PatientUpdate(id, "Brown, Cyd", day(1970, 1, 3), "A4", 1, message), 0);
  EXPECT_EQ(stamp(), "6/15/2003 2:05:09 PM");
  EXPECT_EQ(PatientGet(id)->date("DateOfBirth"), day(1970, 1, 3));
  now.time = {};
  ASSERT_EQ(PatientSetAdmission(id, 1, 1, 2, message), 0);
  EXPECT_EQ(stamp(), "6/15/2003");
}

TEST_F(PatientsTest, AMissingDateOfBirthIsRefusedByName) {
  const std::string missing =
      "1 The date of birth is missing: please fill in DOB. Nothing was stored.";
  EXPECT_EQ(told(PatientUpdate(25000, "Smith, Anna", {}, "", 1, message)), missing);
  EXPECT_NE(takeStatements().at(1).find(" DateOfBirth = ##, "), std::string::npos);
  std::int16_t id = 0;
  EXPECT_EQ(told(PatientInsert(id, "Brown, Cy", {}, "", 1, message)), missing);
  EXPECT_EQ(id, 0);
  EXPECT_EQ(PatientUpdate(25000, "O'Brien", day(1980, 2, 29), "", 1, message), 1);
  EXPECT_EQ(message.find("DOB"), std::string::npos);
  EXPECT_EQ(rows("SELECT Names FROM Patient"), "Smith, Ann Jones, Bob");
}

TEST_F(PatientsTest, WhatHasGoneIsToldByItsCode) {
  EXPECT_EQ(PatientHistoryInsert(25000, 1, 2, message), 0) << "all three columns are the key";
  EXPECT_EQ(PatientHistoryDelete(25000, 1, 0, message), 0);
  EXPECT_EQ(rows("SELECT SicknessCode, SicknessTypeCode FROM PatientHistory"), "1|2");
  for (const std::string& result :
       {told(PatientHistoryDelete(25000, 1, 0, message)), told(PatientDelete(25009, message)),
        told(PatientDoctorDelete(25000, 9, message))})
    EXPECT_EQ(result, "2 U:IMPELIENT");
  for (const std::string& result :
       {told(PatientDoctorUpdate(25000, 9, 2, 3, message)),
        told(PatientSetAdmission(25009, 0, 0, 0, message)),
        told(PatientUpdate(25009, "", day(1970, 1, 1), "", 1, message))})
    EXPECT_EQ(result, "2 U:IMPACTENT");
}

}  // namespace
}  // namespace bw
