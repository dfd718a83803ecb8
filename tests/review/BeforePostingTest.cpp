#include "review/BeforePosting.h"

#include <algorithm>
#include <set>

#include "tests/review/RandomOffice.h"
#include "text/Text.h"

namespace bw {
namespace {

class BeforePostingTest : public RandomOfficeTest {
 protected:
  void readTables() {
    charges_ = table("PatientCharges");
    patients_ = table("Patient");
    concepts_ = table("EvaluationManagement");
    facilities_ = table("Facility");
    doctors_ = table("Doctors");
    diagnoses_ = table("Diagnosis");
    procedures_ = table("Procedures");
    chargeDiagnoses_ = table("ChargeDiagnosis");
    chargeProcedures_ = table("ChargeProcedures");
  }

  static bool sameCharge(const TableRow& a, const TableRow& b) {
    return a.at("PatientId") == b.at("PatientId") && a.at("ChargeDate") == b.at("ChargeDate") &&
           a.at("ChargeTime") == b.at("ChargeTime");
  }

  static std::string uncoded(const TableRow& charge, const std::vector<TableRow>& details,
                             const std::vector<TableRow>& catalogue, const std::string& key,
                             const std::string& code) {
    std::string names;
    for (const TableRow& detail : details) {
      const TableRow item = find(catalogue, key, detail.at(key));
      if (sameCharge(charge, detail) && isBlank(item.at(code)))
        names += (names.empty() ? "" : ", ") + item.at("Description");
    }
    return names;
  }

  // "cause|what" of a ready charge.
  Strings faultsOf(const TableRow& charge) const {
    Strings faults;
    const auto add = [&](bool found, const std::string& cause, const std::string& what = "") {
      if (found) faults.push_back(cause + "|" + what);
    };
    const TableRow patient = find(patients_, "PatientId", charge.at("PatientId"));
    const TableRow kind = find(concepts_, "EMCode", charge.at("EMCode"));
    const TableRow facility = find(facilities_, "FacilityCode", charge.at("FacilityCode"));
    const TableRow doctor = find(doctors_, "DoctorCode", charge.at("DoctorCode"));
    const TableRow refer = find(doctors_, "DoctorCode", charge.at("ReferDoctorCode"));
    const bool inside = kind.at("ChargeTypeCode") == "1";
    const auto care = *dateOf(charge.at("ChargeRealDate"));
    const auto birth = dateOf(patient.at("DateOfBirth"));
    const auto alike = std::count_if(charges_.begin(), charges_.end(), [&](const TableRow& other) {
      return other.at("PatientId") == charge.at("PatientId") &&
             other.at("ChargeRealDate") == charge.at("ChargeRealDate") &&
             other.at("EMCode") == charge.at("EMCode");
    });
    add(std::none_of(chargeDiagnoses_.begin(), chargeDiagnoses_.end(),
                     [&](const TableRow& detail) { return sameCharge(charge, detail); }),
        "No diagnosis");
    add(isBlank(doctor.at("BillingDoctorCode")), "Doctor without billing code",
        doctor.at("Description"));
    add(isBlank(refer.at("BillingDoctorCode")), "Referring doctor without billing code",
        refer.at("Description"));
    add(isBlank(facility.at(inside ? "BillingFacilityCode" : "BillingFacilityCodeOut")),
        "Facility without billing code", facility.at("Description"));
    add(isBlank(kind.at("BillingEMCode")), "E&M concept without billing code",
        kind.at("Description"));
    const std::string diagnoses =
        uncoded(charge, chargeDiagnoses_, diagnoses_, "DiagnosisCode", "BillingDiagnosisCode");
    add(!diagnoses.empty(), "Diagnosis without billing code", diagnoses);
    const std::string procedures =
        uncoded(charge, chargeProcedures_, procedures_, "ProcedureCode", "BillingProcedureCode");
    add(!procedures.empty(), "Procedure without billing code", procedures);
    add(isBlank(patient.at("AccountNumber")), "Patient without account");
    add(!birth, "Patient without date of birth");
    add(alike > 1, "Several charges of one patient, day and concept", concat(alike, " charges"));
    add(care > now.date, "Date of care in the future");
    add(birth && care < *birth, "Date of care before the birth");
    add(inside && patient.at("InFacilityCode") == "0",
        "Inpatient concept, patient not admitted today");
    return faults;
  }

  // Lines of all findings, and how many a cause has.
  struct Expected {
    Strings lines;
    std::map<std::string, int> counts;
    std::size_t ready = 0;
    std::size_t faulty = 0;
  };
  Expected expect(const PostingQuestion& question) const {
    Expected expected;
    for (const TableRow& charge : charges_) {
      const TableRow patient = find(patients_, "PatientId", charge.at("PatientId"));
      if (charge.at("Status") != "0") continue;
      if (question.insurance != 0 && patient.at("InsuranceCode") != concat(question.insurance))
        continue;
      if (question.day && dateOf(charge.at("ChargeRealDate")) != question.day) continue;
      const Strings faults = faultsOf(charge);
      ++expected.ready;
      bool faulty = false;
      for (const std::string& fault : faults) {
        const std::string cause = fault.substr(0, fault.find('|'));
        ++expected.counts[cause];
        if (cause == off_) continue;
        faulty = true;
        expected.lines.push_back(patient.at("Names") + "|" + patient.at("AccountNumber") + "|" +
                                 charge.at("ChargeRealDate") + "|" + fault);
      }
      if (faulty) ++expected.faulty;
    }
    std::sort(expected.lines.begin(), expected.lines.end());
    return expected;
  }

  void compare(const PostingQuestion& question) {
    const Expected expected = expect(question);
    const PostingFindings found = findBeforePosting(readReadyOffice(), question);
    Strings lines =
        linesOf(*found.charges, {"Names", "AccountNumber", "ChargeRealDate", "Cause", "What"});
    std::sort(lines.begin(), lines.end());
    EXPECT_EQ(lines, expected.lines);
    EXPECT_EQ(found.ready, expected.ready);
    EXPECT_EQ(found.faulty, expected.faulty);
    std::map<std::string, int> counts;
    for (const std::string& line : linesOf(*found.causes, {"Charges", "Cause"}))
      if (const int count = std::stoi(line); count > 0)
        counts[line.substr(line.find('|') + 1)] = count;
    const int all = counts["All causes"];
    EXPECT_EQ(static_cast<std::size_t>(all), lines.size());
    counts.erase("All causes");
    EXPECT_EQ(counts, expected.counts);
  }

  std::string off_;

 private:
  std::vector<TableRow> charges_, patients_, concepts_, facilities_, doctors_, diagnoses_,
      procedures_, chargeDiagnoses_, chargeProcedures_;
};

TEST_F(BeforePostingTest, EveryCauseIsFoundInOfficesOfChanceAndNoOther) {
  for (unsigned seed = 1; seed <= kOffices; ++seed) {
    SCOPED_TRACE(concat("office ", seed));
    makeOffice(seed);
    readTables();
    off_.clear();
    compare({.today = now.date});
    compare({.insurance = 1 + seed % 3, .today = now.date});
    compare({.day = Date{now.date.day - static_cast<int>(seed % 5)}, .today = now.date});
    off_ = "Doctor without billing code";
    compare(
        {.today = now.date, .isOn = [](std::string_view cause) { return cause != "DoctorCode"; }});
  }
}

}  // namespace
}  // namespace bw
