#include "data/BWSQLProcedures.h"

#include "data/Reading.h"
#include "data/Writing.h"
#include "text/Text.h"

namespace bw {

RecordSetRef ProcedureGet(std::int16_t ProcedureCode) {
  return getRecord(concat("SELECT * FROM Procedures", " WHERE ProcedureCode=", ProcedureCode));
}

std::int16_t ProcedureNextCode() {
  return nextCode(highestBelow1000("Procedures", "ProcedureCode"), "ProcedureCode");
}

int ProcedureInsert(std::int16_t& ProcedureCode, const std::string& Description,
                    const std::string& RealProcedureCode, const std::string& BillingProcedureCode,
                    std::string& message) {
  const std::int16_t code = ProcedureNextCode();
  return insertRecord(code, ProcedureCode,
                      concat("INSERT INTO Procedures (ProcedureCode, Description, "
                             "RealProcedureCode, BillingProcedureCode) VALUES (",
                             code, ", ", "'", Description, "', ", "'", RealProcedureCode, "',", "'",
                             BillingProcedureCode, "'", ")"),
                      message);
}

int ProcedureUpdate(std::int16_t ProcedureCode, const std::string& Description,
                    const std::string& RealProcedureCode, const std::string& BillingProcedureCode,
                    std::string& message) {
  return changeRecord(
      concat("UPDATE Procedures SET", " Description='", Description, "'", ", RealProcedureCode='",
             RealProcedureCode, "'", ", BillingProcedureCode='", BillingProcedureCode, "'",
             " WHERE ProcedureCode = ", ProcedureCode),
      kUpdateTouchedNothing, message);
}

int ProcedureDelete(std::int16_t ProcedureCode, std::string& message) {
  return changeRecord(concat("DELETE FROM Procedures", " WHERE ProcedureCode = ", ProcedureCode),
                      kDeleteTouchedNothing, message);
}

}  // namespace bw
