#pragma once

#include <cstdint>
#include <string>

#include "records/RecordSet.h"

namespace bw {

// Doctors: rows of Doctors, each with the doctors it covers for (rows of DoctorCoveringDoctors).
// A coverage list is a code list: ";4;17;", and ";" for none. A doctor's own code is not refused.
// Writers return 0 when stored; otherwise nothing was written and `message` says why.

RecordSetRef DoctorGet(std::int16_t DoctorCode);
RecordSetRef DoctorList();
std::int16_t DoctorNextCode();

// 0, 1, or 2 when a pair failed.
int DoctorInsert(std::int16_t& DoctorCode, const std::string& Description,
                 const std::string& BillingDoctorCode, const std::string& coverage,
                 std::string& message);
// 0, 1, 2 when the doctor has gone, or 3 when a pair failed. Pairs that are stored and wanted are
// not touched.
int DoctorUpdate(std::int16_t DoctorCode, const std::string& Description,
                 const std::string& BillingDoctorCode, const std::string& coverage,
                 std::string& message);
int DoctorDelete(std::int16_t DoctorCode, std::string& message);

// The insert works inside the caller's transaction, the delete in one of its own.
int CoveringDoctorInsert(std::int16_t DoctorCode, std::int16_t CoveringDoctorCode,
                         std::string& message);
int CoveringDoctorDelete(std::int16_t DoctorCode, std::int16_t CoveringDoctorCode,
                         std::string& message);
RecordSetRef CoveringDoctorList(std::int16_t DoctorCode);

}  // namespace bw
