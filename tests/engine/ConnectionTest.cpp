#include "engine/Connection.h"

#include <unistd.h>

#include <array>
#include <chrono>
#include <filesystem>

#include "engine/BreakableReading.h"
#include "engine/ReadAhead.h"
#include "engine/SqliteEngine.h"
#include "engine/Workgroup.h"
#include "tests/records/Rows.h"
#include "tests/server/TestDatabase.h"
#include "tests/text/Raised.h"
#include "tests/tools/TemporaryFolder.h"
#include "text/Text.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

void insert(Connection& into, const std::string& letter) {
  into.Execute("INSERT INTO Letters VALUES ('" + letter + "', 1)");
}

// Begins a level at "(", commits it at ")", rolls it back at "!", and inserts every other letter.
void act(Connection& with, std::string_view steps) {
  for (const char step : steps)
    if (step == '(')
      with.BeginTrans();
    else if (step == ')')
      with.CommitTrans();
    else if (step == '!')
      with.RollbackTrans();
    else
      insert(with, {step});
}

std::string lettersOf(Connection& from, const std::string& condition = "ORDER BY Letter") {
  return told(*from.Read("SELECT Letter FROM Letters " + condition));
}

constexpr const char* kLetters =
    "CREATE TABLE Letters (Letter TEXT NOT NULL, Number SMALLINT, PRIMARY KEY (Letter))";
constexpr const char* kSameKey = "There is a record with the same key already.";

class ConnectionTest : public ::testing::Test {
 protected:
  ConnectionTest() : connection(emptyDatabase()) { run(kLetters); }

  void run(const std::string& statement) { connection.Execute(statement); }
  void act(std::string_view steps) { bw::act(connection, steps); }
  std::string letters() { return lettersOf(connection); }

  Connection connection;
};

// Each would go on for minutes, with rows and without.
TEST_F(ConnectionTest, AReadingThatIsBrokenOffEndsAndTheNextStatementRuns) {
  act("ABCDEFGHIJKLMNOPQRSTUVWXYZ");
  const std::string all = letters();
  for (const char* what : {"a.Letter", "count(*) AS n"}) {
    const std::string statement = concat("SELECT ", what,
                                         " FROM Letters a, Letters b, Letters c, Letters d, "
                                         "Letters e, Letters f, Letters g");
    for (const bool inTransaction : {false, true}) {
      if (inTransaction) act("(a");
      int asked = 0;
      {
        const BreakableReading breakable([&asked] { return ++asked == 3; });
        EXPECT_THROW(connection.Read(statement), BrokenOff);
      }
      EXPECT_EQ(asked, 3);
      if (inTransaction) connection.RollbackTrans();
      EXPECT_EQ(letters(), all);
    }
  }
}

TEST_F(ConnectionTest, InnerRollbackLeavesTheOuterLevel) {
  act("(A(B!(C(D!))");
  EXPECT_EQ(letters(), "A C");
  EXPECT_EQ(connection.transactionLevel(), 0);
}

TEST_F(ConnectionTest, EndOfATransactionThatIsNoneIsAnError) {
  EXPECT_EQ(raisedBy([&] { connection.CommitTrans(); }), ErrorNumber::noTransaction);
  EXPECT_EQ(refusalOf([&] { connection.RollbackTrans(); }), "No transaction is active.");
  Connection closed;
  EXPECT_EQ(raisedBy([&] { closed.BeginTrans(); }), ErrorNumber::closed);
  EXPECT_EQ(closed.transactionLevel(), 0);
}

TEST_F(ConnectionTest, CommitThatFailsRollsBackAndTheNextOneWorks) {
  run("CREATE TABLE Notes (Letter TEXT REFERENCES Letters DEFERRABLE INITIALLY DEFERRED)");
  connection.BeginTrans();
  run("INSERT INTO Notes VALUES ('Z')");
  EXPECT_EQ(raisedBy([&] { connection.CommitTrans(); }), ErrorNumber::database);
  EXPECT_EQ(connection.transactionLevel(), 0);
  EXPECT_EQ(connection.Read("SELECT * FROM Notes")->RecordCount(), 0);
  act("(A)");
  EXPECT_EQ(letters(), "A");
}

