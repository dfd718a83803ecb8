#include <gtest/gtest.h>

#include <sstream>

#include "engine/ChangeLog.h"
#include "engine/Connection.h"
#include "engine/PostgresEngine.h"
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

}  // namespace
}  // namespace bw
