#include "data/BWSQLCharges.h"

#include <regex>

#include "data/BWSQLPatients.h"
#include "tests/data/Routines.h"
#include "tests/server/TestDatabase.h"

namespace bw {
namespace {

class ChargesTest : public RoutineTest {
 protected:
  std::string insert(const std::string& diagnoses, const std::string& procedures) {
    return told(ChargeInsert(25001, date, time, day(2003, 6, 14), 1, 1, 2, 1, diagnoses, procedures,
                             0, message));
  }
  std::string update(const std::string& diagnoses, const std::string& procedures) {
    return told(ChargeUpdate(25000, kSeedDate, kSeedTime, day(2003, 5, 31), 1, 2, 1, 1, diagnoses,
                             procedures, 2, message));
  }
  std::string remove() { return told(ChargeDelete(25000, kSeedDate, kSeedTime, message)); }
  std::string removeDiagnosis() {
    return told(ChargeDiagnosisDelete(25000, kSeedDate, kSeedTime, 1, message));
  }
  std::string removeProcedure() {
    return told(ChargeProcedureDelete(25000, kSeedDate, kSeedTime, 1, message));
  }
  std::string setLot(int lot) {
    return told(ChargeSetPrintLot(25000, kSeedDate, kSeedTime, lot, 1, message));
  }

  // Detail statements and transaction marks in short: "BEGIN d-1 d+2 p+3 row COMMIT".
  std::string issued() {
    static const std::pair<std::regex, const char*> kShort[] = {
        {std::regex("INSERT INTO ChargeDiagnosis.* (\\d+)\\)"), "d+$1"},
        {std::regex("INSERT INTO ChargeProcedures.* (\\d+)\\)"), "p+$1"},
        {std::regex("DELETE FROM ChargeDiagnosis.* (\\d+)"), "d-$1"},
        {std::regex("DELETE FROM ChargeProcedures.* (\\d+)"), "p-$1"},
        {std::regex(".*PatientCharges.*"), "row"}};
    std::string text;
    for (std::string statement : takeStatements()) {
      if (statement.starts_with("SELECT")) continue;
      for (const auto& [from, to] : kShort) statement = std::regex_replace(statement, from, to);
      text += (text.empty() ? "" : " ") + statement;
    }
    return text;
  }

  std::string details() {
    return rows("SELECT DiagnosisCode FROM ChargeDiagnosis WHERE PatientId=25000") + "/" +
           rows("SELECT ProcedureCode FROM ChargeProcedures WHERE PatientId=25000");
  }

