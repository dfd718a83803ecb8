#include "data/BWSQLWards.h"

#include "data/Reading.h"
#include "data/Writing.h"
#include "text/Text.h"

namespace bw {

RecordSetRef WardGet(std::int16_t WardCode) {
  return listRecords(concat("SELECT * FROM FacilityWards ", "WHERE WardCode= ", WardCode),
                     OnError::silent);
}

RecordSetRef WardListByFacility(std::int16_t FacilityCode) {
  return listRecords(concat("SELECT * FROM FacilityWards ", "WHERE FacilityCode= ", FacilityCode),
                     OnError::silent);
}

std::int16_t WardNextCode() {
  return nextCode(highestBelow1000("FacilityWards", "WardCode"), "WardCode");
}

int WardInsert(std::int16_t& WardCode, std::int16_t FacilityCode, const std::string& Description,
               std::string& message) {
  const std::int16_t code = WardNextCode();
  WardCode = code;
  return insertRecord(
      code, WardCode,
      concat("INSERT INTO FacilityWards (WardCode, FacilityCode, Description) VALUES (", code, ", ",
             FacilityCode, ", ", "'", Description, "'", ")"),
      message);
}

int WardUpdate(std::int16_t WardCode, std::int16_t FacilityCode, const std::string& Description,
               std::string& message) {
  return changeRecord(concat("UPDATE FacilityWards SET", " Description='", Description,
                             "', FacilityCode = ", FacilityCode, " WHERE WardCode = ", WardCode),
                      kUpdateTouchedNothing, message);
}

int WardDelete(std::int16_t WardCode, std::string& message) {
  return changeRecord(concat("DELETE FROM FacilityWards", " WHERE WardCode = ", WardCode),
                      kDeleteTouchedNothing, message);
}

}  // namespace bw
