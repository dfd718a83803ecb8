#include "data/BWSQLDoctors.h"

#include "data/CodeList.h"
#include "data/Reading.h"
#include "data/Writing.h"
#include "text/Text.h"

namespace bw {
namespace {

std::string coveringStatement(std::int16_t doctor, std::int16_t covering) {
  return concat("INSERT INTO DoctorCoveringDoctors (DoctorCode, CoveringDoctorCode) VALUES (",
                doctor, ", ", covering, ")");
}

}  // namespace

RecordSetRef DoctorGet(std::int16_t DoctorCode) {
  return getRecord(concat("SELECT * FROM Doctors", " WHERE DoctorCode=", DoctorCode));
}

RecordSetRef DoctorList() { return listRecords("SELECT * FROM Doctors", OnError::silent); }

std::int16_t DoctorNextCode() {
  return nextCode(highestBelow1000("Doctors", "DoctorCode"), "DoctorCode");
}

int DoctorInsert(std::int16_t& DoctorCode, const std::string& Description,
                 const std::string& BillingDoctorCode, const std::string& coverage,
                 std::string& message) {
  const std::int16_t code = DoctorNextCode();
  const WantedDetails covering[] = {
      {coverage, [code](std::int16_t other) { return coveringStatement(code, other); }}};
  return insertRecord(
      code, DoctorCode,
      concat("INSERT INTO Doctors (DoctorCode, Description, BillingDoctorCode) VALUES (", code,
             ", ", "'", Description, "',", "'", BillingDoctorCode, "'", ")"),
      message, covering);
}

int DoctorUpdate(std::int16_t DoctorCode, const std::string& Description,
                 const std::string& BillingDoctorCode, const std::string& coverage,
                 std::string& message) {
  const RecordSetRef stored = CoveringDoctorList(DoctorCode);
  int result = kDone;
  Trap(result, message).begin();
  updateDetails(stored, "CoveringDoctorCode", coverage,
                {.remove =
                     [&](std::int16_t covering) {
                       return CoveringDoctorDelete(DoctorCode, covering, message);
                     },
                 .insert =
                     [&](std::int16_t covering) {
                       return CoveringDoctorInsert(DoctorCode, covering, message);
                     }},
                result, message);
  finishChange(
      concat("UPDATE Doctors SET", " Description='", Description, "'", ", BillingDoctorCode='",
             BillingDoctorCode, "'", " WHERE DoctorCode = ", DoctorCode),
      kUpdateTouchedNothing, result, message);
  return result;
}

int DoctorDelete(std::int16_t DoctorCode, std::string& message) {
  return changeRecord(concat("DELETE FROM Doctors", " WHERE DoctorCode = ", DoctorCode),
                      kDeleteTouchedNothing, message);
}

int CoveringDoctorInsert(std::int16_t DoctorCode, std::int16_t CoveringDoctorCode,
                         std::string& message) {
  return insertDetail(coveringStatement(DoctorCode, CoveringDoctorCode), message);
}

int CoveringDoctorDelete(std::int16_t DoctorCode, std::int16_t CoveringDoctorCode,
                         std::string& message) {
  return changeRecord(concat("DELETE FROM DoctorCoveringDoctors", " WHERE DoctorCode = ",
                             DoctorCode, " and CoveringDoctorCode = ", CoveringDoctorCode),
                      kDeleteTouchedNothing, message);
}

RecordSetRef CoveringDoctorList(std::int16_t DoctorCode) {
  return listRecords(concat("SELECT * FROM DoctorCoveringDoctors where DoctorCode= ", DoctorCode),
                     OnError::silent);
}

}  // namespace bw