// A full disk makes the engine roll back by itself; a bare ROLLBACK does the same to it. On a
// server it is a connection that breaks.
TEST_F(ConnectionTest, NothingIsStoredBehindATransactionThatTheEngineGaveUp) {
  act("(A(");
  if (onServer())
    cutConnections();
  else
    run("ROLLBACK");
  EXPECT_EQ(raisedBy([&] { act("B"); }), ErrorNumber::database);
  EXPECT_EQ(raisedBy([&] { act("("); }), ErrorNumber::database);
  EXPECT_EQ(raisedBy([&] { connection.CommitTrans(); }), ErrorNumber::database);
  EXPECT_EQ(connection.transactionLevel(), 1);
  EXPECT_EQ(raisedBy([&] { act("C"); }), ErrorNumber::database);
  connection.RollbackTrans();
  EXPECT_EQ(connection.transactionLevel(), 0);
  EXPECT_EQ(letters(), "");
  act("D");
  EXPECT_EQ(letters(), "D");
}

TEST_F(ConnectionTest, CountsTheRowsMatchedAndNoCascades) {
  run("CREATE TABLE Notes (Letter TEXT REFERENCES Letters ON DELETE CASCADE)");
  run("INSERT INTO Letters VALUES ('A', 1), ('B', 1)");
  run("INSERT INTO Notes VALUES ('A'), ('A')");
  EXPECT_EQ(connection.Execute("UPDATE Letters SET Number=1 WHERE Number=1"), 2);
  EXPECT_EQ(connection.Execute("UPDATE Letters SET Number=1 WHERE Number=7"), 0);
  EXPECT_EQ(connection.Execute("DELETE FROM Letters WHERE Number=1"), 2);
  EXPECT_EQ(connection.Execute("SELECT * FROM Letters"), 0);
  EXPECT_EQ(refusalOf([&] { run(""); }), "The statement is empty.");
}

TEST_F(ConnectionTest, ResultKeepsDeclaredTypesThroughQueriesAndSeesNoLaterChange) {
  run(std::string("CREATE TABLE Moments (Code SMALLINT, D DATE, T TIME, S ") +
      (onServer() ? "TIMESTAMP" : "DATETIME") + ", Names TEXT)");
  run("CREATE VIEW Shown AS SELECT Code AS Number, D, T, S, Names, 0 AS checked, Code || '' AS "
      "Joined FROM Moments");
  run("INSERT INTO Moments VALUES (7, #06/15/2003#, #14:05:09#, #2003/06/15 14:05:09#, 'Zoë')");
  run("INSERT INTO Moments VALUES (NULL, NULL, NULL, NULL, NULL)");
  const RecordSetRef shown = connection.Read("select * from [shown]");
  run("DELETE FROM Moments");
  EXPECT_EQ(raisedBy([&] { shown->set("Number", 40000); }), ErrorNumber::multipleStep);
  shown->set("checked", 1);
  EXPECT_EQ(told(*shown),
            "7|6/15/2003|2:05:09 PM|6/15/2003 2:05:09 PM|Zoë|1|7 "
            "null|null|null|null|null|0|null");
}

TEST_F(ConnectionTest, ReadsOfOneShapeSeeWhatIsStored) {
  run("INSERT INTO Letters VALUES ('A', 1), ('B', 2), ('C', NULL), ('D', 12)");
  const auto read = [&](const std::string& number) {
    return lettersOf(connection, "WHERE Number=" + number);
  };
  for (const auto& [number, found] :
       {std::pair{"1", "A"}, {"2", "B"}, {"012", "D"}, {"7", ""}, {"99999999999999999999", ""}})
    EXPECT_EQ(read(number), found) << number;
  run("UPDATE Letters SET Number=7 WHERE Letter='A'");
  EXPECT_EQ(read("7"), "A");
  EXPECT_EQ(read("2"), "B");
  for (const char* number : {"1", "2"})
    EXPECT_EQ(
        refusalOf([&] { connection.Read(concat("SELECT * FROM Lost WHERE Number=", number)); }),
        onServer() ? "relation \"lost\" does not exist" : "no such table: Lost");
  run("DROP TABLE Letters");
  EXPECT_NE(refusalOf([&] { read("2"); }), "");
}

TEST_F(ConnectionTest, ChangesOfOneShapeCountAndFailEachByItself) {
  run("INSERT INTO Letters VALUES ('A', 1), ('B', 2), ('C', 2), ('it''s', 3)");
  const auto rename = [&](const std::string& to, const std::string& condition) {
    return connection.Execute("UPDATE Letters SET Letter='" + to + "' WHERE " + condition);
  };
  EXPECT_EQ(rename("D", "Number=1"), 1);
  EXPECT_EQ(rename("E", "Number=7"), 0);
  // Two shapes in turns, a refusal between them, and a transaction that goes on behind it.
  connection.BeginTrans();
  EXPECT_EQ(rename("F", "Letter='B'"), 1);
  for (const char* condition : {"Number=3", "Letter='C'"})
    EXPECT_EQ(refusalOf([&] { rename("F", condition); }), kSameKey);
  EXPECT_EQ(rename("G", "Letter='it''s'"), 1);
  EXPECT_EQ(rename("O''B", "Letter='G'"), 1);
  connection.CommitTrans();
  EXPECT_EQ(letters(), "C D F O'B");
}

