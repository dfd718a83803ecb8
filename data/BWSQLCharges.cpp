#include "data/BWSQLCharges.h"

#include "core/Services.h"
#include "data/BWSQLPatients.h"
#include "data/Literals.h"
#include "data/Writing.h"
#include "text/Text.h"

namespace bw {
namespace {

struct ChargeKey {
  std::int16_t PatientId;
  Date ChargeDate;
  TimeOfDay ChargeTime;
};

std::string conditionOf(const ChargeKey& key) {
  return concat("WHERE PatientId=", key.PatientId, "  AND ChargeDate=#", monthFirst(key.ChargeDate),
                "# AND ChargeTime =#", clock24(key.ChargeTime), "#");
}

// What differs between the two kinds of detail rows. The delete of a procedure that is not there
// speaks in words of its own.
struct DetailKind {
  const char* table;
  const char* column;
  const char* deletedNothing;
};
constexpr DetailKind kDiagnoses{"ChargeDiagnosis", "DiagnosisCode", kDeleteTouchedNothing};
constexpr DetailKind kProcedures{"ChargeProcedures", "ProcedureCode",
                                 "No records afected by the DELETE"};

std::string insertOf(const DetailKind& kind, const ChargeKey& key, std::int16_t code) {
  return concat("INSERT INTO ", kind.table, " (PatientId, ChargeDate, ChargeTime,  ", kind.column,
                " ) VALUES (", key.PatientId, ", ", "#", monthFirst(key.ChargeDate), "#, ", "#",
                clock24(key.ChargeTime), "#, ", code, ")");
}

std::string deleteOf(const DetailKind& kind, const ChargeKey& key, std::int16_t code) {
  return concat("DELETE FROM ", kind.table, " ", conditionOf(key), " AND ", kind.column, " = ",
                code);
}

WantedDetails wantedOf(const DetailKind& kind, const ChargeKey& key, const std::string& codes) {
  return {codes, [&kind, key](std::int16_t code) { return insertOf(kind, key, code); }};
}

void changeDetailsOf(const DetailKind& kind, const ChargeKey& key, const RecordSetRef& stored,
                     const std::string& codes, const AddStatement& add) {
  reconcileDetails(stored, kind.column, codes,
                   {.remove =
                        [&](std::int16_t code) {
                          add(deleteOf(kind, key, code), kind.deletedNothing);
                          return kDone;
                        },
                    .insert =
                        [&](std::int16_t code) {
                          add(insertOf(kind, key, code), nullptr);
                          return kDone;
                        }});
}

}  // namespace

int ChargeInsert(std::int16_t PatientId, Date& ChargeDate, TimeOfDay& ChargeTime,
                 Date ChargeRealDate, std::int32_t EMCode, std::int16_t DoctorCode,
                 std::int16_t ReferDoctorCode, std::int16_t FacilityCode,
                 const std::string& diagnoses, const std::string& procedures, std::int16_t Status,
                 std::string& message) {
  const DateTime now = services().now();
  const ChargeKey key{PatientId, now.date, now.time};
  const WantedDetails details[] = {wantedOf(kDiagnoses, key, diagnoses),
                                   wantedOf(kProcedures, key, procedures)};
  const int result = insertInTransaction(
      concat("INSERT INTO PatientCharges (PatientId, ChargeDate, ChargeTime, ChargeRealDate, "
             "FacilityCode, EMCode, DoctorCode, ReferDoctorCode, Status) VALUES (",
             PatientId, ", ", "#", monthFirst(key.ChargeDate), "#, ", "#", clock24(key.ChargeTime),
             "#, ", "#", monthFirst(ChargeRealDate), "#, ", FacilityCode, ",", EMCode, ",",
             DoctorCode, ",", ReferDoctorCode, ",", Status, ")"),
      details, [] {}, message);
  // Not when the commit has failed: the editor's next try must insert again.
  if (result == kDone) {
    ChargeDate = key.ChargeDate;
    ChargeTime = key.ChargeTime;
  }
  return result;
}

int ChargeUpdate(std::int16_t PatientId, Date ChargeDate, TimeOfDay ChargeTime, Date ChargeRealDate,
                 std::int32_t EMCode, std::int16_t DoctorCode, std::int16_t ReferDoctorCode,
                 std::int16_t FacilityCode, const std::string& diagnoses,
                 const std::string& procedures, std::int16_t Status, std::string& message) {
  const ChargeKey key{PatientId, ChargeDate, ChargeTime};
  const RecordSetRef storedDiagnoses = ChargeDiagnosisList(PatientId, ChargeDate, ChargeTime);
  const RecordSetRef storedProcedures = ChargeProceduresList(PatientId, ChargeDate, ChargeTime);
  return updateWithDetails(
      [&](const AddStatement& add) {
        changeDetailsOf(kDiagnoses, key, storedDiagnoses, diagnoses, add);
        changeDetailsOf(kProcedures, key, storedProcedures, procedures, add);
      },
      concat("UPDATE PatientCharges SET", " ChargeRealDate= #", yearFirst(ChargeRealDate), "#",
             ", FacilityCode = ", FacilityCode, ", EMCode = ", EMCode,
             ", DoctorCode = ", DoctorCode, ", ReferDoctorCode = ", ReferDoctorCode,
             ", Status = ", Status, " ", conditionOf(key)),
      kUpdateTouchedNothing, message);
}

int ChargeDelete(std::int16_t PatientId, Date ChargeDate, TimeOfDay ChargeTime,
                 std::string& message) {
  int result = kDone;
  const std::int64_t records = Trap(result, message)
                                   .execute("DELETE FROM PatientCharges " +
                                            conditionOf({PatientId, ChargeDate, ChargeTime}));
  if (records != 0) return kDone;
  message = kDeleteTouchedNothing;
  return kNothingTouched;
}

int ChargeDiagnosisInsert(std::int16_t PatientId, Date ChargeDate, TimeOfDay ChargeTime,
                          std::int16_t DiagnosisCode, std::string& message) {
  return insertDetail(insertOf(kDiagnoses, {PatientId, ChargeDate, ChargeTime}, DiagnosisCode),
                      message);
}

int ChargeDiagnosisDelete(std::int16_t PatientId, Date ChargeDate, TimeOfDay ChargeTime,
                          std::int16_t DiagnosisCode, std::string& message) {
  return deleteDetail(deleteOf(kDiagnoses, {PatientId, ChargeDate, ChargeTime}, DiagnosisCode),
                      kDiagnoses.deletedNothing, message);
}

int ChargeProcedureInsert(std::int16_t PatientId, Date ChargeDate, TimeOfDay ChargeTime,
                          std::int16_t ProcedureCode, std::string& message) {
  return insertDetail(insertOf(kProcedures, {PatientId, ChargeDate, ChargeTime}, ProcedureCode),
                      message);
}

int ChargeProcedureDelete(std::int16_t PatientId, Date ChargeDate, TimeOfDay ChargeTime,
                          std::int16_t ProcedureCode, std::string& message) {
  return deleteDetail(deleteOf(kProcedures, {PatientId, ChargeDate, ChargeTime}, ProcedureCode),
                      kProcedures.deletedNothing, message);
}

int ChargeSetPrintLot(std::int16_t PatientId, Date ChargeDate, TimeOfDay ChargeTime,
                      std::int32_t lot, std::int16_t Status, std::string& message) {
  const std::string lotPart = lot < 0 ? "" : concat(" PrintLot = ", lot, ",");
  int result = kDone;
  Trap(result, message).begin();
  finishChange(concat("UPDATE PatientCharges SET", lotPart, " [Status] = ", Status, " ",
                      conditionOf({PatientId, ChargeDate, ChargeTime})),
               kUpdateTouchedNothing, result, message);
  return result;
}

}  // namespace bw