  Date date;
  TimeOfDay time;
};

TEST_F(ChargesTest, NewChargeTakesItsKeyFromTheClockAndItsDetailsInOrder) {
  ASSERT_EQ(insert(";3;1;", ";2;"), "0");
  EXPECT_EQ(issued(), "BEGIN row d+3 d+1 p+2 COMMIT");
  EXPECT_EQ(date, now.date);
  EXPECT_EQ(time, now.time);
  EXPECT_EQ(rows("SELECT * FROM PatientCharges WHERE PatientId=25001"),
            "25001|6/15/2003|2:05:09 PM|6/14/2003|1|1|1|2|0|null");
  const RecordSetRef stored = ChargeDiagnosisList(25001, date, time);
  ASSERT_EQ(stored->RecordCount(), 2);
  EXPECT_EQ(stored->text("Description"), "d1");
  EXPECT_EQ(ChargeProceduresList(25001, date, time)->code("ProcedureCode"), 2);
}

TEST_F(ChargesTest, FailingDetailTakesTheNewChargeBackAndItsTextSurvives) {
  EXPECT_EQ(insert(";1;99;2;", ";1;"), concat("2 ", kMissingParent));
  EXPECT_EQ(issued(), onServer() ? "BEGIN row d+1 d+99 d+2 p+1 COMMIT p+1 ROLLBACK"
                                 : "BEGIN row d+1 d+99 p+1 ROLLBACK");
  EXPECT_EQ(insert(";1;1;", ";"), concat("2 ", kDuplicateKey)) << "a code twice";
  EXPECT_EQ(insert(";40000;", ";"), "1 Overflow") << "a code beyond 16 bits";
  EXPECT_EQ(date, Date{});
  EXPECT_EQ(count("PatientCharges"), "1");
  EXPECT_EQ(count("ChargeProcedures"), "1");
}

TEST_F(ChargesTest, UpdateTouchesOnlyTheDifference) {
  const struct {
    const char* diagnoses;
    const char* procedures;
    const char* wantedDiagnoses;
    const char* wantedProcedures;
    const char* issued;
    std::string told;
  } cases[] = {
      {"2,3", "1", ";1;2;", ";1;", "BEGIN d-3 d+1 row COMMIT", "0"},
      {"0", "0", ";1;", ";2;", "BEGIN d+1 p+2 row COMMIT", "0"},
      {"1,2", "3", ";2;1;", ";3;", "BEGIN row COMMIT", "0"},
      {"1", "1", "", ";;",
       onServer() ? "BEGIN d-1 p-1 p+0 row ROLLBACK" : "BEGIN d-1 p-1 p+0 ROLLBACK",
       concat("3 ", kMissingParent)},
      {"2", "1", ";3;99;1;", ";",
       onServer() ? "BEGIN d-2 d+3 d+99 d+1 p-1 row ROLLBACK" : "BEGIN d-2 d+3 d+99 ROLLBACK",
       concat("3 ", kMissingParent)},
      {"2", "1", ";2;", ";2;40000;", "BEGIN p-1 p+2 ROLLBACK", "1 Overflow"},
      {"2", "1", ";2;3", ";1", "BEGIN p-1 row COMMIT", "0"},
  };
  const auto store = [](const std::string& catalogue, const std::string& code, const char* codes) {
    run("DELETE FROM Charge" + catalogue);
    run("INSERT INTO Charge" + catalogue + " SELECT PatientId, ChargeDate, ChargeTime, " + code +
        " FROM PatientCharges, " + catalogue + " WHERE " + code + " IN (" + codes + ")");
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(std::string(test.wantedDiagnoses) + " " + test.wantedProcedures);
    store("Diagnosis", "DiagnosisCode", test.diagnoses);
    store("Procedures", "ProcedureCode", test.procedures);
    const std::string before = details();
    takeStatements();
    EXPECT_EQ(update(test.wantedDiagnoses, test.wantedProcedures), test.told);
    EXPECT_EQ(issued(), test.issued);
    EXPECT_TRUE(test.told == "0" || details() == before) << details();
  }
}

TEST_F(ChargesTest, ChargeThatHasGoneIsToldByItsCode) {
  ASSERT_EQ(remove(), "0");
  EXPECT_EQ(issued(), "row");
  EXPECT_EQ(details(), "/") << "the details follow by the relation";
  EXPECT_EQ(update(";", ";"), "2 U:IMPACTENT");
  EXPECT_EQ(setLot(5), "2 U:IMPACTENT");
  EXPECT_EQ(remove(), "2 U:IMPELIENT");
  EXPECT_EQ(removeDiagnosis(), "2 U:IMPELIENT");
  EXPECT_EQ(removeProcedure(), "2 No records afected by the DELETE");
}

TEST_F(ChargesTest, OnlyTheDeleteOfAChargeHidesADatabaseError) {
  closeConnection();
  EXPECT_EQ(remove(), "2 U:IMPELIENT");
  EXPECT_EQ(removeDiagnosis(), concat("1 ", kClosed));
  EXPECT_EQ(removeProcedure(), concat("1 ", kClosed));
  // The last error of the routine stands: the rollback of a transaction that never began.
  for (const std::string& told : {insert(";", ";"), setLot(5)})
    EXPECT_EQ(told, "1 No transaction is active.");
}

TEST_F(ChargesTest, OnlyANegativeLotLeavesTheLotAlone) {
  for (const auto& [lot, stored] :
       {std::pair{-1, "null"}, {0, "0"}, {2147483647, "2147483647"}, {-1, "2147483647"}}) {
    EXPECT_EQ(setLot(lot), "0");
    EXPECT_EQ(rows("SELECT PrintLot FROM PatientCharges"), stored);
  }
}

}  // namespace
}  // namespace bw
