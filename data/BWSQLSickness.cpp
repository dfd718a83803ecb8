#include "data/BWSQLSickness.h"

#include "data/Reading.h"
#include "data/Writing.h"
#include "text/Text.h"

namespace bw {

RecordSetRef SicknessGet(std::int16_t SicknessCode) {
  return getRecord(
      concat("SELECT * FROM SicknessDescriptive", " WHERE SicknessCode=", SicknessCode));
}

RecordSetRef SicknessTypeList() {
  return listRecords("SELECT * FROM SicknessType", OnError::message);
}

std::int16_t SicknessNextCode() {
  return nextCode(highestBelow1000("Sickness", "SicknessCode"), "SicknessCode");
}

int SicknessInsert(std::int16_t& SicknessCode, const std::string& Description,
                   std::int16_t SicknessTypeCode, std::string& message) {
  const std::int16_t code = SicknessNextCode();
  return insertRecord(
      code, SicknessCode,
      concat("INSERT INTO Sickness (SicknessCode, Description, SicknessTypeCode) VALUES (", code,
             ", ", "'", Description, "',", SicknessTypeCode, ")"),
      message);
}

int SicknessUpdate(std::int16_t SicknessCode, const std::string& Description,
                   std::int16_t SicknessTypeCode, std::string& message) {
  return changeRecord(
      concat("UPDATE Sickness SET", " Description='", Description,
             "', SicknessTypeCode = ", SicknessTypeCode, " WHERE SicknessCode = ", SicknessCode),
      kUpdateTouchedNothing, message);
}

int SicknessDelete(std::int16_t SicknessCode, std::string& message) {
  return changeRecord(concat("DELETE FROM Sickness", " WHERE SicknessCode = ", SicknessCode),
                      kDeleteTouchedNothing, message);
}

}  // namespace bw
