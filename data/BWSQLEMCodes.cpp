#include "data/BWSQLEMCodes.h"

#include "data/Reading.h"
#include "data/Writing.h"
#include "text/Text.h"

namespace bw {

RecordSetRef EMCodeGet(std::int32_t EMCode) {
  return getRecord(concat("SELECT * FROM EMCodesDescriptive", " WHERE EMCode=", EMCode));
}

std::int16_t EMCodeNextCode() {
  return nextCode("SELECT TOP 1 * FROM EvaluationManagement ORDER BY EMCode DESC", "EMCode", 1,
                  OnError::messageWithSource);
}

int EMCodeInsert(std::int32_t& EMCode, const std::string& Description,
                 std::int16_t FacilityTypeCode, std::int16_t ChargeTypeCode,
                 std::int16_t AttentionTypeCode, const std::string& BillingEMCode,
                 const std::string& RealEMCode, std::int16_t ShowOnFirst, std::int16_t ShowOnNext,
                 std::int16_t IsDischarge, std::string& message) {
  const std::int32_t code = EMCodeNextCode();
  if (code == 0) message = "Error obtaining new EMCode";
  return insertRecord(
      code, EMCode,
      concat("INSERT INTO EvaluationManagement (EMCode, Description, FacilityTypeCode, "
             "ChargeTypeCode, AttentionTypeCode, BillingEMCode, RealEMCode, ShowOnFirst, "
             "ShowOnNext, IsDischarge) VALUES (",
             code, ", ", "'", Description, "',", FacilityTypeCode, ",", ChargeTypeCode, ",",
             AttentionTypeCode, ",", "'", BillingEMCode, "',", "'", RealEMCode, "',", ShowOnFirst,
             ",", ShowOnNext, ",", IsDischarge, ")"),
      message);
}

int EMCodeUpdate(std::int32_t EMCode, const std::string& Description, std::int16_t FacilityTypeCode,
                 std::int16_t ChargeTypeCode, std::int16_t AttentionTypeCode,
                 const std::string& BillingEMCode, const std::string& RealEMCode,
                 std::int16_t ShowOnFirst, std::int16_t ShowOnNext, std::int16_t IsDischarge,
                 std::string& message) {
  return changeRecord(
      concat("UPDATE EvaluationManagement SET", " Description='", Description,
             "', FacilityTypeCode = ", FacilityTypeCode, ", ChargeTypeCode = ", ChargeTypeCode,
             ", AttentionTypeCode = ", AttentionTypeCode, ", BillingEMCode = '", BillingEMCode, "'",
             ", RealEMCode = '", RealEMCode, "'", ", ShowOnFirst = ", ShowOnFirst,
             ", ShowOnNext = ", ShowOnNext, ", IsDischarge = ", IsDischarge,
             " WHERE EMCode = ", EMCode),
      kUpdateTouchedNothing, message);
}

int EMCodeDelete(std::int32_t EMCode, std::string& message) {
  return changeRecord(concat("DELETE FROM EvaluationManagement", " WHERE EMCode = ", EMCode),
                      kDeleteTouchedNothing, message);
}

}  // namespace bw
