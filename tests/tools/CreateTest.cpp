#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include "core/ApoyoConeccion.h"
#include "data/Schema.h"
#include "engine/Connection.h"
#include "tests/tools/ToolsTest.h"
#include "text/RuntimeError.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

class CreateTest : public ToolsTest {
 protected:
  std::ptrdiff_t filesIn(const fs::path& folder) const {
    return std::distance(fs::directory_iterator(folder), {});
  }
  std::size_t rowsOf(const std::string& source) const {
    return openSqlite(file_)->read("SELECT 1 FROM " + source)->rowCount();
  }
};

TEST_F(CreateTest, MakesTwoPrivateFilesThatTheProgramOpens) {
  file_ = folder_ / "office/brantiwell.db";
  ASSERT_EQ(createDatabase(file_, out_), Exit::done);
  const fs::path folder = folder_ / "office";
  using enum fs::perms;
  EXPECT_EQ(fs::status(folder).permissions(), owner_all);
  for (const fs::directory_entry& entry : fs::directory_iterator(folder))
    EXPECT_EQ(entry.status().permissions(), owner_read | owner_write) << entry;
  EXPECT_EQ(filesIn(folder), 2);

  Connection connection;
  connection.ConnectionString = connectionStringOf(file_);
  connection.Open();
  EXPECT_EQ(connection.Read("SELECT * FROM ChargeTypes")->RecordCount(), 2);
  EXPECT_EQ(cells("PRAGMA journal_mode"), "wal|");
  checked(Exit::done);
}

TEST_F(CreateTest, TheStarterHasAChoiceForEveryChargeAndNoCodes) {
  createDatabase(file_, out_, {}, {.starter = true, .changeLog = true});
  checked(Exit::done);
  // Every facility type, patient's status and attention, on a first visit and on further ones.
  for (const char* visit : {"ShowOnFirst", "ShowOnNext"})
    EXPECT_EQ(
        rowsOf(concat("EvaluationManagement WHERE BillingEMCode = '' AND RealEMCode = '' AND ",
                      visit, " = 1 GROUP BY FacilityTypeCode, ChargeTypeCode, AttentionTypeCode")),
        20U);
  EXPECT_GT(rowsOf("DiagnosisFamily"), 0U);
}

TEST_F(CreateTest, GivesFilesAndNewFoldersToTheirOwner) {
  EXPECT_THROW(createDatabase(folder_ / "a/a.db", out_, {"no such user", ""}), Refused);
  EXPECT_FALSE(fs::exists(folder_ / "a"));

  EXPECT_THROW(createDatabase(folder_ / "mistyped/office/a.db", out_), Refused);
  const fs::path database = folder_ / "srv/brantiwell.db";
  if (geteuid() != 0) {  // only root can give files away
    EXPECT_THROW(createDatabase(database, out_, {"nobody", ""}), RuntimeError);
    EXPECT_FALSE(fs::exists(folder_ / "srv"));
    return;
  }
  createDatabase(database, out_, {"nobody", "users"});
  checkDatabase(database, out_);
  const uid_t nobody = getpwnam("nobody")->pw_uid;
  std::vector<fs::path> files{folder_ / "srv"};
  for (const fs::directory_entry& entry : fs::directory_iterator(folder_ / "srv"))
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

TEST_F(CreateTest, LeavesWhatIsThereAlone) {
  folder_.write("a.db", "mine");
  folder_.write("b.dw", "mine");
  for (const char* name : {"a.db", "b.db", "c.dw", "folder/"})
    EXPECT_THROW(createDatabase(folder_ / name, out_), Refused) << name;
  EXPECT_EQ(folder_.read("a.db") + folder_.read("b.dw"), "minemine");
  EXPECT_EQ(filesIn(folder_.path()), 2);
  // No folder can be made below a file.
  EXPECT_ANY_THROW(createDatabase(folder_ / "a.db/office/x.db", out_));
}

TEST_F(CreateTest, ThePracticeOfficeHasSomethingForEveryView) {
  makePractice();
  checked(Exit::done);
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
  for (const std::string& each : shown) EXPECT_GT(rowsOf(each), 0U) << each;
  for (const char* unlikely :
       {"PatientCharges WHERE ChargeDate > '2024-03-01'",
        // What the program itself could not store.
        "Facility WHERE Description LIKE '%''%'", "Patient WHERE Names LIKE '%''%'"})
    EXPECT_EQ(rowsOf(unlikely), 0U) << unlikely;
  // The same office on every computer.
  const std::string office = std::exchange(file_, folder_ / "b.db");
  makePractice();
  EXPECT_EQ(contentOf(file_), contentOf(office));
}

}  // namespace
}  // namespace bw
