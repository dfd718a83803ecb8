#include <sstream>
#include <thread>

#include "data/SavedQueries.h"
#include "engine/PostgresEngine.h"
#include "engine/PostgresLink.h"
#include "tests/server/TestDatabase.h"
#include "tests/text/Raised.h"
#include "tests/tools/TemporaryFolder.h"
#include "text/Text.h"
#include "tools/Commands.h"
#include "tools/Copies.h"

namespace bw {
namespace {

using namespace std::chrono_literals;

// Two stations and an administrator at the database of an office.
class ServerTest : public testing::Test {
 protected:
  static constexpr PostgresOptions kOptions{.busyTimeout = 100ms, .returnTimeout = 300ms};

  ServerTest() : ours(emptyOffice()), administrator(addressOfDatabase(), {}) {
    ours = Connection(openPostgres(addressOfDatabase(), kOptions));
    theirs = Connection(openPostgres(addressOfDatabase(), kOptions));
    administrator.query(
        "INSERT INTO insurance VALUES (1, 'Mutual', '');"
        "INSERT INTO facility VALUES (1, 'General', 1, '', '');"
        "INSERT INTO patient (patientid, insurancecode) VALUES (7, 1), (8, 1)");
  }

  static std::string refusalOf(Connection& by, const std::string& statement) {
    return bw::refusalOf([&] { by.Execute(statement); });
  }
  static std::string add(int number) {
    return concat("INSERT INTO Insurance VALUES (", number, ", 'x', '')");
  }
  // The numbers of the insurances.
  std::string stored() {
    const PostgresResult found = administrator.query(
        "SELECT string_agg(insurancecode::text, ' ' ORDER BY 1) FROM insurance");
    return PQgetvalue(found.get(), 0, 0);
  }
  // Ends the process that serves a station while it commits, before anything is stored.
  void breakCommits() {
    administrator.query(
        "CREATE FUNCTION end_it() RETURNS trigger LANGUAGE plpgsql AS "
        "'BEGIN PERFORM pg_terminate_backend(pg_backend_pid()); RETURN NULL; END';"
        "CREATE CONSTRAINT TRIGGER end_it AFTER INSERT ON insurance DEFERRABLE INITIALLY DEFERRED "
        "FOR EACH ROW EXECUTE FUNCTION end_it()");
  }
  void store(int number) {
    ours.BeginTrans();
    ours.Execute(add(number));
    ours.CommitTrans();
  }
  void allowConnections(bool whether) {
    PostgresLink(std::getenv("BRANTIWELL_TEST_SERVER"), {})
        .query(concat("ALTER DATABASE ", database, " ALLOW_CONNECTIONS ", whether ? "on" : "off"));
  }
  std::string setting(const std::string& of) {
    return ours.Read("SELECT current_setting('" + of + "') AS s")->text("s");
  }
  std::string refusalOfCommit(int number = 2) {
    return bw::refusalOf([&] { store(number); });
  }
  // What the other station hears of, which has the insurances in a list.
  ChangesOfOthers heard() {
    theirs.Read("SELECT * FROM Insurance");
    return theirs.changesOfOthers();
  }

