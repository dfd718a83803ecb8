#include "review/BeforePosting.h"

#include <algorithm>

#include "tests/review/RandomOffice.h"
#include "text/Text.h"

namespace bw {
namespace {

class BeforePostingTest : public RandomOfficeTest {
 protected:
  // An office with one ready charge that lacks nothing.
  static void makeReady() {
    clear();
    seedOffice();
    run("UPDATE Diagnosis SET BillingDiagnosisCode = 'X'");
    run("UPDATE Procedures SET BillingProcedureCode = 'X'");
  }
  PostingQuestion all() const { return {.today = now.date}; }
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
    {{"UPDATE Procedures SET BillingProcedureCode = ' '"}, {"Procedure without billing code|p1"}},
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
    const PostingFindings found = findBeforePosting(readReadyOffice(), all());
    EXPECT_EQ(linesOf(*found.charges, {"Cause", "What"}), expected);
    EXPECT_EQ(found.faulty, expected.empty() ? 0U : 1U);
    EXPECT_EQ(concat(found.ready), rows("SELECT count(*) FROM PatientCharges WHERE Status = 0"));
  }
}

TEST_F(BeforePostingTest, AnInsuranceAndADayLeaveTheirPartOfAll) {
  makeOffice(3);
  const ReadyOffice office = readReadyOffice();
  const auto lines = [&](const PostingQuestion& question) {
    return linesOf(*findBeforePosting(office, question).charges,
                   {"Cause", "Names", "What", "ChargeRealDate", "Insurance"});
  };
  const auto part = [&](const std::string& wanted) {
    Strings found = lines(all());
    std::erase_if(found, [&](const std::string& line) { return line.find(wanted) == line.npos; });
    EXPECT_FALSE(found.empty());
    return found;
  };
  EXPECT_EQ(lines({.insurance = 2, .today = now.date}), part("|Mutual 2"));
  EXPECT_EQ(lines({.day = now.date, .today = now.date}), part("|6/15/2003|"));
}

TEST_F(BeforePostingTest, CausesCountTheirLinesAndOneThatIsOffKeepsItsNumber) {
  makeOffice(3);
  const ReadyOffice office = readReadyOffice();
  const Strings lines = linesOf(*findBeforePosting(office, all()).charges, {"Part", "Cause"});
  PostingQuestion question = all();
  question.isOn = [](std::string_view cause) { return cause != "DoctorCode"; };
  const PostingFindings found = findBeforePosting(office, question);
  const std::string off = "2|Doctor without billing code";
  const auto shown = std::ssize(lines) - std::ranges::count(lines, off);
  EXPECT_EQ(std::ssize(linesOf(*found.charges, {"Part"})), shown);
  EXPECT_LT(shown, std::ssize(lines));
  Strings expected{concat("0|All causes|", shown, "|0")};
  Strings causes = linesOf(*found.causes, {"Part", "Cause"});
  causes.erase(causes.begin());
  for (const std::string& cause : causes)
    expected.push_back(
        concat(cause, "|", std::ranges::count(lines, cause), cause == off ? "|0" : "|1"));
  EXPECT_EQ(linesOf(*found.causes, {"Part", "Cause", "Charges", "checked"}), expected);
}

}  // namespace
}  // namespace bw
