#include "data/BWSQLFacilities.h"

#include "data/Reading.h"
#include "data/Writing.h"
#include "text/Text.h"

namespace bw {

RecordSetRef FacilityGet(std::int16_t FacilityCode) {
  return getRecord(concat("SELECT * FROM Facility", " WHERE FacilityCode=", FacilityCode));
}

RecordSetRef FacilityList() { return listRecords("SELECT * FROM Facility", OnError::silent); }

std::int16_t FacilityNextCode() {
  return nextCode(highestBelow1000("Facility", "FacilityCode"), "FacilityCode");
}

int FacilityInsert(std::int16_t& FacilityCode, const std::string& Description,
                   std::int16_t FacilityTypeCode, const std::string& BillingFacilityCode,
                   const std::string& BillingFacilityCodeOut, std::string& message) {
  const std::int16_t code = FacilityNextCode();
  return insertRecord(code, FacilityCode,
                      concat("INSERT INTO Facility (FacilityCode, Description, FacilityTypeCode, "
                             "BillingFacilityCode, BillingFacilityCodeOut) VALUES (",
                             code, ", ", "'", Description, "',", FacilityTypeCode, ", ", "'",
                             BillingFacilityCode, "',", "'", BillingFacilityCodeOut, "'", ")"),
                      message);
}

int FacilityUpdate(std::int16_t FacilityCode, const std::string& Description,
                   std::int16_t FacilityTypeCode, const std::string& BillingFacilityCode,
                   const std::string& BillingFacilityCodeOut, std::string& message) {
  return changeRecord(concat("UPDATE Facility SET", " Description='", Description,
                             "', FacilityTypeCode = ", FacilityTypeCode, ", BillingFacilityCode= '",
                             BillingFacilityCode, "'", ", BillingFacilityCodeOut= '",
                             BillingFacilityCodeOut, "'", " WHERE FacilityCode = ", FacilityCode),
                      kUpdateTouchedNothing, message);
}

int FacilityDelete(std::int16_t FacilityCode, std::string& message) {
  return changeRecord(concat("DELETE FROM Facility", " WHERE FacilityCode = ", FacilityCode),
                      kDeleteTouchedNothing, message);
}

}  // namespace bw