  Connection ours;
  Connection theirs;
  PostgresLink administrator;
  std::string database = PQgetvalue(administrator.query("SELECT current_database()").get(), 0, 0);
};

// What the saved queries compare by.
TEST_F(ServerTest, FoldsTextsAsTheProgramDoes) {
  const PostgresResult found = administrator.query(
      "SELECT t, bw_fold(t), bw_fold(NULL) IS NULL FROM (SELECT string_agg(chr(i), '' ORDER BY i) "
      "AS t FROM generate_series(1, 125000) AS i WHERE i NOT BETWEEN 55296 AND 57343) AS letters");
  EXPECT_EQ(PQgetvalue(found.get(), 0, 1), fold(PQgetvalue(found.get(), 0, 0)));
  EXPECT_STREQ(PQgetvalue(found.get(), 0, 2), "t");
}

TEST_F(ServerTest, LostConnectionIsToldOnceAndTheNextStatementConnectsAnew) {
  ours.BeginTrans();
  ours.Execute(add(2));
  cutConnections();
  EXPECT_EQ(refusalOf(ours, add(3)), refusalSentence(Refusal::lost));
  EXPECT_NE(refusalOf(ours, add(3)), "") << "it would be stored by itself";
  ours.RollbackTrans();
  store(4);
  // Between statements nothing is lost: nobody needs to know.
  cutConnections();
  EXPECT_EQ(refusalOf(ours, add(5)), "");
  administrator.connect();
  EXPECT_EQ(stored(), "1 4 5");
}

TEST_F(ServerTest, ACommitWhoseAnswerWasLostIsToldAsItEnded) {
  // Stored, since the server waits for a standby that never comes only when it has written. It
  // hears of the standby some commits later.
  PostgresLink server(std::getenv("BRANTIWELL_TEST_SERVER"), {});
  const auto setStandby = [&server](const char* how) {
    server.query(concat("ALTER SYSTEM ", how));
    server.query("SELECT pg_reload_conf()");
  };
  setStandby("SET synchronous_standby_names = 'nobody'");
  std::atomic<bool> killed = false;
  std::thread killer([&server, &killed] {
    while (!killed) {
      const PostgresResult waiting = server.query(
          "SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE wait_event = 'SyncRep'");
      killed = PQntuples(waiting.get()) > 0;
    }
  });
  int count = 1;
  std::string refusal;
  while (!killed && refusal.empty()) refusal = refusalOfCommit(++count);
  killed = true;
  killer.join();
  setStandby("RESET synchronous_standby_names");
  EXPECT_EQ(refusal, "");
  EXPECT_EQ(ours.Read("SELECT * FROM Insurance")->RecordCount(), count);
  administrator.query("DELETE FROM insurance WHERE insurancecode > 1");

  breakCommits();
  EXPECT_EQ(refusalOfCommit(), refusalSentence(Refusal::lost));
  EXPECT_EQ(ours.transactionLevel(), 0);
  EXPECT_EQ(stored(), "1");

  allowConnections(false);
  EXPECT_EQ(refusalOfCommit(), refusalSentence(Refusal::unknown));
  allowConnections(true);
  EXPECT_EQ(ours.Read("SELECT * FROM Insurance")->RecordCount(), 1);
}

// The step of the commit before stands there.
TEST_F(ServerTest, ACommitThatWasNeverSentIsNotFoundStored) {
  const std::unique_ptr<Engine> engine = openPostgres(addressOfDatabase(), kOptions);
  const auto store = [&](const std::string& statement) {
    const EngineStatement one(statement);
    engine->begin();
    return engine->trips()->executeAll({&one, 1}, Then::commit);
  };
  EXPECT_FALSE(store(add(2)).commit.why);
  EXPECT_EQ(store("").commit.outcome, CommitResult::Outcome::refused);
  EXPECT_EQ(stored(), "1 2");
}

// Of what was stored with relaxed syncing some may be gone after a crash of the server.
TEST_F(ServerTest, RelaxedWorkSaysThatSomeOfItMayBeLost) {
  ASSERT_TRUE(ours.relaxSync());
  EXPECT_EQ(setting("synchronous_commit"), "off");
  heard();
  store(2);
  EXPECT_FALSE(heard().any) << "told once, at the end";
  ours.restoreSync();
  EXPECT_EQ(heard().tables, std::vector<std::string>{"insurance"});
  EXPECT_EQ(setting("synchronous_commit"), "on");
  ASSERT_TRUE(ours.relaxSync());
  store(3);
  ours.BeginTrans();
  ours.Execute(add(4));
  cutConnections();
  EXPECT_EQ(refusalOf(ours, add(5)), refusalSentence(Refusal::lostSome));
  ours.RollbackTrans();
  EXPECT_EQ(bw::refusalOf([this] { ours.restoreSync(); }), "");
}

TEST_F(ServerTest, WhileTheServerIsAwayNothingIsWrittenAndNothingRelaxed) {
  allowConnections(false);
  cutConnections();
  EXPECT_FALSE(ours.relaxSync());
  ours.BeginTrans();
  EXPECT_FALSE(ours.WriteAll({}).refusal) << "there is nothing to write";
  const std::vector<std::string> one{add(2)};
  EXPECT_EQ(ours.WriteAll(one).refusal->text(), refusalSentence(Refusal::lost));
  ours.RollbackTrans();
  allowConnections(true);
  administrator.connect();
  EXPECT_EQ(setting("synchronous_commit"), "on");
  EXPECT_EQ(stored(), "1");
}

TEST_F(ServerTest, LockOfAnotherStationFailsTheStatementAlone) {
  theirs.BeginTrans();
  theirs.Execute("UPDATE Patient SET InFacilityCode=1 WHERE PatientId=7");
  ours.BeginTrans();
  ours.Execute(add(2));
  EXPECT_EQ(refusalOf(ours, "UPDATE Patient SET Names='x' WHERE PatientId=7"),
            refusalSentence(Refusal::locked));
  ours.Execute(add(3));
  ours.CommitTrans();
  EXPECT_EQ(stored(), "1 2 3");
  // A facility to which another station is just admitting a patient.
  EXPECT_EQ(refusalOf(ours, "DELETE FROM Facility WHERE FacilityCode=1"),
            refusalSentence(Refusal::locked));
  // A loop waits in full for one of many rows.
  ASSERT_TRUE(ours.relaxSync());
  EXPECT_EQ(setting("lock_timeout"), "100ms");
  EXPECT_EQ(refusalOf(ours, "UPDATE Patient SET Names='x' WHERE PatientId=7"),
            refusalSentence(Refusal::locked));
  EXPECT_EQ(setting("lock_timeout"), "20ms");
  ours.restoreSync();
  EXPECT_EQ(setting("lock_timeout"), "100ms");
  theirs.CommitTrans();
  EXPECT_EQ(refusalOf(ours, "DELETE FROM Facility WHERE FacilityCode=1"),
            "This record cannot be deleted: patients still use it.");
}

// All as of one moment, and without a trace of what the server adds to the tables.
TEST_F(ServerTest, SnapshotSeesNoLaterChangeAndHiddenColumnsStayHidden) {
  const std::unique_ptr<Engine> engine = openPostgres(addressOfDatabase(), kOptions);
  engine->begin(TransactionKind::snapshot);
  EXPECT_EQ(engine->read("SELECT * FROM Patient")->columns.size(), 10U);
  theirs.Execute("DELETE FROM Patient WHERE PatientId=8");
  EXPECT_EQ(engine->read("SELECT * FROM Patient")->rowCount(), 2U);
  EXPECT_THROW(engine->execute("DELETE FROM Patient"), DatabaseRefusal);
  if (engine->inTransaction()) engine->rollback();
  EXPECT_EQ(engine->read("SELECT * FROM Patient")->rowCount(), 1U);
}

// The copy is tried before it counts: what another station adds meanwhile is not in it.
TEST_F(ServerTest, CopyIsADumpOfOneMomentThatFillsAnEmptyDatabase) {
  const TemporaryFolder folder;
  const DateTime now{*makeDate(2026, 3, 1), {36000}};
  std::ostringstream out;
  const auto backUp = [&] {
    return backUpDatabase(addressOfDatabase(), folder / "copies", now, out);
  };
  ASSERT_EQ(backUp(), Exit::done) << out.str();
  EXPECT_NE(out.str().find("compared its rows"), std::string::npos) << out.str();
  theirs.Execute(add(2));
  ASSERT_EQ(backUp(), Exit::done) << out.str();
  std::vector<Copy> copies = copiesIn(folder / "copies", addressOfDatabase());
  ASSERT_EQ(copies.size(), 2U);
  std::filesystem::resize_file(copies[1].file, 2000);
  EXPECT_EQ(listCopies(addressOfDatabase(), folder / "copies", out), Exit::findings);
  EXPECT_THROW(restoreDatabase(copies[0].file, addressOfDatabase(), now, out), Refused);

  const std::unique_ptr<Engine> empty = emptyDatabase();
  EXPECT_THROW(restoreDatabase(copies[1].file, addressOfDatabase(), now, out), Refused);
  ASSERT_EQ(restoreDatabase(copies[0].file, addressOfDatabase(), now, out), Exit::done)
      << out.str();
  EXPECT_EQ(empty->read("SELECT InsuranceCode FROM Insurance")->rowCount(), 1U);
  EXPECT_EQ(empty->read("SELECT PatientId FROM Patient")->rowCount(), 2U);
}

}  // namespace
}  // namespace bw
