#include "tests/tools/ToolsTest.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

using ExportTest = ToolsTest;

TEST_F(ExportTest, EveryRowComesBackAsItStood) {
  makePractice();
  run("INSERT INTO Doctors VALUES (900, 'Ü, \"q\"; ''' || char(9, 13, 10) || ' ', '\"'),"
      "(901, '', ' 007 '), (902, '\"', char(10))");
  run("UPDATE Patient SET DateOfBirth = NULL WHERE PatientId = 25000");
  run("UPDATE Insurance SET Description = '\"quoted\"'");

  int number = 0;
  for (const TableForm form : {TableForm::tabs, TableForm::commas}) {
    const std::string name = concat("copy", ++number);
    const fs::path files = folder_ / name;
    ASSERT_EQ(exportTables(file_, files, form, out_), Exit::done);
    EXPECT_EQ(fs::status(files).permissions(), fs::perms::owner_all);
    // What tabs cannot part is written with quotes.
    EXPECT_TRUE(fs::exists(files / "Doctors.csv"));
    EXPECT_EQ(fs::exists(files / "Insurance.tsv"), form == TableForm::tabs);
    const std::string copy = folder_ / (name + ".db");
    createDatabase(copy, out_);
    ASSERT_EQ(loadTables(copy, files, out_, nullptr), Exit::done) << out_.str();
    EXPECT_EQ(contentOf(copy), contentOf(file_));

    const std::string before = folder_.read(name + "/Doctors.csv");
    EXPECT_THROW(exportTables(copy, files, form, out_), Refused);
    EXPECT_EQ(folder_.read(name + "/Doctors.csv"), before);

    // Files with heads alone are taken as they are, and bring nothing.
    ASSERT_EQ(writeTemplates(folder_ / (name + "-heads"), form, out_), Exit::done);
    out_.str("");
    ASSERT_EQ(loadTables(copy, folder_ / (name + "-heads"), out_, nullptr), Exit::done)
        << out_.str();
    EXPECT_TRUE(has(out_.str(), {"Loaded 0 rows"}));
  }
}

}  // namespace
}  // namespace bw
