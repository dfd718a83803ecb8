#include "review/Lots.h"

#include "review/Statements.h"
#include "tests/review/ReviewTest.h"

namespace bw {
namespace {

TEST(DayOfLotTest, ANumberSpellsADayOrNone) {
  EXPECT_EQ(dayOfLot(200306151), day(2003, 6, 15));
  EXPECT_EQ(dayOfLot(200306159), day(2003, 6, 15));
  EXPECT_EQ(dayOfLot(202402291), day(2024, 2, 29));
  for (const std::int64_t lot : {17, 200302301, 200313011, 2147483647, -5})
    EXPECT_EQ(dayOfLot(lot), std::nullopt) << lot;
}

using LotsTest = ReviewTest;

TEST_F(LotsTest, EachLotHasItsSumsAndTheLatestComesFirst) {
  run("INSERT INTO Insurance VALUES (2, 'Ash', ''), (3, 'Beech', ''), (4, 'Elm', '')");
  run("INSERT INTO Patient (PatientId, Names, InsuranceCode) VALUES (25002, 'a', 2), "
      "(25003, 'b', 3), (25004, 'c', 4)");
  for (const int patient : {25001, 25002, 25003, 25004})
    charge({.patient = patient, .status = 1, .lot = "17"});
  charge({25000, "06/20/2003", 1, 1, "200306151"});
  charge({25000, "06/12/2003", 1, 1, "200306151"});
  charge({25002, "06/10/2003", 1, 0, "200306151"});
  charge({25002, "06/14/2003", 1, 3, "200306151"});
  OfficeSnapshot snapshot(1);
  EXPECT_EQ(linesOf(*findLots(*snapshot.read(statements::kCharges)),
                    {"PrintLot", "Day", "Insurances", "Charges", "Patients", "FirstDay", "LastDay",
                     "ReadyAgain"}),
            (Strings{"200306151|6/15/2003|Ash, Mutual|4|2|6/10/2003|6/20/2003|1",
                     "17||Ash, Beech, Elm and 1 more|4|4|6/1/2003|6/1/2003|0"}));
}

TEST_F(LotsTest, TheBillersTableHasALineAChargeWithAllCodesByTheirNumbers) {
  for (const char* statement :
       {"UPDATE Diagnosis SET RealDiagnosisCode = 'R' || DiagnosisCode, "
        "BillingDiagnosisCode = 'B' || DiagnosisCode",
        "UPDATE Procedures SET RealProcedureCode = 'Q' || ProcedureCode, "
        "BillingProcedureCode = 'C' || ProcedureCode",
        "INSERT INTO EvaluationManagement VALUES (2, 'Call', 1, 2, 2, 'BC', '99001', 1, 1, 2)",
        "UPDATE PatientCharges SET PrintLot = 17",
        "INSERT INTO ChargeDiagnosis VALUES (25000, #06/01/2003#, #08:30:00#, 11)",
        "INSERT INTO ChargeDiagnosis VALUES (25000, #06/01/2003#, #08:30:00#, 3)",
        "INSERT INTO ChargeProcedures VALUES (25000, #06/01/2003#, #08:30:00#, 21)"})
    run(statement);
  charge({25000, "06/03/2003", 1, 1, "18"});
  charge({25001, "06/02/2003", 1, 1, "17", 1, 2});
  run("INSERT INTO ChargeDiagnosis SELECT PatientId, ChargeDate, ChargeTime, 2 FROM PatientCharges "
      "WHERE ChargeDate = #06/02/2003#");
  EXPECT_EQ(linesOf(*readLotTable(17),
                    {"Account", "Date of service", "Patient status", "Facility billing code",
                     "E&M real code", "E&M billing code", "Diagnosis real codes",
                     "Diagnosis billing codes", "Procedure real codes", "Procedure billing codes"}),
            (Strings{"A1|6/1/2003|Inpatient|GI|99231|BV|R1;R3;R11|B1;B3;B11|Q1;Q21|C1;C21",
                     "A2|6/2/2003|Outpatient|GO|99001|BC|R2|B2||"}));
}

}  // namespace
}  // namespace bw
