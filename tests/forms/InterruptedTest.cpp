#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "charges/Archiving.h"
#include "core/Principal.h"
#include "data/Schema.h"
#include "engine/RelaxedSync.h"
#include "engine/SqliteEngine.h"
#include "tests/data/DataFixture.h"
#include "tests/tools/FullDisk.h"
#include "tests/tools/TemporaryFolder.h"

namespace bw {
namespace {

class InterruptedTest : public DataTest {
 protected:
  InterruptedTest() {
    closeConnection();
    auto engine = createSqlite(file);
    createSchema(*engine);
    DatabaseConnection = Connection(std::move(engine));
    seedOffice();
    run("INSERT INTO PatientCharges WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n "
        "WHERE i < 19) SELECT 25000, '2001-01-01', time(i, 'unixepoch'), '2001-01-01', 1, 1, 1, 2, "
        "0, NULL FROM n");
    closeConnection();
  }

  void reopen() { DatabaseConnection = Connection(openSqlite(file)); }

  TemporaryFolder folder;
  std::string file = (folder / "brantiwell.db").string();
};

TEST_F(InterruptedTest, ArchivingThatIsKilledLeavesWhatWasDone) {
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    reopen();
    int commits = 0;
    DatabaseConnection.tap = [&](std::string_view statement) {
      if (statement == "COMMIT" && ++commits == 8) raise(SIGKILL);
    };
    std::string message;
    archiveCharges(Date{40000}, message);
    _exit(0);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFSIGNALED(status));
  reopen();
  EXPECT_EQ(rows("SELECT count(*) FROM PatientCharges WHERE Status = 3"), "7");
  std::string message;
  EXPECT_TRUE(archiveCharges(Date{40000}, message));
  EXPECT_EQ(rows("SELECT count(*) FROM PatientCharges WHERE Status = 3"), "20");
}

TEST_F(InterruptedTest, RelaxedSyncLastsAsLongAsItLives) {
  reopen();
  const auto synchronous = [] { return rows("PRAGMA synchronous"); };
  const std::string full = synchronous();
  {
    RelaxedSync relaxed(DatabaseConnection);
    EXPECT_NE(synchronous(), full);
    relaxed.finish();
    EXPECT_EQ(synchronous(), full);
  }
  try {
    const RelaxedSync relaxed(DatabaseConnection);
    DatabaseConnection.Execute("no statement");
  } catch (const RuntimeError&) {
    EXPECT_EQ(synchronous(), full);
  }
  // What is stored already is not told as lost.
  {
    RelaxedSync relaxed(DatabaseConnection);
    run("UPDATE PatientCharges SET PrintLot = 7");
    const FullDisk disk(0);
    try {
      relaxed.finish();
      ADD_FAILURE() << "nothing was told";
    } catch (const RuntimeError& error) {
      EXPECT_EQ(error.text(),
                "Everything that was done is stored, but it is not safe from a power cut yet: the "
                "disk did not confirm it. Please make a copy of the database on another disk.");
    }
  }
  EXPECT_EQ(rows("SELECT DISTINCT PrintLot FROM PatientCharges"), "7");
  EXPECT_EQ(synchronous(), full);
  // Where it cannot be, it is not.
  DatabaseConnection.BeginTrans();
  { const RelaxedSync relaxed(DatabaseConnection); }
  DatabaseConnection.RollbackTrans();
  EXPECT_EQ(synchronous(), full);
  closeConnection();
  const RelaxedSync relaxed(DatabaseConnection);
}

}  // namespace
}  // namespace bw
