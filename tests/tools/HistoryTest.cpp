#include <pwd.h>
#include <unistd.h>

#include "engine/Connection.h"
#include "tests/tools/ToolsTest.h"

namespace bw {
namespace {

class HistoryTest : public ToolsTest {
 protected:
  HistoryTest() {
    createDatabase(file_, out_);
    switchChangeLog(file_, true, out_);
    Connection connection(openSqlite(file_));
    for (const char* statement :
         {"INSERT INTO Insurance (InsuranceCode, Description) VALUES (25, 'PatientId = 25')",
          "INSERT INTO Patient (PatientId, [Names], DateOfBirth, InsuranceCode) VALUES "
          "(250, 'Ann', #01/02/1950#, 25)",
          "UPDATE Patient SET [Names]='Anna' WHERE PatientId = 250",
          "DELETE FROM Patient WHERE PatientId=250"})
      connection.Execute(statement);
    run("UPDATE ChangeLog SET Moment='2003-06-15 23:59:59' WHERE Number=1");
  }

  // The first words of the statements told.
  std::string told(const HistoryFilter& filter) {
    std::ostringstream out;
    EXPECT_EQ(printHistory(file_, filter, out), Exit::done);
    std::string words;
    std::istringstream lines(out.str());
    for (std::string line; std::getline(lines, line);)
      if (line.starts_with("  ")) words += line.substr(2, 6) + ' ';
    return words;
  }
  static Date day(int dayOfJune) { return makeDate(2003, 6, dayOfJune).value(); }
};

TEST_F(HistoryTest, TellsWhatIsAskedFor) {
  const std::string user = getpwuid(geteuid())->pw_name;
  EXPECT_EQ(told({}), "INSERT INSERT UPDATE DELETE ");
  EXPECT_EQ(told({.patient = 250}), "INSERT UPDATE DELETE ");
  EXPECT_EQ(told({.patient = 25}), "INSERT ");  // a text that reads like it
  EXPECT_EQ(told({.patient = 2}), "");
  EXPECT_EQ(told({.table = "patient"}), "INSERT UPDATE DELETE ");
  EXPECT_EQ(told({.user = user}), "INSERT INSERT UPDATE DELETE ");
  EXPECT_EQ(told({.user = user + "x"}), "");
  EXPECT_EQ(told({.from = day(16)}), "INSERT UPDATE DELETE ");
  EXPECT_EQ(told({.from = day(15), .to = day(15)}), "INSERT ");
  EXPECT_EQ(told({.to = day(14)}), "");
}

TEST_F(HistoryTest, TakesLinesOutWhenTheyStandInAFile) {
  folder_.write("there.txt", "mine");
  EXPECT_THROW(pruneHistory(file_, day(16), folder_ / "there.txt", out_), Refused);
  EXPECT_THROW(pruneHistory(file_, day(16), folder_ / "no/such.txt", out_), RuntimeError);
  EXPECT_EQ(told({.to = day(15)}), "INSERT ");
  ASSERT_EQ(pruneHistory(file_, day(16), folder_ / "old.txt", out_), Exit::done);
  EXPECT_TRUE(folder_.read("old.txt").starts_with("2003-06-15 23:59:59  "));
  EXPECT_TRUE(has(folder_.read("old.txt"), {", rows: 1\n  INSERT INTO Insurance"}));
  EXPECT_EQ(told({}), "INSERT UPDATE DELETE ");
  EXPECT_EQ(folder_.read("there.txt"), "mine");

  createDatabase(folder_ / "plain.db", out_);
  EXPECT_THROW(printHistory(folder_ / "plain.db", {}, out_), Refused);
}

}  // namespace
}  // namespace bw
