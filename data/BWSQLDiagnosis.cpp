#include "data/BWSQLDiagnosis.h"

#include "data/Reading.h"
#include "data/Writing.h"
#include "text/Text.h"

namespace bw {

RecordSetRef DiagnosisGet(std::int16_t DiagnosisCode) {
  return getRecord(
      concat("SELECT * FROM DiagnosisDescriptive", " WHERE DiagnosisCode=", DiagnosisCode));
}

RecordSetRef DiagnosisFamilyList() {
  return listRecords("SELECT * FROM DiagnosisFamily", OnError::message);
}

std::int16_t DiagnosisNextCode() {
  return nextCode(highestBelow1000("Diagnosis", "DiagnosisCode"), "DiagnosisCode");
}

int DiagnosisInsert(std::int16_t& DiagnosisCode, const std::string& Description,
                    std::int16_t DiagnosisFamilyCode, const std::string& RealDiagnosisCode,
                    const std::string& BillingDiagnosisCode, std::string& message) {
  const std::int16_t code = DiagnosisNextCode();
  return insertRecord(
      code, DiagnosisCode,
      concat("INSERT INTO Diagnosis (DiagnosisCode, Description, DiagnosisFamilyCode, "
             "RealDiagnosisCode, BillingDiagnosisCode) VALUES (",
             code, ", ", "'", Description, "',", DiagnosisFamilyCode, ",", "'", RealDiagnosisCode,
             "',", "'", BillingDiagnosisCode, "'", ")"),
      message);
}

int DiagnosisUpdate(std::int16_t DiagnosisCode, const std::string& Description,
                    std::int16_t DiagnosisFamilyCode, const std::string& RealDiagnosisCode,
                    const std::string& BillingDiagnosisCode, std::string& message) {
  return changeRecord(
      concat("UPDATE Diagnosis SET", " Description='", Description,
             "', DiagnosisFamilyCode = ", DiagnosisFamilyCode, ", RealDiagnosisCode='",
             RealDiagnosisCode, "'", ", BillingDiagnosisCode='", BillingDiagnosisCode, "'",
             " WHERE DiagnosisCode = ", DiagnosisCode),
      kUpdateTouchedNothing, message);
}

int DiagnosisDelete(std::int16_t DiagnosisCode, std::string& message) {
  return changeRecord(concat("DELETE FROM Diagnosis", " WHERE DiagnosisCode = ", DiagnosisCode),
                      kDeleteTouchedNothing, message);
}

}  // namespace bw
