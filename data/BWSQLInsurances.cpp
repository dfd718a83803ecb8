#include "data/BWSQLInsurances.h"

#include "data/Reading.h"
#include "data/Writing.h"
#include "text/Text.h"

namespace bw {

RecordSetRef InsuranceGet(std::int16_t InsuranceCode) {
  return getRecord(concat("SELECT * FROM Insurance", " WHERE InsuranceCode=", InsuranceCode));
}

std::int16_t InsuranceNextCode() {
  return nextCode(highestBelow1000("Insurance", "InsuranceCode"), "InsuranceCode");
}

int InsuranceInsert(std::int16_t& InsuranceCode, const std::string& Description,
                    const std::string& BillingInsuranceCode, std::string& message) {
  const std::int16_t code = InsuranceNextCode();
  return insertRecord(
      code, InsuranceCode,
      concat("INSERT INTO Insurance (InsuranceCode, Description, BillingInsuranceCode) VALUES (",
             code, ", ", "'", Description, "',", "'", BillingInsuranceCode, "'", ")"),
      message);
}

int InsuranceUpdate(std::int16_t InsuranceCode, const std::string& Description,
                    const std::string& BillingInsuranceCode, std::string& message) {
  return changeRecord(
      concat("UPDATE Insurance SET", " Description='", Description, "'", ", BillingInsuranceCode='",
             BillingInsuranceCode, "'", " WHERE InsuranceCode = ", InsuranceCode),
      kUpdateTouchedNothing, message);
}

int InsuranceDelete(std::int16_t InsuranceCode, std::string& message) {
  return changeRecord(concat("DELETE FROM Insurance", " WHERE InsuranceCode = ", InsuranceCode),
                      kDeleteTouchedNothing, message);
}

}  // namespace bw
