#pragma once

#include "data/BWSQLDiagnosis.h"
#include "data/BWSQLDiagnosisFamilies.h"
#include "data/BWSQLDoctors.h"
#include "data/BWSQLEMCodes.h"
#include "data/BWSQLFacilities.h"
#include "data/BWSQLInsurances.h"
#include "data/BWSQLProcedures.h"
#include "data/BWSQLSickness.h"
#include "data/BWSQLWards.h"
#include "tests/data/DataFixture.h"
#include "text/Text.h"

namespace bw {

// What writes the records of a catalogue, with one text for all of a record's.
struct Catalogue {
  const char* table;
  const char* key;
  std::int16_t (*next)();
  int (*insert)(std::int16_t& code, const std::string& text, std::string& message);
  int (*update)(std::int16_t code, const std::string& text, std::string& message);
  int (*remove)(std::int16_t code, std::string& message);
  bool codeSetFirst = false;  // the out code is set before the statement
};
inline void PrintTo(const Catalogue& catalogue, std::ostream* out) { *out << catalogue.table; }

// clang-format off
inline constexpr Catalogue kCatalogues[] = {
    {"Insurance", "InsuranceCode", InsuranceNextCode, [](auto& c, auto& t, auto& m) { return InsuranceInsert(c, t, t, m); },
     [](auto c, auto& t, auto& m) { return InsuranceUpdate(c, t, t, m); }, InsuranceDelete},
    {"DiagnosisFamily", "DiagnosisFamilyCode", DiagnosisFamilyNextCode, DiagnosisFamilyInsert, DiagnosisFamilyUpdate, DiagnosisFamilyDelete},
    {"Diagnosis", "DiagnosisCode", DiagnosisNextCode, [](auto& c, auto& t, auto& m) { return DiagnosisInsert(c, t, 1, t, t, m); },
     [](auto c, auto& t, auto& m) { return DiagnosisUpdate(c, t, 1, t, t, m); }, DiagnosisDelete},
    {"Procedures", "ProcedureCode", ProcedureNextCode, [](auto& c, auto& t, auto& m) { return ProcedureInsert(c, t, t, t, m); },
     [](auto c, auto& t, auto& m) { return ProcedureUpdate(c, t, t, t, m); }, ProcedureDelete},
    {"Sickness", "SicknessCode", SicknessNextCode, [](auto& c, auto& t, auto& m) { return SicknessInsert(c, t, 1, m); },
     [](auto c, auto& t, auto& m) { return SicknessUpdate(c, t, 1, m); }, SicknessDelete},
    {"Facility", "FacilityCode", FacilityNextCode, [](auto& c, auto& t, auto& m) { return FacilityInsert(c, t, 1, t, t, m); },
     [](auto c, auto& t, auto& m) { return FacilityUpdate(c, t, 1, t, t, m); }, FacilityDelete},
    {"FacilityWards", "WardCode", WardNextCode, [](auto& c, auto& t, auto& m) { return WardInsert(c, 1, t, m); },
     [](auto c, auto& t, auto& m) { return WardUpdate(c, 1, t, m); }, WardDelete, true},
    {"Doctors", "DoctorCode", DoctorNextCode, [](auto& c, auto& t, auto& m) { return DoctorInsert(c, t, t, ";", m); },
     [](auto c, auto& t, auto& m) { return DoctorUpdate(c, t, t, ";", m); }, DoctorDelete},
    {"EvaluationManagement", "EMCode", EMCodeNextCode, [](auto& c, auto& t, auto& m) {
       std::int32_t wide = 0;
       const int result = EMCodeInsert(wide, t, 1, 1, 1, t, t, 0, 0, 0, m);
       c = static_cast<std::int16_t>(wide);
       return result; },
     [](auto c, auto& t, auto& m) { return EMCodeUpdate(c, t, 1, 1, 1, t, t, 0, 0, 0, m); }, [](auto c, auto& m) { return EMCodeDelete(c, m); }},
};
// clang-format on

// Calls of routines that tell their text in `message`, in an office of seedOffice().
class RoutineTest : public DataTest {
 protected:
  void SetUp() override {
    seedOffice();
    takeStatements();
  }
  // The result of a call, and the text that it has left: "2 U:IMPELIENT", "0".
  std::string told(int result) {
    const std::string text = std::exchange(message, {});
    return concat(result, text.empty() ? "" : " ", text);
  }

  std::string message;
};

}  // namespace bw