TEST_F(ConnectionTest, StatementsWrittenTogetherEndAtTheFirstThatIsRefused) {
  const auto write = [&](std::vector<std::string> all, Then then) {
    for (std::string& letter : all) letter = "INSERT INTO Letters VALUES ('" + letter + "', 1)";
    return connection.WriteAll(all, then);
  };
  connection.BeginTrans();
  EXPECT_TRUE(write({"A", "B"}, Then::commit).isEnded);
  EXPECT_EQ(connection.transactionLevel(), 0);

  connection.BeginTrans();
  Connection::Written written = write({"A", "C"}, Then::commit);
  EXPECT_TRUE(written.rows.empty()) << "the first of a transaction has no savepoint";
  EXPECT_EQ(written.refusal->text(), kSameKey);
  written = write({"C", "D", "B", "E"}, Then::commit);
  EXPECT_EQ(written.rows.size(), 2);
  EXPECT_FALSE(written.isEnded);
  EXPECT_EQ(connection.transactionLevel(), 1);
  written = write({"F", "G'), ('H"}, Then::commit);
  EXPECT_EQ(written.rows.size(), 1) << "no plain write";
  EXPECT_TRUE(written.refusal && !written.isEnded);
  connection.CommitTrans();
  EXPECT_EQ(letters(), "A B C D F");

  connection.BeginTrans();
  connection.BeginTrans();
  EXPECT_TRUE(write({"X"}, Then::commit).isEnded) << "the inner level";
  connection.RollbackTrans();
  EXPECT_EQ(letters(), "A B C D F");
}

TEST_F(ConnectionTest, WhatWasReadAheadIsForgottenBehindAWrite) {
  const std::array statements{std::string("SELECT Letter FROM Letters ORDER BY Letter"),
                              std::string("SELECT * FROM Lost")};
  const auto read = [&] { return told(*connection.Read(statements.front())); };
  act("A");
  const ReadAhead refused(connection, statements);
  EXPECT_EQ(read(), "A");
  const ReadAhead ahead(connection, std::span(statements).first(1));
  act("B");
  EXPECT_EQ(read(), "A B");
}

// Files that are opened: a folder of its own for each test.
class ConnectionOpenTest : public ::testing::Test {
 protected:
  ConnectionOpenTest() {
    fs::permissions(folder.path(),
                    fs::perms::owner_all | fs::perms::group_exec | fs::perms::others_exec);
    folder.write("office.dw", workgroupText("Kelps", "secret"));
    folder.write("office.db", "");  // an empty file is an empty database
  }
  std::string file(const std::string& name) const { return (folder / name).string(); }
  std::string refusalOfOpen(const std::string& name = "office.db",
                            const std::string& account = "User Id=Kelps;Password=secret") const {
    Connection connection;
    connection.ConnectionString = "Provider=x;Data Source=" + file(name) +
                                  ";Jet OLEDB:System database=" + file("office.dw") + ";" + account;
    const std::string refusal = refusalOf([&] { connection.Open(); });
    EXPECT_EQ(connection.isOpen(), refusal.empty());
    return refusal;
  }
  // A station that has letters, and one at the same file.
  Connection openFirst() const {
    Connection first(openSqlite(file("office.db")));
    first.Execute("PRAGMA journal_mode=WAL");
    first.Execute(kLetters);
    act(first, "(A");
    return first;
  }
  Connection openSecond(int patience) const {
    return Connection(
        openSqlite(file("office.db"), {.busyTimeout = std::chrono::milliseconds(patience)}));
  }
  // Root may write whatever the file says: the call is somebody else's.
  template <class Call>
  static std::string refusalOfNobody(Call call) {
    const uid_t self = geteuid();
    constexpr uid_t kNobody = 65534;
    EXPECT_EQ(seteuid(self == 0 ? kNobody : self), 0);
    const std::string refusal = refusalOf(call);
    EXPECT_EQ(seteuid(self), 0);
    return refusal;
  }

  TemporaryFolder folder;
};

