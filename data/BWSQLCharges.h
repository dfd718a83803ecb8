#pragma once

#include <cstdint>
#include <string>

#include "records/RecordSet.h"

namespace bw {

// Charges: one row of PatientCharges with its diagnoses and procedures.
// A charge is known by the moment it was entered (patient, date, time); no update changes that
// moment. The date of care, ChargeRealDate, is an ordinary column.
// Writers return 0 when stored; otherwise nothing was written and `message` says why.
// Code lists look like ";12;305;", and ";" when empty. A code that stands twice fails on the key.

// Takes the moment of entry from the clock and returns it in the two out arguments.
// 0, 1, or 2 when a detail row failed.
int ChargeInsert(std::int16_t PatientId, Date& ChargeDate, TimeOfDay& ChargeTime,
                 Date ChargeRealDate, std::int32_t EMCode, std::int16_t DoctorCode,
                 std::int16_t ReferDoctorCode, std::int16_t FacilityCode,
                 const std::string& diagnoses, const std::string& procedures, std::int16_t Status,
                 std::string& message);

// 0, 1, 2 when the charge has gone, or 3 when a detail row failed. Details that are stored and
// named again are not touched.
int ChargeUpdate(std::int16_t PatientId, Date ChargeDate, TimeOfDay ChargeTime, Date ChargeRealDate,
                 std::int32_t EMCode, std::int16_t DoctorCode, std::int16_t ReferDoctorCode,
                 std::int16_t FacilityCode, const std::string& diagnoses,
                 const std::string& procedures, std::int16_t Status, std::string& message);

// 0 or 2: goes by the number of records alone, so that a database error is told as "U:IMPELIENT"
// too. No transaction.
int ChargeDelete(std::int16_t PatientId, Date ChargeDate, TimeOfDay ChargeTime,
                 std::string& message);

// Details, inside the caller's transaction.
int ChargeDiagnosisInsert(std::int16_t PatientId, Date ChargeDate, TimeOfDay ChargeTime,
                          std::int16_t DiagnosisCode, std::string& message);
int ChargeDiagnosisDelete(std::int16_t PatientId, Date ChargeDate, TimeOfDay ChargeTime,
                          std::int16_t DiagnosisCode, std::string& message);
int ChargeProcedureInsert(std::int16_t PatientId, Date ChargeDate, TimeOfDay ChargeTime,
                          std::int16_t ProcedureCode, std::string& message);
int ChargeProcedureDelete(std::int16_t PatientId, Date ChargeDate, TimeOfDay ChargeTime,
                          std::int16_t ProcedureCode, std::string& message);

// Sets status and lot; a negative lot leaves the lot alone. 0, 1 or 2.
int ChargeSetPrintLot(std::int16_t PatientId, Date ChargeDate, TimeOfDay ChargeTime,
                      std::int32_t lot, std::int16_t Status, std::string& message);

}  // namespace bw
