#include "core/Principal.h"
#include "data/BWSQLCharges.h"
#include "data/SavedQueries.h"
#include "data/Schema.h"
#include "tests/data/Routines.h"
#include "tests/server/TestDatabase.h"

namespace bw {
namespace {

// An office whose database keeps a log of changes, which is empty.
class ChangeLogTest : public RoutineTest {
 protected:
  void SetUp() override {
    DatabaseConnection = Connection();
    auto engine = emptyOffice();
    engine_ = engine.get();
    keepChangeLog(*engine, true);
    DatabaseConnection = officeConnection(std::move(engine));
    seedOffice();
    engine_->execute("DELETE FROM ChangeLog");
  }

  // The rows that each statement of the log matched, and how it begins.
  static std::string log() {
    return rows("SELECT RowCount, substr(Statement, 1, 18) FROM ChangeLog ORDER BY Number");
  }

  Engine* engine_ = nullptr;
};

TEST_F(ChangeLogTest, LineOfAStatementIsStoredWithItOrNeitherIs) {
  EXPECT_EQ(InsuranceUpdate(1, "Second", "S", message), 0);
  EXPECT_EQ(InsuranceUpdate(7, "Third", "T", message), 2);  // no such row: rolled back
  EXPECT_EQ(InsuranceDelete(1, message), 1);                // refused: in use
  EXPECT_EQ(log(), "1|UPDATE Insurance S");
  EXPECT_EQ(rows("SELECT Statement FROM ChangeLog"),
            "UPDATE Insurance SET Description='Second', BillingInsuranceCode='S' WHERE "
            "InsuranceCode = 1");

  // Outside of a transaction, and more than one row at a time.
  run("UPDATE Diagnosis SET RealDiagnosisCode='R'");
  EXPECT_THROW(run("UPDATE Diagnosis SET DiagnosisCode=1"), RuntimeError);
  EXPECT_EQ(log(), "1|UPDATE Insurance S 5|UPDATE Diagnosis S");
}

TEST_F(ChangeLogTest, TakesTheRoadOfTransactionsWithinOneAnother) {
  Date date;
  TimeOfDay time;
  const auto insert = [&](const std::string& diagnoses) {
    return ChargeInsert(25001, date, time, now.date, 1, 1, 2, 1, diagnoses, ";", 0, message);
  };
  EXPECT_EQ(insert(";1;1;"), 2);  // the second detail is refused
  EXPECT_EQ(log(), "");
  EXPECT_EQ(insert(";1;2;"), 0);
  EXPECT_EQ(log(), "1|INSERT INTO Patien 1|INSERT INTO Charge 1|INSERT INTO Charge");
  DatabaseConnection.BeginTrans();
  run("UPDATE Insurance SET Description='x'");
  EXPECT_THROW(run("INSERT INTO Insurance VALUES (1, 'y', '')"), RuntimeError);
  DatabaseConnection.RollbackTrans();
  EXPECT_EQ(count("ChangeLog"), "3");
}

TEST_F(ChangeLogTest, LineThatCannotBeWrittenFailsItsStatement) {
  engine_->execute("ALTER TABLE ChangeLog RENAME COLUMN Station TO Lost");
  EXPECT_EQ(InsuranceUpdate(1, "Second", "S", message), 1);
  EXPECT_NE(message.find("tation"), std::string::npos) << message;
  EXPECT_THROW(run("UPDATE Insurance SET Description='x'"), RuntimeError);
  EXPECT_EQ(rows("SELECT Description FROM Insurance"), "Mutual");
}

TEST_F(ChangeLogTest, StopsForProgramsThatStartThenAndGoesOnWithTheLinesOfBefore) {
  keepChangeLog(*engine_, false);
  run("UPDATE Insurance SET Description='one'");  // this one goes on as it began
  EXPECT_EQ(ChangeLog::of(*engine_), nullptr);
  keepChangeLog(*engine_, false);
  keepChangeLog(*engine_, true);
  EXPECT_NE(ChangeLog::of(*engine_), nullptr);
  EXPECT_EQ(count("ChangeLog"), "1");
}

}  // namespace
}  // namespace bw
