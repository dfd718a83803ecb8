#pragma once

#include <cstdint>
#include <string>

#include "records/RecordSet.h"
#include "text/Moment.h"

namespace bw {

// The rows of a saved query that belong to the charge with this key.
std::string chargeStatement(const char* query, std::int16_t patient, Date date, TimeOfDay time);

// What a patient's latest charge had. The latest is that of the last date of care; of several of
// one day, the one entered last. Its status does not matter.
struct LastCharge {
  RecordSetRef charge;      // one row of ChargesDescriptive, or none
  RecordSetRef diagnoses;   // DiagnosisCode, Description
  RecordSetRef procedures;  // ProcedureCode, Description
};

// 0, or 1 with the error's text in `message`.
int readLastCharge(std::int16_t patient, LastCharge& last, std::string& message);

}  // namespace bw
