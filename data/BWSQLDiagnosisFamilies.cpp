#include "data/BWSQLDiagnosisFamilies.h"

#include "data/Reading.h"
#include "data/Writing.h"
#include "text/Text.h"

namespace bw {

RecordSetRef DiagnosisFamilyGet(std::int16_t DiagnosisFamilyCode) {
  return readRecords(
      concat("SELECT * FROM DiagnosisFamily", " WHERE DiagnosisFamilyCode=", DiagnosisFamilyCode),
      LockType::readOnly, OnError::message);
}

std::int16_t DiagnosisFamilyNextCode() {
  return nextCode(highestBelow1000("DiagnosisFamily", "DiagnosisFamilyCode"),
                  "DiagnosisFamilyCode");
}

int DiagnosisFamilyInsert(std::int16_t& DiagnosisFamilyCode,
                          const std::string& DiagnosisFamilyDescription, std::string& message) {
  const std::int16_t code = DiagnosisFamilyNextCode();
  return insertRecord(
      code, DiagnosisFamilyCode,
      concat(
          "INSERT INTO DiagnosisFamily (DiagnosisFamilyCode, DiagnosisFamilyDescription) VALUES (",
          code, ", ", "'", DiagnosisFamilyDescription, "'", ")"),
      message);
}

int DiagnosisFamilyUpdate(std::int16_t DiagnosisFamilyCode,
                          const std::string& DiagnosisFamilyDescription, std::string& message) {
  return changeRecord(
      concat("UPDATE DiagnosisFamily SET", " DiagnosisFamilyDescription='",
             DiagnosisFamilyDescription, "'", " WHERE DiagnosisFamilyCode = ", DiagnosisFamilyCode),
      kUpdateTouchedNothing, message);
}

int DiagnosisFamilyDelete(std::int16_t DiagnosisFamilyCode, std::string& message) {
  return changeRecord(
      concat("DELETE FROM DiagnosisFamily", " WHERE DiagnosisFamilyCode = ", DiagnosisFamilyCode),
      kDeleteTouchedNothing, message);
}

}  // namespace bw
