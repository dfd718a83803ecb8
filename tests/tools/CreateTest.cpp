#include <grp.h>
#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <sstream>

#include "data/Schema.h"
#include "engine/Connection.h"
#include "engine/SqliteEngine.h"
#include "tests/tools/DatabaseContent.h"
#include "tests/tools/TemporaryFolder.h"
#include "text/RuntimeError.h"
#include "tools/Commands.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

TEST(CreateTest, MakesTwoPrivateFilesThatTheProgramOpens) {
  const TemporaryFolder folder;
  const fs::path database = folder / "office/brantiwell.db";
  std::ostringstream out;
  ASSERT_EQ(createDatabase(database, out), Exit::done);

  const fs::path workgroup = folder / "office/brantiwell.dw";
  using enum fs::perms;
  EXPECT_EQ(fs::status(database).permissions(), owner_read | owner_write);
  EXPECT_EQ(fs::status(workgroup).permissions(), owner_read | owner_write);
  EXPECT_EQ(fs::status(database.parent_path()).permissions(), owner_all);
  EXPECT_EQ(std::distance(fs::directory_iterator(database.parent_path()), {}), 2);

  Connection connection;
  connection.ConnectionString = "Data Source=" + database.string() +
                                ";Jet OLEDB:System database=" + workgroup.string() +
                                ";User Id=Kelps;Password=Kelps";
  connection.Open();
  EXPECT_EQ(connection.Read("SELECT * FROM ChargeTypes")->RecordCount(), 2);
  EXPECT_EQ(
      textOrEmpty(openSqlite(database.string())->read("PRAGMA journal_mode")->columns[0].value(0)),
      "wal");
  EXPECT_EQ(checkDatabase(database, out), Exit::done) << out.str();
}

TEST(CreateTest, TheStarterHasAChoiceForEveryChargeAndNoCodes) {
  const TemporaryFolder folder;
  std::ostringstream out;
  createDatabase(folder / "a.db", out, {}, {.starter = true, .changeLog = true});
  EXPECT_EQ(checkDatabase(folder / "a.db", out), Exit::done) << out.str();
  const std::unique_ptr<Engine> engine = openSqlite(folder / "a.db");
  // Every facility type, patient's status and attention, on a first visit and on further ones.
  for (const char* visit : {"ShowOnFirst", "ShowOnNext"})
    EXPECT_EQ(engine
                  ->read(std::string("SELECT DISTINCT FacilityTypeCode, ChargeTypeCode, "
                                     "AttentionTypeCode FROM EvaluationManagement WHERE "
                                     "BillingEMCode = '' AND RealEMCode = '' AND ") +
                         visit + " = 1")
                  ->rowCount(),
              20U);
  EXPECT_GT(engine->read("SELECT * FROM DiagnosisFamily")->rowCount(), 0U);
}

TEST(CreateTest, GivesFilesAndNewFoldersToTheirOwner) {
  const TemporaryFolder folder;
  std::ostringstream out;
  EXPECT_THROW(createDatabase(folder / "a/a.db", out, {"no such user", ""}), Refused);
  EXPECT_FALSE(fs::exists(folder / "a"));

  EXPECT_THROW(createDatabase(folder / "mistyped/office/a.db", out), Refused);
  const fs::path database = folder / "srv/brantiwell.db";
  if (geteuid() != 0) {  // only root can give files away
    EXPECT_THROW(createDatabase(database, out, {"nobody", ""}), RuntimeError);
    EXPECT_FALSE(fs::exists(folder / "srv"));
    return;
  }
  createDatabase(database, out, {"nobody", "users"});
  checkDatabase(database, out);
  const uid_t nobody = getpwnam("nobody")->pw_uid;
  std::vector<fs::path> files{folder / "srv"};
  for (const fs::directory_entry& entry : fs::directory_iterator(folder / "srv"))
    files.push_back(entry.path());
  EXPECT_EQ(files.size(), 3U);
  for (const fs::path& file : files) {
    struct stat status {};
    ASSERT_EQ(stat(file.c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, nobody) << file;
    EXPECT_EQ(status.st_gid, getgrnam("users")->gr_gid) << file;
    EXPECT_EQ(status.st_mode & 07777U, S_ISDIR(status.st_mode) ? 02770U : 0660U) << file;
  }
}

TEST(CreateTest, LeavesWhatIsThereAlone) {
  const TemporaryFolder folder;
  folder.write("a.db", "mine");
  folder.write("b.dw", "mine");
  std::ostringstream out;
  for (const char* name : {"a.db", "b.db", "c.dw", "folder/"})
    EXPECT_THROW(createDatabase(folder / name, out), Refused) << name;
  EXPECT_EQ(folder.read("a.db") + folder.read("b.dw"), "minemine");
  EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 2);
  // No folder can be made below a file.
  EXPECT_ANY_THROW(createDatabase(folder / "a.db/office/x.db", out));
}

TEST(PracticeTest, HasSomethingForEveryView) {
  const TemporaryFolder folder;
  std::ostringstream out;
  const Date today = *makeDate(2024, 3, 1);
  ASSERT_EQ(createPractice(folder / "a.db", today, out), Exit::done);
  EXPECT_EQ(checkDatabase(folder / "a.db", out), Exit::done) << out.str();
  const std::unique_ptr<Engine> engine = openSqlite(folder / "a.db");
  std::vector<std::string> shown = schemaQueries();
  for (const char* filter :
       {"ChargesDescriptive WHERE ChargeRealDate='2024-03-01'", "PatientCharges WHERE Status=0",
        "PatientCharges WHERE Status=1 AND PrintLot IS NOT NULL", "PatientCharges WHERE Status=2",
        "PatientCharges WHERE Status=3", "Insurance WHERE BillingInsuranceCode=''",
        "Facility WHERE BillingFacilityCode=''", "Diagnosis WHERE BillingDiagnosisCode=''",
        "Procedures WHERE BillingProcedureCode=''", "Doctors WHERE BillingDoctorCode=''",
        "EvaluationManagement WHERE BillingEMCode=''", "Sickness WHERE SicknessTypeCode=2",
        "Facility GROUP BY Description HAVING count(*) > 1"})
    shown.emplace_back(filter);
  for (const std::string& each : shown)
    EXPECT_GT(engine->read("SELECT 1 FROM " + each)->rowCount(), 0U) << each;
  EXPECT_EQ(
      engine->read("SELECT * FROM PatientCharges WHERE ChargeDate > '2024-03-01'")->rowCount(), 0U);
  // Whatever a doctor is offered, there is a choice.
  EXPECT_EQ(engine
                ->read("SELECT count(*) FROM EvaluationManagement "
                       "GROUP BY FacilityTypeCode, ChargeTypeCode, AttentionTypeCode "
                       "HAVING count(*) = 6")
                ->rowCount(),
            20U);
  // What the program itself could not store.
  EXPECT_EQ(engine
                ->read("SELECT 1 FROM Facility WHERE Description LIKE '%''%' "
                       "UNION ALL SELECT 1 FROM Patient WHERE Names LIKE '%''%'")
                ->rowCount(),
            0U);
  // The same office on every computer.
  ASSERT_EQ(createPractice(folder / "b.db", today, out), Exit::done);
  EXPECT_EQ(contentOf(folder / "a.db"), contentOf(folder / "b.db"));
}

}  // namespace
}  // namespace bw