TEST_F(ConnectionOpenTest, TellsWhatIsWrongWithTheDatabase) {
  EXPECT_EQ(refusalOfOpen(), "");
  const std::string notOpened = "The database file cannot be opened: ";
  EXPECT_EQ(refusalOfOpen("missing.db"), notOpened + "there is no file " + file("missing.db"));
  EXPECT_FALSE(fs::exists(folder / "missing.db"));
  fs::create_directory(folder / "folder.db");
  EXPECT_EQ(refusalOfOpen("folder.db"), notOpened + "there is no file " + file("folder.db"));
  folder.write("rubbish.db", std::string(4096, 'x'));
  EXPECT_EQ(refusalOfOpen("rubbish.db"), "The database file is damaged or is no database.");
}

TEST_F(ConnectionOpenTest, TellsWhatIsWrongWithTheWorkgroup) {
  EXPECT_EQ(workgroupPathOf(file("office.db")), file("office.dw"));
  EXPECT_EQ(refusalOfOpen("office.db", "user id=Kelps;PASSWORD=secret"), "");
  const std::string invalid = "The account or its password is not valid.";
  for (const char* account : {"User Id=Kelps;Password=Secret", "User Id=kelps;Password=secret",
                              "User Id=Kelps", "Password=secret", ""})
    EXPECT_EQ(refusalOfOpen("office.db", account), invalid) << account;
  for (const char* damaged : {"", "rubbish", "workgroup 1\nKelps\n", "workgroup 2\nKelps\nx\n"}) {
    folder.write("office.dw", damaged);
    EXPECT_EQ(refusalOfOpen(), "The workgroup file is damaged: " + file("office.dw")) << damaged;
  }
  folder.write("office.dw", "workgroup 1\nKelps\nno verifier\n");
  EXPECT_EQ(refusalOfOpen(), invalid);
  fs::remove(folder / "office.dw");
  EXPECT_EQ(refusalOfOpen(), "The workgroup file cannot be read: " + file("office.dw"));
}

TEST_F(ConnectionOpenTest, FileThatCannotBeWrittenIsRefused) {
  const auto readers = fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read;
  fs::permissions(folder / "office.db", readers);
  EXPECT_EQ(refusalOfNobody([&] { openSqlite(file("office.db")); }),
            "The database cannot be written: its file or folder is read-only.");
}

TEST_F(ConnectionOpenTest, APartOfTheDatabaseThatAnotherUserOwnsIsNamed) {
  Connection(openSqlite(file("office.db"))).Execute("PRAGMA journal_mode=WAL");
  folder.write("office.db-wal", "");
  folder.write("office.db-shm", "");
  const auto all = fs::perms::owner_read | fs::perms::owner_write | fs::perms::others_read |
                   fs::perms::others_write;
  fs::permissions(file("office.db"), all);
  fs::permissions(file("office.db-wal"), fs::perms::none);
  const std::string refusal = refusalOfNobody([&] { openSqlite(file("office.db")); });
  EXPECT_TRUE(refusal.starts_with("A part of the database belongs to another user: " +
                                  file("office.db-wal")))
      << refusal;
}

TEST_F(ConnectionOpenTest, ALoopWaitsInFullForALockOnce) {
  Connection first = openFirst();
  Connection second = openSecond(400);
  const auto refusedAfter = [&second] {
    const auto begun = std::chrono::steady_clock::now();
    EXPECT_NE(refusalOf([&] { insert(second, "B"); }), "");
    return std::chrono::steady_clock::now() - begun;
  };
  const auto full = refusedAfter();
  second.relaxSync();
  EXPECT_GT(refusedAfter(), full / 2) << "the first of the loop waits in full";
  second.changesOfOthers();
  EXPECT_LT(refusedAfter(), full / 2);
  first.RollbackTrans();
  second.restoreSync();
  act(first, "(A");
  EXPECT_GT(refusedAfter(), full / 2) << "behind the loop as before it";
}

TEST_F(ConnectionOpenTest, LockOfAnotherStationFailsTheStatementUntilItIsReleased) {
  Connection first = openFirst();
  Connection second = openSecond(0);
  EXPECT_EQ(second.BeginTrans(), 1) << "the lock must show at the statement";
  EXPECT_EQ(refusalOf([&] { insert(second, "B"); }),
            "The database is locked by another station. Please try again in a moment.");
  EXPECT_EQ(second.transactionLevel(), 1);
  EXPECT_EQ(lettersOf(second), "");
  second.RollbackTrans();
  first.CommitTrans();
  act(second, "(B)");
  EXPECT_EQ(lettersOf(first), "A B");
}

}  // namespace
}  // namespace bw
