#include "data/BWSQLCharges.h"

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
    std::string text;
    for (const std::string& statement : takeStatements()) {
      if (statement.starts_with("SELECT")) continue;
      if (!text.empty()) text += ' ';
      text += inShort(statement);
    }
    return text;
  }

  std::string details() {
    return rows("SELECT DiagnosisCode FROM ChargeDiagnosis WHERE PatientId=25000") + "/" +
           rows("SELECT ProcedureCode FROM ChargeProcedures WHERE PatientId=25000");
  }

  Date date;
  TimeOfDay time;

 private:
  static std::string inShort(const std::string& statement) {
    const bool diagnosis = statement.find("ChargeDiagnosis") != std::string::npos;
    if (!diagnosis && statement.find("ChargeProcedures") == std::string::npos)
      return statement.find("PatientCharges") == std::string::npos ? statement : "row";
    const std::string kind = diagnosis ? "d" : "p";
    if (statement.starts_with("DELETE"))
      return kind + "-" + statement.substr(statement.rfind(' ') + 1);
    const std::size_t code = statement.rfind(' ') + 1;
    return kind + "+" + statement.substr(code, statement.rfind(')') - code);
  }
};

TEST_F(ChargesTest, NewChargeTakesItsKeyFromTheClockAndItsDetailsInOrder) {
  ASSERT_EQ(insert(";3;1;", ";2;"), "0");
  EXPECT_EQ(takeStatements(),
            (Strings{"BEGIN",
                     "INSERT INTO PatientCharges (PatientId, ChargeDate, ChargeTime, "
                     "ChargeRealDate, FacilityCode, EMCode, DoctorCode, ReferDoctorCode, Status) "
                     "VALUES (25001, #06/15/2003#, #14:05:09#, #06/14/2003#, 1,1,1,2,0)",
                     "INSERT INTO ChargeDiagnosis (PatientId, ChargeDate, ChargeTime,  "
                     "DiagnosisCode ) VALUES (25001, #06/15/2003#, #14:05:09#, 3)",
                     "INSERT INTO ChargeDiagnosis (PatientId, ChargeDate, ChargeTime,  "
                     "DiagnosisCode ) VALUES (25001, #06/15/2003#, #14:05:09#, 1)",
                     "INSERT INTO ChargeProcedures (PatientId, ChargeDate, ChargeTime,  "
                     "ProcedureCode ) VALUES (25001, #06/15/2003#, #14:05:09#, 2)",
                     "COMMIT"}));
  EXPECT_EQ(date, now.date);
  EXPECT_EQ(time, now.time);
  EXPECT_EQ(rows("SELECT ChargeRealDate, Status, PrintLot FROM PatientCharges "
                 "WHERE PatientId=25001 AND ChargeDate=#2003/6/15# AND ChargeTime=#2:05:09 PM#"),
            "6/14/2003|0|null");
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
  const auto store = [](const std::string& table, const std::string& code, const char* codes) {
    run("DELETE FROM " + table);
    run("INSERT INTO " + table + " SELECT PatientId, ChargeDate, ChargeTime, " + code +
        " FROM PatientCharges, " + (table == "ChargeDiagnosis" ? "Diagnosis" : "Procedures") +
        " WHERE " + code + " IN (" + codes + ")");
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(std::string(test.wantedDiagnoses) + " " + test.wantedProcedures);
    store("ChargeDiagnosis", "DiagnosisCode", test.diagnoses);
    store("ChargeProcedures", "ProcedureCode", test.procedures);
    const std::string before = details();
    takeStatements();
    EXPECT_EQ(update(test.wantedDiagnoses, test.wantedProcedures), test.told);
    EXPECT_EQ(issued(), test.issued);
    if (test.told != "0") {
      EXPECT_EQ(details(), before);
    }
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
