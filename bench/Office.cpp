#include "bench/Office.h"

#include <algorithm>
#include <array>
#include <iostream>
#include <random>
#include <string>
#include <vector>

#include "data/Schema.h"
#include "engine/PostgresEngine.h"
#include "engine/SqliteEngine.h"
#include "text/Text.h"
#include "tools/TableRows.h"

namespace bw::bench {
namespace {

namespace fs = std::filesystem;
using Number = std::int64_t;

constexpr std::array kSyllables{"Al",  "bran", "cor", "den", "er",  "fen", "gal",
                                "hol", "in",   "jor", "kel", "lan", "mor", "nor",
                                "os",  "pel",  "ran", "sol", "tan", "wen"};
constexpr std::array kFirstNames{"Ada",  "Bruno", "Clara", "Dario", "Elena", "Felix", "Greta",
                                 "Hugo", "Irma",  "Jonas", "Karla", "Leo",   "Mira",  "Nils",
                                 "Olga", "Paula", "Quinn", "Rosa",  "Sven",  "Tilda"};

class Office {
 public:
  Office(Engine& engine, OfficeSize size) : engine_(engine), size_(size) {}

  void fill() {
    engine_.begin();
    fillCatalogues();
    fillPatients();
    fillCharges();
    engine_.commit().require();
  }

 private:
  // 0 to bound - 1; the same on every computer.
  int any(int bound) { return static_cast<int>(random_() % static_cast<unsigned>(bound)); }

  std::string anyName() {
    const auto syllable = [this] { return kSyllables[static_cast<std::size_t>(any(20))]; };
    return concat(syllable(), syllable(), syllable(), ", ",
                  kFirstNames[static_cast<std::size_t>(any(20))]);
  }

  void fillCatalogues() {
    TableRows insurances(engine_, "Insurance",
                         {"InsuranceCode", "Description", "BillingInsuranceCode"});
    for (int i = 1; i <= kInsurances; ++i)
      insurances(i, concat("Insurance company ", i), concat("IN", i));
    TableRows families(engine_, "DiagnosisFamily",
                       {"DiagnosisFamilyCode", "DiagnosisFamilyDescription"});
    families(1, std::string("All"));
    TableRows diagnoses(engine_, "Diagnosis",
                        {"DiagnosisCode", "Description", "DiagnosisFamilyCode", "RealDiagnosisCode",
                         "BillingDiagnosisCode"});
    for (int i = 1; i <= kDiagnoses; ++i)
      diagnoses(i, concat("Diagnosis number ", i), 1, concat("X", i), concat("DG", i));
    TableRows concepts(
        engine_, "EvaluationManagement",
        {"EMCode", "Description", "FacilityTypeCode", "ChargeTypeCode", "AttentionTypeCode",
         "BillingEMCode", "RealEMCode", "ShowOnFirst", "ShowOnNext", "IsDischarge"});
    for (int i = 1; i <= kConcepts; ++i)
      concepts(i, concat("Concept of evaluation ", i), 1 + i % 5, 1 + i % 2, 1 + i / 2 % 2,
               concat("EM", i), concat("Z", i), 1, 1, 0);
    TableRows facilities(engine_, "Facility",
                         {"FacilityCode", "Description", "FacilityTypeCode", "BillingFacilityCode",
                          "BillingFacilityCodeOut"});
    for (int i = 1; i <= kFacilities; ++i)
      facilities(i, concat("Facility of care ", i), 1 + i % 5, concat("FI", i), concat("FO", i));
    TableRows doctors(engine_, "Doctors", {"DoctorCode", "Description", "BillingDoctorCode"});
    for (int i = 1; i <= kDoctors; ++i) doctors(i, anyName(), concat("DR", i));
  }

  void fillPatients() {
    TableRows rows(engine_, "Patient",
                   {"PatientId", "Names", "DateOfBirth", "AccountNumber", "InsuranceCode"});
    for (int i = 1; i <= size_.patients; ++i)
      rows(i, anyName(), Date{10000 + any(25000)}, concat(400000 + i), 1 + any(kInsurances));
  }

  // Entered on the day of care or up to two days later. No two charges of a day have one time, and
  // those of neighbouring days have other times, so that no key stands twice.
  void fillCharges() {
    TableRows rows(engine_, "PatientCharges",
                   {"PatientId", "ChargeDate", "ChargeTime", "ChargeRealDate", "FacilityCode",
                    "EMCode", "DoctorCode", "ReferDoctorCode", "Status", "PrintLot"});
    TableRows diagnoses(engine_, "ChargeDiagnosis",
                        {"PatientId", "ChargeDate", "ChargeTime", "DiagnosisCode"});
    const int days = (size_.charges + kChargesOfDay - 1) / kChargesOfDay;
    for (int i = 0; i < size_.charges; ++i) {
      const int day = i / kChargesOfDay;
      const int patient = 1 + any(size_.patients);
      const Date care{kFirstDay.day + day};
      const Date entered{care.day + any(3)};
      const TimeOfDay time{8 * 3600 + i % kChargesOfDay * 80 + day % 3};
      const bool ready = days - day <= 20;
      rows(patient, entered, time, care, 1 + any(kFacilities), 1 + any(kConcepts),
           1 + any(kDoctors), 1 + any(kDoctors), statusOf(i, days - day),
           ready ? Value() : Value(Number{day + 1}));
      const int details = size_.diagnoses ? 2 + i % 2 : 0;
      for (int detail = 0, code = any(kDiagnoses); detail < details; ++detail, code += 7)
        diagnoses(patient, entered, time, 1 + code % kDiagnoses);
      if (i % 100000 == 99999) restart();
    }
  }

  static int statusOf(int charge, int daysAgo) {
    if (daysAgo <= 20) return 0;
    if (charge % 1000 == 0) return 2;
    return daysAgo <= 90 ? 1 : 3;
  }

  void restart() {
    engine_.commit().require();
    engine_.begin();
  }

  Engine& engine_;
  OfficeSize size_;
  std::mt19937 random_{20030615};
};

}  // namespace

fs::path folder() { return BENCH_FOLDER; }

void makeOffice(const fs::path& path, OfficeSize size) {
  for (const char* ending : {"", "-wal", "-shm"}) fs::remove(path.string() + ending);
  const std::unique_ptr<Engine> engine = createSqlite(path.string());
  createSchema(*engine);
  engine->execute("PRAGMA cache_size=-500000");
  engine->execute("PRAGMA synchronous=OFF");
  engine->execute("PRAGMA foreign_keys=OFF");
  Office(*engine, size).fill();
}

void fillOnServer(const std::string& address, OfficeSize size) {
  const std::unique_ptr<Engine> engine = openPostgres(address);
  createSchema(*engine);
  Office(*engine, size).fill();
  engine->execute("ANALYZE");
}

fs::path keptOffice(const char* name, OfficeSize size) {
  const fs::path path = folder() / concat(name, ".db");
  if (fs::exists(path)) return path;
  std::cerr << "Making the office of " << size.charges << " charges, once.\n";
  // Under another name as long as it grows: one that was broken off is not taken for whole.
  const fs::path growing = folder() / concat(name, ".part");
  makeOffice(growing, size);
  fs::rename(growing, path);
  return path;
}

std::string numbersTo(int last) {
  return concat("WITH n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < ", last, ") ");
}

}  // namespace bw::bench
