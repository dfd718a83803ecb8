#include "tests/tools/ToolsTest.h"
#include "text/Clock.h"
#include "tools/Copies.h"

namespace bw {
namespace {

class UpgradeTest : public ToolsTest {
 protected:
  UpgradeTest() { createPractice(file_, now_.date, out_); }

  std::vector<Copy> copies() const { return copiesIn(folder_ / "copies", file_); }

  DateTime now_ = systemNow();  // check tells how old copies are
};

TEST_F(UpgradeTest, WhatAnotherVersionMadeIsMadeAnewAfterACopy) {
  const std::string rows = contentOf(file_);
  EXPECT_EQ(checked(Exit::done).find("version"), std::string::npos) << out_.str();
  for (const char* statement :
       {"PRAGMA user_version = 0", "DROP INDEX ChargesByStatus", "DROP TRIGGER InsuranceInUse",
        "CREATE TRIGGER InsuranceInUse BEFORE DELETE ON Insurance BEGIN SELECT 1; END",
        "DROP VIEW PatientsDescriptive", "CREATE VIEW PatientsDescriptive AS SELECT 1",
        "CREATE VIEW OfficesOwn AS SELECT 1"})
    run(statement);
  EXPECT_TRUE(has(checked(Exit::findings),
                  {"index ChargesByStatus is missing", "guard InsuranceInUse has the form",
                   "query PatientsDescriptive has the form", "command upgrade"}));

  ASSERT_EQ(upgradeDatabase(file_, now_, out_), Exit::done) << out_.str();
  EXPECT_EQ(checked(Exit::done).find("Note"), std::string::npos) << out_.str();
  EXPECT_EQ(contentOf(file_), rows);
  run("DROP VIEW OfficesOwn");  // it was left alone
  ASSERT_EQ(copies().size(), 1U);
  EXPECT_EQ(openSqlite(copies()[0].file)->read("SELECT * FROM PatientsDescriptive")->columns.size(),
            1U)
      << "the copy is of before";

  out_.str("");
  EXPECT_EQ(upgradeDatabase(file_, now_, out_), Exit::done);
  EXPECT_TRUE(has(out_.str(), {"already"}));
}

TEST_F(UpgradeTest, WithoutACopyAndForLaterVersionsNothingIsChanged) {
  run("DROP INDEX ChargesByStatus");
  folder_.write("copies", "in the way");
  EXPECT_EQ(upgradeDatabase(file_, now_, out_), Exit::unavailable);
  EXPECT_TRUE(has(checked(Exit::done), {"ChargesByStatus"}));

  run("PRAGMA user_version = 99");
  EXPECT_THROW(upgradeDatabase(file_, now_, out_), Refused);
  EXPECT_TRUE(has(checked(Exit::done), {"later version"}));
}

// No upgrade brings its rows back.
TEST_F(UpgradeTest, AMissingTableIsNamedAndNothingIsChanged) {
  const std::string whole = folder_.read("office.db");
  for (const char* table : {"DoctorCoveringDoctors", "PatientCharges"}) {
    folder_.write("office.db", whole);
    run(concat("DROP TABLE ", table));
    EXPECT_EQ(upgradeDatabase(file_, now_, out_), Exit::refused);
    EXPECT_TRUE(has(out_.str(), {concat("table ", table, " is missing"), "Restore a copy"}));
    EXPECT_TRUE(copies().empty());
    EXPECT_EQ(checked(Exit::findings).find("command upgrade"), std::string::npos) << out_.str();
  }
}

}  // namespace
}  // namespace bw
