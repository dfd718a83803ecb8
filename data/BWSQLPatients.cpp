#include "data/BWSQLPatients.h"

#include "core/Services.h"
#include "data/Literals.h"
#include "data/Reading.h"
#include "data/Writing.h"
#include "engine/Rewriter.h"
#include "text/Text.h"

namespace bw {
namespace {

constexpr std::int16_t kFirstPatientId = 25000;

std::string stampNow() { return concat(" ZITS = #", stamp(services().now()), "# "); }

RecordSetRef chargeDetails(const char* columnsAndJoin, std::int16_t PatientId, Date ChargeDate,
                           TimeOfDay ChargeTime) {
  return listRecords(
      concat(columnsAndJoin, "WHERE ", "PatientId = ", PatientId, " and ChargeDate = #",
             monthFirst(ChargeDate), "# and ChargeTime = #", clock24(ChargeTime), "#"),
      OnError::messageWithSource);
}

// A patient's statement has one date that can be missing.
int tellWhichDate(int result, std::string& message) {
  if (result == kDatabaseError && message == kDateMissing)
    message = "The date of birth is missing: please fill in DOB. Nothing was stored.";
  return result;
}

}  // namespace

RecordSetRef PatientGet(std::int16_t PatientId) {
  return getRecord(concat("SELECT * FROM PatientsDescriptive WHERE PatientId=", PatientId));
}

std::int16_t PatientNextId() {
  return nextCode("SELECT * FROM Patient WHERE PatientId >= 25000 ORDER BY PatientId DESC",
                  "PatientId", kFirstPatientId);
}

int PatientInsert(std::int16_t& PatientId, const std::string& Names,
                  std::optional<Date> DateOfBirth, const std::string& AccountNumber,
                  std::int16_t InsuranceCode, std::string& message) {
  const std::int16_t code = PatientNextId();
  const int result =
      insertRecord(code, PatientId,
                   concat("INSERT INTO Patient (PatientId, [Names] , DateOfBirth, AccountNumber, "
                          "InsuranceCode) VALUES (",
                          code, ", ", "'", Names, "',", "#", monthFirstIfAny(DateOfBirth), "#, ",
                          "'", AccountNumber, "',", InsuranceCode, ")"),
                   message);
  return tellWhichDate(result, message);
}

int PatientUpdate(std::int16_t PatientId, const std::string& Names, std::optional<Date> DateOfBirth,
                  const std::string& AccountNumber, std::int16_t InsuranceCode,
                  std::string& message) {
  const int result = changeRecord(
      concat("UPDATE Patient SET", " [Names]='", Names, "', ", " DateOfBirth = #",
             yearFirstIfAny(DateOfBirth), "#, ", " AccountNumber='", AccountNumber, "', ",
             " InsuranceCode=", InsuranceCode, ", ", stampNow(), " WHERE PatientId = ", PatientId),
      kUpdateTouchedNothing, message);
  return tellWhichDate(result, message);
}

int PatientDelete(std::int16_t PatientId, std::string& message) {
  return changeRecord(concat("DELETE FROM Patient", " WHERE PatientId = ", PatientId),
                      kDeleteTouchedNothing, message);
}

int PatientHistoryInsert(std::int16_t PatientId, std::int16_t SicknessCode,
                         std::int16_t SicknessTypeCode, std::string& message) {
  return insertRow(
      concat("INSERT INTO PatientHistory (PatientId, SicknessCode, SicknessTypeCode) VALUES (",
             PatientId, ", ", SicknessCode, ", ", SicknessTypeCode, ")"),
      message);
}

int PatientHistoryDelete(std::int16_t PatientId, std::int16_t SicknessCode,
                         std::int16_t SicknessTypeCode, std::string& message) {
  return changeRecord(
      concat("DELETE FROM PatientHistory", " WHERE PatientId = ", PatientId,
             " and SicknessCode = ", SicknessCode, " and SicknessTypeCode = ", SicknessTypeCode),
      kDeleteTouchedNothing, message);
}

int PatientSetAdmission(std::int16_t PatientId, std::int16_t InFacilityCode,
                        std::int16_t InWardCode, std::int16_t InDoctorCode, std::string& message) {
  return changeRecord(concat("UPDATE Patient SET", " InFacilityCode=", InFacilityCode, ", ",
                             InFacilityCode == 0 ? " LastChargeDate = #1990/01/01#, " : "",
                             " InWardCode=", InWardCode, ", ", " InDoctorCode=", InDoctorCode, ", ",
                             stampNow(), " WHERE PatientId = ", PatientId),
                      kUpdateTouchedNothing, message);
}

int PatientDoctorInsert(std::int16_t PatientId, std::int16_t DoctorCode,
                        std::int16_t AttentionTypeCode, std::int16_t Frequency,
                        std::string& message) {
  return insertRow(
      concat("INSERT INTO PatientDoctors (PatientId, DoctorCode, AttentionTypeCode, Frequency) "
             "VALUES (",
             PatientId, ", ", DoctorCode, ", ", AttentionTypeCode, ", ", Frequency, ")"),
      message);
}

int PatientDoctorUpdate(std::int16_t PatientId, std::int16_t DoctorCode,
                        std::int16_t AttentionTypeCode, std::int16_t Frequency,
                        std::string& message) {
  return changeRecord(concat("UPDATE PatientDoctors SET", " AttentionTypeCode=", AttentionTypeCode,
                             ", Frequency = ", Frequency, " WHERE PatientId = ", PatientId,
                             " and DoctorCode = ", DoctorCode),
                      kUpdateTouchedNothing, message);
}

int PatientDoctorDelete(std::int16_t PatientId, std::int16_t DoctorCode, std::string& message) {
  return changeRecord(concat("DELETE FROM PatientDoctors", " WHERE PatientId = ", PatientId,
                             " and DoctorCode = ", DoctorCode),
                      kDeleteTouchedNothing, message);
}

int PatientTransferCharges(std::int16_t destination, std::int16_t source, std::string& message) {
  return changeRecord(concat("UPDATE PatientCharges SET", " PatientId=", destination,
                             " WHERE PatientId = ", source),
                      "No Charges to transfer!", message);
}

RecordSetRef ChargeDiagnosisList(std::int16_t PatientId, Date ChargeDate, TimeOfDay ChargeTime) {
  return chargeDetails(
      "SELECT ChargeDiagnosis.*, Diagnosis.Description, Diagnosis.RealDiagnosisCode, "
      "Diagnosis.BillingDiagnosisCode "
      "FROM Diagnosis INNER JOIN ChargeDiagnosis ON Diagnosis.DiagnosisCode = "
      "ChargeDiagnosis.DiagnosisCode ",
      PatientId, ChargeDate, ChargeTime);
}

RecordSetRef ChargeProceduresList(std::int16_t PatientId, Date ChargeDate, TimeOfDay ChargeTime) {
  return chargeDetails(
      "SELECT ChargeProcedures.*, Procedures.Description, Procedures.RealProcedureCode, "
      "Procedures.BillingProcedureCode "
      "FROM Procedures INNER JOIN ChargeProcedures ON Procedures.ProcedureCode = "
      "ChargeProcedures.ProcedureCode ",
      PatientId, ChargeDate, ChargeTime);
}

}  // namespace bw
