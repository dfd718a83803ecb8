#include "review/Lots.h"

#include <algorithm>
#include <set>

#include "review/Statements.h"
#include "tests/review/RandomOffice.h"
#include "text/Text.h"

namespace bw {
namespace {

TEST(DayOfLotTest, ANumberSpellsADayOrNone) {
  EXPECT_EQ(dayOfLot(200306151), day(2003, 6, 15));
  EXPECT_EQ(dayOfLot(200306159), day(2003, 6, 15));
  EXPECT_EQ(dayOfLot(202402291), day(2024, 2, 29));
  for (const std::int64_t lot : {17, 200302301, 200313011, 2147483647, -5})
    EXPECT_EQ(dayOfLot(lot), std::nullopt) << lot;
}

class LotsTest : public RandomOfficeTest {
 protected:
  void readTables() {
    charges_ = table("PatientCharges");
    patients_ = table("Patient");
  }

  std::map<int, std::vector<TableRow>, std::greater<>> lots() const {
    std::map<int, std::vector<TableRow>, std::greater<>> lots;
    for (const TableRow& charge : charges_)
      if (!charge.at("PrintLot").empty()) lots[std::stoi(charge.at("PrintLot"))].push_back(charge);
    return lots;
  }

  std::string lineOf(int lot, const std::vector<TableRow>& charges) const {
    std::set<std::string> patients;
    std::set<std::string> insurances;
    std::set<int> days;
    int ready = 0;
    for (const TableRow& charge : charges) {
      const TableRow patient = find(patients_, "PatientId", charge.at("PatientId"));
      patients.insert(charge.at("PatientId"));
      insurances.insert("Mutual " + patient.at("InsuranceCode"));
      days.insert(dateOf(charge.at("ChargeRealDate"))->day);
      ready += charge.at("Status") == "0" ? 1 : 0;
    }
    return concat(lot, "|", lot > 1000 ? concat("6/", lot % 1000 / 10, "/2003") : "", "|",
                  joined(insurances, ", ", [](const std::string& name) { return name; }), "|",
                  charges.size(), "|", patients.size(), "|", textOf(Value(Date{*days.begin()})),
                  "|", textOf(Value(Date{*days.rbegin()})), "|", ready);
  }

  // The codes of a charge's details in the order of their numbers.
  static std::string codes(const TableRow& charge, const std::string& details,
                           const std::string& catalogue, const std::string& key,
                           const std::string& code) {
    const std::vector<TableRow> items = table(catalogue);
    std::string text;
    for (const TableRow& detail : table(details))
      if (detail.at("PatientId") == charge.at("PatientId") &&
          detail.at("ChargeDate") == charge.at("ChargeDate") &&
          detail.at("ChargeTime") == charge.at("ChargeTime"))
        text += find(items, key, detail.at(key)).at(code) + ";";
    if (!text.empty()) text.pop_back();
    return text;
  }

 private:
  std::vector<TableRow> charges_, patients_;
};

TEST_F(LotsTest, EveryLotOfAnOfficeOfChanceHasItsSums) {
  for (unsigned seed = 1; seed <= kOffices; ++seed) {
    SCOPED_TRACE(concat("office ", seed));
    makeOffice(seed);
    readTables();
    Strings expected;
    for (const auto& [lot, charges] : lots()) expected.push_back(lineOf(lot, charges));
    OfficeSnapshot snapshot(1);
    EXPECT_EQ(linesOf(*findLots(*snapshot.read(statements::kCharges)),
                      {"PrintLot", "Day", "Insurances", "Charges", "Patients", "FirstDay",
                       "LastDay", "ReadyAgain"}),
              expected);
  }
}

TEST_F(LotsTest, TheBillersTableHasALineAChargeWithAllCodes) {
  makeOffice(3);
  readTables();
  const auto all = lots();
  const auto& [lot, charges] = *all.begin();
  const std::vector<TableRow> patients = table("Patient");
  const std::vector<TableRow> concepts = table("EvaluationManagement");
  const std::vector<TableRow> facilities = table("Facility");
  Strings expected;
  for (const TableRow& charge : charges) {
    const TableRow patient = find(patients, "PatientId", charge.at("PatientId"));
    const TableRow kind = find(concepts, "EMCode", charge.at("EMCode"));
    const TableRow facility = find(facilities, "FacilityCode", charge.at("FacilityCode"));
    const bool inside = kind.at("ChargeTypeCode") == "1";
    expected.push_back(concat(
        patient.at("AccountNumber"), "|", charge.at("ChargeRealDate"), "|",
        facility.at(inside ? "BillingFacilityCode" : "BillingFacilityCodeOut"), "|",
        kind.at("RealEMCode"), "|", kind.at("BillingEMCode"), "|",
        codes(charge, "ChargeDiagnosis", "Diagnosis", "DiagnosisCode", "RealDiagnosisCode"), "|",
        codes(charge, "ChargeDiagnosis", "Diagnosis", "DiagnosisCode", "BillingDiagnosisCode"), "|",
        codes(charge, "ChargeProcedures", "Procedures", "ProcedureCode", "BillingProcedureCode")));
  }
  Strings lines =
      linesOf(*readLotTable(lot), {"Account", "Date of service", "Facility billing code",
                                   "E&M real code", "E&M billing code", "Diagnosis real codes",
                                   "Diagnosis billing codes", "Procedure billing codes"});
  std::sort(expected.begin(), expected.end());
  std::sort(lines.begin(), lines.end());
  EXPECT_EQ(lines, expected);
}

}  // namespace
}  // namespace bw
