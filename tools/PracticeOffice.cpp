#include "tools/PracticeOffice.h"

#include <algorithm>
#include <random>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "text/Text.h"
#include "tools/Concepts.h"
#include "tools/PracticeCatalogue.h"
#include "tools/TableRows.h"

namespace bw {
namespace {

using namespace practice;

using Number = std::int64_t;

constexpr Number kFirstPatient = 25000;
constexpr Number kPatients = 60;
constexpr Number kAdmitted = 12;  // the first patients
constexpr Number kCharges = 400;
constexpr Number kDays = 120;

// Charges of so many days ago and more are posted, or archived.
constexpr Number kPostedAfter = 20;
constexpr Number kArchivedAfter = 90;

enum Status : Number { kReady = 0, kPosted = 1, kArchivedByHand = 2, kArchivedByRun = 3 };

Date daysBefore(Date date, Number days) { return {date.day - static_cast<std::int32_t>(days)}; }

Number lotOf(Date date) {
  const Civil c = civil(date);
  return ((c.year * Number{100} + c.month) * 100 + c.day) * 10 + 1;
}

// A code of 3 to 15 characters, different for different numbers.
std::string codeOf(std::string_view prefix, Number number) {
  return concat(prefix, number)
      .append(std::string_view("X40719Q2B6"), 0, static_cast<std::size_t>(number % 11));
}

// A biller's code; every ninth record has none yet.
std::string billing(std::string_view prefix, Number code) {
  return code % 9 == 0 ? std::string() : codeOf(prefix, code);
}

class Office {
 public:
  Office(Engine& engine, Date today) : engine_(engine), today_(today) {}

  void fill() {
    fillInsurances();
    fillDiagnoses();
    fillProcedures();
    fillHistoryItems();
    fillConcepts(engine_, [](Number code) {
      return ConceptCodes{.billing = billing("EM", code), .real = codeOf("Z", 200 + code)};
    });
    fillFacilities();
    fillDoctors();
    fillPatients();
    fillVisits();
    fillCharges();
  }

 private:
  struct Ward {
    Number code, facility;
  };

  // 0 to bound - 1; the same on every computer.
  Number any(std::size_t bound) { return static_cast<Number>(random_() % bound); }

  void fillInsurances() {
    TableRows rows(engine_, "Insurance", {"InsuranceCode", "Description", "BillingInsuranceCode"});
    for (Number code = 1; const std::string_view name : kInsurances) {
      rows(code, name, code == static_cast<Number>(kInsurances.size()) ? "" : billing("IN", code));
      ++code;
    }
  }

  void fillDiagnoses() {
    TableRows groups(engine_, "DiagnosisFamily",
                     {"DiagnosisFamilyCode", "DiagnosisFamilyDescription"});
    TableRows rows(engine_, "Diagnosis",
                   {"DiagnosisCode", "Description", "DiagnosisFamilyCode", "RealDiagnosisCode",
                    "BillingDiagnosisCode"});
    Number family = 0;
    for (const Group& group : kGroups) {
      groups(++family, group.name);
      for (const std::string_view name : group.diagnoses) {
        ++diagnoses_;
        rows(diagnoses_, name, family, codeOf("X", diagnoses_), billing("DG", diagnoses_));
      }
    }
  }

  void fillProcedures() {
    TableRows rows(engine_, "Procedures",
                   {"ProcedureCode", "Description", "RealProcedureCode", "BillingProcedureCode"});
    for (Number code = 1; const std::string_view name : kProcedures) {
      rows(code, name, codeOf("Y", code), billing("PR", code));
      ++code;
    }
  }

  void fillHistoryItems() {
    TableRows rows(engine_, "Sickness", {"SicknessCode", "Description", "SicknessTypeCode"});
    for (const HistoryKind& kind : kHistory)
      for (const std::string_view name : kind.items)
        if (!name.empty()) {
          historyTypes_.push_back(kind.type);
          rows(static_cast<Number>(historyTypes_.size()), name, kind.type);
        }
  }

  void fillFacilities() {
    TableRows rows(engine_, "Facility",
                   {"FacilityCode", "Description", "FacilityTypeCode", "BillingFacilityCode",
                    "BillingFacilityCodeOut"});
    TableRows wards(engine_, "FacilityWards", {"WardCode", "FacilityCode", "Description"});
    Number code = 0;
    for (const Facility& facility : kFacilities) {
      ++code;
      rows(code, facility.name, facility.type, code == 7 ? "" : billing("FI", code),
           billing("FO", code));
      for (const std::string_view ward : facility.wards)
        if (!ward.empty()) {
          wards_.push_back({static_cast<Number>(wards_.size() + 1), code});
          wards(wards_.back().code, code, ward);
        }
    }
  }

  // Neighbours cover for each other; every third also for the one behind.
  void fillDoctors() {
    TableRows rows(engine_, "Doctors", {"DoctorCode", "Description", "BillingDoctorCode"});
    for (Number code = 1; const std::string_view name : kDoctors) {
      rows(code, name, billing("DR", code));
      ++code;
    }
    TableRows pairs(engine_, "DoctorCoveringDoctors", {"DoctorCode", "CoveringDoctorCode"});
    const auto count = static_cast<Number>(kDoctors.size());
    for (Number doctor = 1; doctor < count; ++doctor) {
      pairs(doctor, doctor + 1);
      pairs(doctor + 1, doctor);
      if (doctor % 3 == 0 && doctor + 2 <= count) pairs(doctor, doctor + 2);
    }
  }

  static std::string nameOf(Number patient) {
    const auto place = static_cast<std::size_t>(patient);
    return concat(kFamilyNames[place % kFamilyNames.size()], ", ",
                  kFirstNames[place % kFirstNames.size()]);
  }

