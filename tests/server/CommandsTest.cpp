#include <gtest/gtest.h>

#include <atomic>
#include <sstream>
#include <thread>

#include "engine/ChangeLog.h"
#include "engine/Connection.h"
#include "engine/PostgresEngine.h"
#include "engine/PostgresLink.h"
#include "engine/SqliteEngine.h"
#include "tests/server/TestDatabase.h"
#include "tests/text/Raised.h"
#include "tests/tools/TemporaryFolder.h"
#include "text/Text.h"
#include "tools/Commands.h"

namespace bw {
namespace {

// The commands at a database on the server, empty at first.
class CommandsTest : public testing::Test {
 protected:
  std::string said() {
    std::string text = out_.str();
    out_.str("");
    return text;
  }
  std::string history(const std::string& of) {
    said();
    printHistory(of, {}, out_);
    return said();
  }
  static void add(std::unique_ptr<Engine> to, int number) {
    Connection(std::move(to))
        .Execute(concat("INSERT INTO Insurance VALUES (", number, ", 'Ü ''x'' ', '')"));
  }
  static std::string lineOf(const std::string& day) {
    return concat(
        "INSERT INTO ChangeLog (Moment, UserName, Station, RowCount, Statement) VALUES ('", day,
        "', 'u', 's', 1, 'one')");
  }

  TemporaryFolder folder_;
  std::ostringstream out_;
  std::unique_ptr<Engine> office_ = emptyDatabase();
  std::string address_ = addressOfDatabase();
};

TEST_F(CommandsTest, DesksAddLinesToTheChangeLogWheneverItBeganAndTakeNoneOut) {
  for (const bool fromTheStart : {true, false}) {
    office_ = emptyDatabase();
    address_ = addressOfDatabase();
    createDatabase(address_, out_, {}, {.changeLog = fromTheStart});
    const std::string role =
        textOrEmpty(office_->read("SELECT current_database()::text")->columns.front().value(0));
    office_->execute(concat("CREATE ROLE ", role, "_anna LOGIN IN ROLE ", role, "_desks"));
    if (!fromTheStart) switchChangeLog(address_, true, out_);

    const std::string annas = std::string(address_).replace(
        address_.find("postgres@"), sizeof "postgres@" - 1, role + "_anna@");
    add(openPostgres(annas), 1);
    EXPECT_EQ(history(annas).find("No change"), std::string::npos);
    const std::unique_ptr<Engine> desk = openPostgres(annas);
    for (const char* statement : {"UPDATE ChangeLog SET UserName = 'x'", "DELETE FROM ChangeLog"})
      EXPECT_EQ(refusalOf([&] { return desk->execute(statement); }),
                refusalSentence(Refusal::notAllowed))
          << statement;

    // Its daily copy reads all that there is.
    const auto backUp = [&] { return backUpDatabase(annas, folder_ / role, {}, out_); };
    EXPECT_EQ(backUp(), Exit::done) << said();
    switchChangeLog(address_, false, out_);
    EXPECT_EQ(backUp(), Exit::done) << said();
  }
}

TEST_F(CommandsTest, TheChangeLogMovesAlongAndGoesOnOrStaysStopped) {
  const std::string file = folder_ / "office.db";
  createDatabase(file, out_, {}, {.changeLog = true});
  for (const int number : {1, 2, 3}) add(openSqlite(file), number);
  openSqlite(file)->execute("DELETE FROM ChangeLog WHERE Number = 2");

  copyDatabase(file, address_, out_);
  EXPECT_EQ(history(address_), history(file));
  add(openPostgres(address_), 4);
  EXPECT_EQ(office_->read("SELECT Number FROM ChangeLog")->rowCount(), 3U);

  switchChangeLog(address_, false, out_);
  const std::string back = folder_ / "back.db";
  copyDatabase(address_, back, out_);
  EXPECT_EQ(history(back), history(address_));
  EXPECT_EQ(ChangeLog::of(*openSqlite(back)), nullptr);
}

// Another station has written to the log, and commits once the lines are in the file.
TEST_F(CommandsTest, PruningTakesOutTheLinesThatStandInTheFileAndNoOther) {
  createDatabase(address_, out_, {}, {.changeLog = true});
  const std::string file = folder_ / "lines";
  const auto pruneWhile = [&](const std::string& theirs) {
    PostgresLink other(address_, {});
    other.query(concat("BEGIN; LOCK TABLE ChangeLog IN SHARE MODE; ", theirs));
    std::atomic<bool> ended = false;
    std::string refusal;
    std::thread pruning([&] {
      try {
        pruneHistory(address_, *makeDate(2026, 1, 1), file, out_);
      } catch (const std::exception& error) {
        refusal = error.what();
      }
      ended = true;
    });
    const std::string waiting =
        "SELECT 1 FROM pg_locks WHERE NOT granted AND relation = 'changelog'::regclass";
    while (!ended && office_->read(waiting)->rowCount() == 0) std::this_thread::yield();
    other.query("COMMIT");
    pruning.join();
    return refusal;
  };
  office_->execute(lineOf("2025-01-01"));
  EXPECT_EQ(pruneWhile(lineOf("2025-02-02")), "");
  EXPECT_EQ(history(address_).find("2025-01-01"), std::string::npos);
  EXPECT_NE(history(address_).find("2025-02-02"), std::string::npos) << "it stands in no file";

  std::filesystem::remove(file);
  EXPECT_TRUE(pruneWhile("DELETE FROM ChangeLog").starts_with("Somebody else"));
  EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(CommandsTest, CheckSaysWhenTheServerKeepsNoChecksums) {
  createDatabase(address_, out_, {}, {.starter = true});
  said();
  EXPECT_EQ(checkDatabase(address_, out_), Exit::done) << out_.str();
  const bool isLookedAt =
      office_->read("SELECT 1 WHERE current_setting('data_checksums') = 'on'")->rowCount() == 1;
  EXPECT_EQ(said().find("checksums") == std::string::npos, isLookedAt);
}

}  // namespace
}  // namespace bw
