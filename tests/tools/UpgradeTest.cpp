#include <gtest/gtest.h>

#include <sstream>

#include "tests/tools/DatabaseContent.h"
#include "tests/tools/TemporaryFolder.h"
#include "text/Clock.h"
#include "tools/Commands.h"
#include "tools/Copies.h"

namespace bw {
namespace {

class UpgradeTest : public testing::Test {
 protected:
  UpgradeTest() { createPractice(file_, now_.date, out_); }

  void run(const std::string& statement) const { openSqlite(file_)->execute(statement); }
  std::string checked() {
    std::ostringstream out;
    EXPECT_EQ(checkDatabase(file_, out), Exit::done) << out.str();
    return out.str();
  }
  std::vector<Copy> copies() const { return copiesIn(folder_ / "copies", file_); }

  TemporaryFolder folder_;
  std::string file_ = folder_ / "office.db";
  DateTime now_ = systemNow();  // check tells how old copies are
  std::ostringstream out_;
};

TEST_F(UpgradeTest, WhatAnotherVersionMadeIsMadeAnewAfterACopy) {
  const std::string rows = contentOf(file_);
  const std::string current = checked();
  EXPECT_EQ(current.find("Note"), std::string::npos) << current;
  for (const char* statement :
       {"PRAGMA user_version = 0", "DROP INDEX ChargesByStatus", "DROP TRIGGER InsuranceInUse",
        "CREATE TRIGGER InsuranceInUse BEFORE DELETE ON Insurance BEGIN SELECT 1; END",
        "DROP VIEW PatientsDescriptive", "CREATE VIEW PatientsDescriptive AS SELECT 1",
        "CREATE VIEW OfficesOwn AS SELECT 1"})
    run(statement);
  std::ostringstream old;
  EXPECT_EQ(checkDatabase(file_, old), Exit::findings);
  for (const char* told : {"index ChargesByStatus is missing", "guard InsuranceInUse has the form",
                           "query PatientsDescriptive has the form", "command upgrade"})
    EXPECT_NE(old.str().find(told), std::string::npos) << told << " in\n" << old.str();

  ASSERT_EQ(upgradeDatabase(file_, now_, out_), Exit::done) << out_.str();
  EXPECT_EQ(checked(), current);
  EXPECT_EQ(contentOf(file_), rows);
  run("DROP VIEW OfficesOwn");  // it was left alone
  ASSERT_EQ(copies().size(), 1U);
  EXPECT_EQ(openSqlite(copies()[0].file)->read("SELECT * FROM PatientsDescriptive")->columns.size(),
            1U)
      << "the copy is of before";

  out_.str("");
  EXPECT_EQ(upgradeDatabase(file_, now_, out_), Exit::done);
  EXPECT_NE(out_.str().find("already"), std::string::npos) << out_.str();
}

TEST_F(UpgradeTest, WithoutACopyAndForLaterVersionsNothingIsChanged) {
  run("DROP INDEX ChargesByStatus");
  folder_.write("copies", "in the way");
  EXPECT_EQ(upgradeDatabase(file_, now_, out_), Exit::unavailable);
  EXPECT_NE(checked().find("ChargesByStatus"), std::string::npos);

  run("PRAGMA user_version = 99");
  EXPECT_THROW(upgradeDatabase(file_, now_, out_), Refused);
  EXPECT_NE(checked().find("later version"), std::string::npos);
}

}  // namespace
}  // namespace bw