  // The last three are doubles of others: by name and date of birth, by name in another case, by
  // account.
  void fillPatients() {
    TableRows rows(engine_, "Patient",
                   {"PatientId", "Names", "DateOfBirth", "AccountNumber", "InsuranceCode",
                    "InFacilityCode", "InWardCode", "InDoctorCode"});
    TableRows history(engine_, "PatientHistory", {"PatientId", "SicknessCode", "SicknessTypeCode"});
    const Date oldest = *makeDate(1921, 3, 14);
    for (Number i = 0; i < kPatients; ++i) {
      std::string name = nameOf(i);
      std::string account = i % 17 == 5 ? std::string() : std::to_string(40000 + 37 * i);
      Date born = daysBefore(oldest, -(i * 611 + any(600)));
      if (i == kPatients - 3) std::tie(name, born) = std::pair{nameOf(3), bornAs_[3]};
      if (i == kPatients - 2) name = "TANGLEWOOD, " + nameOf(19).substr(12);
      if (i == kPatients - 1) account = std::to_string(40000 + 37 * 10);
      bornAs_.push_back(born);
      const Ward ward =
          i < kAdmitted ? wards_[static_cast<std::size_t>(i) % wards_.size()] : Ward{};
      const Value known = i % 23 == 7 ? Value() : Value(born);
      rows(kFirstPatient + i, name, known, account, 1 + any(kInsurances.size()), ward.facility,
           ward.code, i < kAdmitted ? 1 + i % 6 : 0);
      fillHistory(history, kFirstPatient + i);
    }
  }

  void fillHistory(TableRows& rows, Number patient) {
    std::size_t item = static_cast<std::size_t>(any(5));
    for (Number count = any(5); count > 0; --count, item += 4)
      rows(patient, static_cast<Number>(item + 1), historyTypes_[item]);
  }

  // The attending doctor, entered as an admission enters him, and up to two others visit an
  // admitted patient.
  void fillVisits() {
    TableRows rows(engine_, "PatientDoctors",
                   {"PatientId", "DoctorCode", "AttentionTypeCode", "Frequency"});
    for (Number i = 0; i < kAdmitted; ++i) {
      rows(kFirstPatient + i, 1 + i % 6, kConsult, Number{1});
      for (Number other = 0; other < i % 3; ++other)
        rows(kFirstPatient + i, 7 + (i + other) % 5, kConsult + (i + other) % 2, 2 + other);
    }
  }

  // Mostly visits, every other one the usual.
  Number anyConcept(Number facilityType, Number chargeType) {
    const Number attention = any(6) == 0 ? kConsult : kVisit;
    const Number level = any(2) == 0 ? kUsualConceptLevel : any(kConceptLevels);
    return conceptOf(facilityType, chargeType, attention, level);
  }

  static Number statusOf(Number daysAgo, Number charge) {
    if (daysAgo < kPostedAfter) return kReady;
    if (daysAgo < kArchivedAfter) return kPosted;
    return charge % 8 == 0 ? kArchivedByHand : kArchivedByRun;
  }

  void fillCharges() {
    TableRows rows(engine_, "PatientCharges",
                   {"PatientId", "ChargeDate", "ChargeTime", "ChargeRealDate", "FacilityCode",
                    "EMCode", "DoctorCode", "ReferDoctorCode", "Status", "PrintLot"});
    TableRows diagnoses(engine_, "ChargeDiagnosis",
                        {"PatientId", "ChargeDate", "ChargeTime", "DiagnosisCode"});
    TableRows procedures(engine_, "ChargeProcedures",
                         {"PatientId", "ChargeDate", "ChargeTime", "ProcedureCode"});
    const Value noLot;
    const Value lot = lotOf(daysBefore(today_, kPostedAfter));
    for (Number i = 0; i < kCharges; ++i) {
      const Number daysAgo = kDays - 1 - i * kDays / kCharges;
      const Number place = any(kPatients);
      const bool inpatient = place < kAdmitted;
      const Number facility = inpatient
                                  ? wards_[static_cast<std::size_t>(place) % wards_.size()].facility
                                  : 1 + any(kFacilities.size());
      const Number type = kFacilities[static_cast<std::size_t>(facility - 1)].type;
      const Number status = statusOf(daysAgo, i);
      const Number patient = kFirstPatient + place;
      const Date care = daysBefore(today_, daysAgo);
      // Written down the same day or up to two days later, each at a moment of its own.
      const Date entered = daysBefore(care, -std::min(daysAgo, any(3)));
      const TimeOfDay time{static_cast<std::int32_t>(8 * 3600 + i * 397 % (9 * 3600))};
      rows(patient, entered, time, care, facility,
           anyConcept(type, inpatient ? kInpatient : kOutpatient), 1 + any(kDoctors.size()),
           1 + any(kDoctors.size()), status, status == kPosted ? lot : noLot);
      fillDetails(diagnoses, 1 + any(3), static_cast<std::size_t>(diagnoses_), patient, entered,
                  time);
      fillDetails(procedures, any(3), kProcedures.size(), patient, entered, time);
    }
  }

  // Different codes, from 1 to `codes`.
  void fillDetails(TableRows& rows, Number count, std::size_t codes, Number patient, Date date,
                   TimeOfDay time) {
    for (Number code = any(codes); count > 0; --count, code += 7)
      rows(patient, date, time, 1 + code % static_cast<Number>(codes));
  }

  Engine& engine_;
  Date today_;
  std::mt19937 random_{20030615};
  Number diagnoses_ = 0;
  std::vector<Number> historyTypes_;  // by SicknessCode - 1
  std::vector<Ward> wards_;
  std::vector<Date> bornAs_;
};

}  // namespace

void fillPractice(Engine& engine, Date today) { Office(engine, today).fill(); }

}  // namespace bw
