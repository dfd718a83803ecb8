#include "review/BeforePosting.h"

#include "data/Tables.h"
#include "tests/review/ReviewTest.h"

namespace bw {
namespace {

class BeforePostingTest : public ReviewTest {
 protected:
  // One ready charge that lacks nothing.
  static void makeReady() {
    const auto tables = schemaTables();
    for (auto table = tables.rbegin(); table != tables.rend(); ++table)
      if (!table->isLookup) run(concat("DELETE FROM [", table->name, "]"));
    seedOffice();
    run("UPDATE Diagnosis SET BillingDiagnosisCode = 'X'");
    run("UPDATE Procedures SET BillingProcedureCode = 'X'");
  }
};

constexpr const char* kOutpatient = "UPDATE EvaluationManagement SET ChargeTypeCode = 2";

// A posted charge besides the ready one.
std::string posted(int patient, const char* day, int kind) {
  return concat("INSERT INTO PatientCharges VALUES (", patient, ", #06/02/2003#, #08:30:00#, #",
                day, "#, 1, ", kind, ", 1, 2, 1, 17)");
}

// What is changed of the office that lacks nothing, and what is found then: "cause|what".
const struct {
  Strings changes;
  Strings found;
} kCases[] = {
    {{"DELETE FROM ChargeDiagnosis"}, {"No diagnosis|"}},
    {{"UPDATE Doctors SET BillingDoctorCode = '  ' WHERE DoctorCode = 1"},
     {"Doctor without billing code|Ames"}},
    {{"UPDATE Doctors SET BillingDoctorCode = ''"},
     {"Doctor without billing code|Ames", "Referring doctor without billing code|Bell"}},
    {{"UPDATE Facility SET BillingFacilityCode = ''"}, {"Facility without billing code|General"}},
    {{"UPDATE Facility SET BillingFacilityCodeOut = ''"}, {}},
    {{"UPDATE Facility SET BillingFacilityCode = ''", kOutpatient}, {}},
    {{"UPDATE Facility SET BillingFacilityCodeOut = ''", kOutpatient},
     {"Facility without billing code|General"}},
    {{"UPDATE EvaluationManagement SET BillingEMCode = ''"},
     {"E&M concept without billing code|Visit"}},
    {{"INSERT INTO ChargeDiagnosis SELECT PatientId, ChargeDate, ChargeTime, d.DiagnosisCode FROM "
      "PatientCharges, Diagnosis d WHERE d.DiagnosisCode IN (2, 3)",
      "UPDATE Diagnosis SET BillingDiagnosisCode = '' WHERE DiagnosisCode <> 2"},
     {"Diagnosis without billing code|d1, d3"}},
    {{"UPDATE ChargeProcedures SET ProcedureCode = 2",
      "UPDATE Procedures SET BillingProcedureCode = ' '"},
     {"Procedure without billing code|p2"}},
    {{"UPDATE Patient SET AccountNumber = ' '"}, {"Patient without account|"}},
    {{"UPDATE Patient SET DateOfBirth = NULL"}, {"Patient without date of birth|"}},
    {{posted(25000, "06/01/2003", 1)},
     {"Several charges of one patient, day and concept|2 charges"}},
    {{posted(25000, "06/02/2003", 1)}, {}},
    {{posted(25001, "06/01/2003", 1)}, {}},
    {{"INSERT INTO EvaluationManagement VALUES (2, 'Other', 1, 1, 2, 'B', '9', 1, 1, 2)",
      posted(25000, "06/01/2003", 2)},
     {}},
    {{"UPDATE PatientCharges SET ChargeRealDate = #06/15/2003#"}, {}},
    {{"UPDATE PatientCharges SET ChargeRealDate = #06/16/2003#"}, {"Date of care in the future|"}},
    {{"UPDATE Patient SET DateOfBirth = #2003/06/01#"}, {}},
    {{"UPDATE Patient SET DateOfBirth = #2003/06/02#"}, {"Date of care before the birth|"}},
    {{"UPDATE Patient SET InFacilityCode = 0"}, {"Inpatient concept, patient not admitted today|"}},
    {{"UPDATE Patient SET InFacilityCode = 0", kOutpatient}, {}},
    {{"UPDATE PatientCharges SET Status = 2", "DELETE FROM ChargeDiagnosis"}, {}},
};

TEST_F(BeforePostingTest, EachCauseIsFoundAtItsBoundsAndNoOther) {
  for (const auto& [changes, expected] : kCases) {
    SCOPED_TRACE(changes.front());
    makeReady();
    for (const std::string& change : changes) run(change);
    const PostingFindings found = findBeforePosting(readReadyOffice(), {.today = now.date});
    EXPECT_EQ(linesOf(*found.charges, {"Cause", "What"}), expected);
    EXPECT_EQ(found.faulty, expected.empty() ? 0U : 1U);
    EXPECT_EQ(concat(found.ready), rows("SELECT count(*) FROM PatientCharges WHERE Status = 0"));
  }
}

TEST_F(BeforePostingTest, InsuranceDayAndTicksSayWhatIsShownAndTheCausesCountIt) {
  makeReady();
  run("INSERT INTO Insurance VALUES (2, 'Other', '')");
  run("UPDATE Patient SET InsuranceCode = 2, InFacilityCode = 1 WHERE PatientId = 25001");
  charge({.care = "06/02/2003", .doctor = 3});
  charge({.patient = 25001, .care = "06/03/2003", .doctor = 4});
  run("DELETE FROM PatientCharges WHERE ChargeDate = #06/01/2003#");
  const ReadyOffice office = readReadyOffice();
  const std::string smith = "Smith, Ann|6/2/2003|Mutual|", jones = "Jones, Bob|6/3/2003|Other|";
  const auto notCode = [](std::string_view cause) { return cause != "DoctorCode"; };
  const struct {
    PostingQuestion question;
    Strings charges;
    Strings causes;
  } cases[] = {
      {{.today = now.date},
       {smith + "No diagnosis", smith + "Doctor without billing code", jones + "No diagnosis",
        jones + "Doctor without billing code"},
       {"0|All causes|4|1", "1|No diagnosis|2|1", "2|Doctor without billing code|2|1"}},
      {{.insurance = 2, .today = now.date},
       {jones + "No diagnosis", jones + "Doctor without billing code"},
       {"0|All causes|2|1", "1|No diagnosis|1|1", "2|Doctor without billing code|1|1"}},
      {{.day = day(2003, 6, 2), .today = now.date},
       {smith + "No diagnosis", smith + "Doctor without billing code"},
       {"0|All causes|2|1", "1|No diagnosis|1|1", "2|Doctor without billing code|1|1"}},
      {{.today = now.date, .isOn = notCode},
       {smith + "No diagnosis", jones + "No diagnosis"},
       {"0|All causes|2|0", "1|No diagnosis|2|1", "2|Doctor without billing code|2|0"}},
  };
  for (const auto& [question, charges, causes] : cases) {
    const PostingFindings found = findBeforePosting(office, question);
    EXPECT_EQ(linesOf(*found.charges, {"Names", "ChargeRealDate", "Insurance", "Cause"}), charges);
    Strings lines = linesOf(*found.causes, {"Part", "Cause", "Charges", "checked"});
    lines.resize(causes.size());
    EXPECT_EQ(lines, causes);
  }
}

}  // namespace
}  // namespace bw
