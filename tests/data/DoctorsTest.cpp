#include "tests/data/Routines.h"
#include "tests/records/Rows.h"

namespace bw {
namespace {

class DoctorsTest : public RoutineTest {
 protected:
  void SetUp() override {
    RoutineTest::SetUp();
    run("INSERT INTO DoctorCoveringDoctors VALUES (1, 2), (1, 3), (4, 1)");
    takeStatements();
  }

  std::string update(const std::string& coverage) {
    return told(DoctorUpdate(1, "Ames, A.", "X", coverage, message));
  }
  // The first words of the statements issued.
  std::string issued() {
    std::string words;
    for (const std::string& statement : takeStatements())
      words += statement.substr(0, statement.find(' ')) + " ";
    return words;
  }
  static std::string coverage() {
    return rows("SELECT CoveringDoctorCode FROM DoctorCoveringDoctors WHERE DoctorCode=1");
  }
};

TEST_F(DoctorsTest, PairsAreDeletedInATransactionOfTheirOwnAndInsertedWithout) {
  ASSERT_EQ(update(";3;4;"), "0");
  EXPECT_EQ(issued(), "SELECT BEGIN SAVEPOINT DELETE RELEASE INSERT UPDATE COMMIT ");
  EXPECT_EQ(coverage(), "3 4");
  issued();
  ASSERT_EQ(update(";4;3;"), "0");
  EXPECT_EQ(issued(), "SELECT BEGIN UPDATE COMMIT ") << "an unchanged list touches no pair";
  ASSERT_EQ(update(";1;"), "0") << "a doctor may cover for himself";
  ASSERT_EQ(update(";"), "0");
  EXPECT_EQ(coverage(), "");
}

TEST_F(DoctorsTest, OuterRollbackUndoesTheInnerCommit) {
  EXPECT_EQ(update(";3;99;"), concat("3 ", kMissingParent))
      << "2 was deleted and committed by then";
  EXPECT_EQ(coverage(), "2 3");
  EXPECT_EQ(update(";3;4"), "0") << "what follows the last separator does not count";
  EXPECT_EQ(DoctorUpdate(1, "O'Hara", "", ";4;", message), 1);
  EXPECT_EQ(coverage(), "3");
  EXPECT_EQ(rows("SELECT Description FROM Doctors WHERE DoctorCode=1"), "Ames, A.");
}

TEST_F(DoctorsTest, PairThatAnotherStationDeletedFailsTheUpdate) {
  onStatement = [&](std::string_view statement) {
    if (statement != "BEGIN") return;
    onStatement = nullptr;
    run("DELETE FROM DoctorCoveringDoctors WHERE CoveringDoctorCode=3");
  };
  EXPECT_EQ(update(";4;"), "3 U:IMPELIENT");
  EXPECT_TRUE(issued().ends_with("ROLLBACK RELEASE ROLLBACK "));
  EXPECT_EQ(coverage(), "2");
}

TEST_F(DoctorsTest, NewDoctorIsStoredWithAllPairsOrNotAtAll) {
  std::int16_t code = 0;
  EXPECT_EQ(told(DoctorInsert(code, "Egan", "E", ";1;99;2;", message)),
            concat("2 ", kMissingParent));
  EXPECT_EQ(code, 0);
  EXPECT_EQ(count("Doctors") + count("DoctorCoveringDoctors"), "43");
  ASSERT_EQ(DoctorInsert(code, "Egan", "E", ";2;1;", message), 0);
  EXPECT_EQ(code, 5);
  EXPECT_EQ(bw::told(*CoveringDoctorList(5)), "5|1 5|2");
}

}  // namespace
}  // namespace bw
