#include <gtest/gtest.h>

#include <sstream>

#include "tests/tools/DatabaseContent.h"
#include "tests/tools/TemporaryFolder.h"
#include "tools/Commands.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

TEST(ExportTest, EveryRowComesBackAsItStood) {
  const TemporaryFolder folder;
  const std::string office = folder / "office.db";
  std::ostringstream out;
  createPractice(office, *makeDate(2024, 3, 1), out);
  openSqlite(office)->execute(
      "INSERT INTO Doctors VALUES (900, 'Ü, \"q\"; ''' || char(9, 13, 10) || ' ', '\"'),"
      "(901, '', ' 007 '), (902, '\"', char(10))");
  openSqlite(office)->execute("UPDATE Patient SET DateOfBirth = NULL WHERE PatientId = 25000");
  openSqlite(office)->execute("UPDATE Insurance SET Description = '\"quoted\"'");

  int number = 0;
  for (const TableForm form : {TableForm::tabs, TableForm::commas}) {
    const std::string name = concat("copy", ++number);
    const fs::path files = folder / name;
    ASSERT_EQ(exportTables(office, files, form, out), Exit::done);
    EXPECT_EQ(fs::status(files).permissions(), fs::perms::owner_all);
    // What tabs cannot part is written with quotes.
    EXPECT_TRUE(fs::exists(files / "Doctors.csv"));
    EXPECT_EQ(fs::exists(files / "Insurance.tsv"), form == TableForm::tabs);
    const std::string copy = folder / (name + ".db");
    createDatabase(copy, out);
    ASSERT_EQ(loadTables(copy, files, out, nullptr), Exit::done) << out.str();
    EXPECT_EQ(contentOf(copy), contentOf(office));

    const std::string before = folder.read(name + "/Doctors.csv");
    EXPECT_THROW(exportTables(copy, files, form, out), Refused);
    EXPECT_EQ(folder.read(name + "/Doctors.csv"), before);

    // Files with heads alone are taken as they are, and bring nothing.
    ASSERT_EQ(writeTemplates(folder / (name + "-heads"), form, out), Exit::done);
    out.str("");
    ASSERT_EQ(loadTables(copy, folder / (name + "-heads"), out, nullptr), Exit::done) << out.str();
    EXPECT_NE(out.str().find("Loaded 0 rows"), std::string::npos) << out.str();
  }
}

}  // namespace
}  // namespace bw
