#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "records/RecordSet.h"

namespace bw {

// Patients: rows of Patient with their history and visiting doctors; the moving of charges from
// one patient to another; and the lists of a charge's details.
// A patient's admission is three columns of the row; facility 0 means not admitted.
// Writers are one transaction each and return 0 when stored; otherwise nothing was written and
// `message` says why: 1 the database refused, 2 no row was touched.

RecordSetRef PatientGet(std::int16_t PatientId);
// From 25000 on. 0 when it failed, which is told in a message.
std::int16_t PatientNextId();
// The database refuses a patient without a date of birth.
int PatientInsert(std::int16_t& PatientId, const std::string& Names,
                  std::optional<Date> DateOfBirth, const std::string& AccountNumber,
                  std::int16_t InsuranceCode, std::string& message);
// Stamps the row with the present moment.
int PatientUpdate(std::int16_t PatientId, const std::string& Names, std::optional<Date> DateOfBirth,
                  const std::string& AccountNumber, std::int16_t InsuranceCode,
                  std::string& message);
int PatientDelete(std::int16_t PatientId, std::string& message);

int PatientHistoryInsert(std::int16_t PatientId, std::int16_t SicknessCode,
                         std::int16_t SicknessTypeCode, std::string& message);
int PatientHistoryDelete(std::int16_t PatientId, std::int16_t SicknessCode,
                         std::int16_t SicknessTypeCode, std::string& message);

// Admits, or with facility 0 discharges. Only a discharge resets LastChargeDate. The visiting
// doctors are left as they are. Stamps the row with the present moment.
int PatientSetAdmission(std::int16_t PatientId, std::int16_t InFacilityCode,
                        std::int16_t InWardCode, std::int16_t InDoctorCode, std::string& message);

int PatientDoctorInsert(std::int16_t PatientId, std::int16_t DoctorCode,
                        std::int16_t AttentionTypeCode, std::int16_t Frequency,
                        std::string& message);
int PatientDoctorUpdate(std::int16_t PatientId, std::int16_t DoctorCode,
                        std::int16_t AttentionTypeCode, std::int16_t Frequency,
                        std::string& message);
int PatientDoctorDelete(std::int16_t PatientId, std::int16_t DoctorCode, std::string& message);

// Moves every charge of the source, or none. 2 when it has none.
int PatientTransferCharges(std::int16_t destination, std::int16_t source, std::string& message);

// A charge's details with their catalogue texts. A failure shows the error and the statement.
RecordSetRef ChargeDiagnosisList(std::int16_t PatientId, Date ChargeDate, TimeOfDay ChargeTime);
RecordSetRef ChargeProceduresList(std::int16_t PatientId, Date ChargeDate, TimeOfDay ChargeTime);

}  // namespace bw
