#pragma once

#include <cstdint>
#include <string>

#include "records/RecordSet.h"

namespace bw {

// Evaluation and management services: rows of EvaluationManagement.
// Their codes are stored in 32 bits but allocated in 16. Writers return 0 when stored; otherwise
// nothing was written and `message` says why: 1 the database refused, 2 the row has gone.

RecordSetRef EMCodeGet(std::int32_t EMCode);
// One more than the highest of all. Above 32767 it fails: 0, and the message shows the statement.
std::int16_t EMCodeNextCode();
int EMCodeInsert(std::int32_t& EMCode, const std::string& Description,
                 std::int16_t FacilityTypeCode, std::int16_t ChargeTypeCode,
                 std::int16_t AttentionTypeCode, const std::string& BillingEMCode,
                 const std::string& RealEMCode, std::int16_t ShowOnFirst, std::int16_t ShowOnNext,
                 std::int16_t IsDischarge, std::string& message);
int EMCodeUpdate(std::int32_t EMCode, const std::string& Description, std::int16_t FacilityTypeCode,
                 std::int16_t ChargeTypeCode, std::int16_t AttentionTypeCode,
                 const std::string& BillingEMCode, const std::string& RealEMCode,
                 std::int16_t ShowOnFirst, std::int16_t ShowOnNext, std::int16_t IsDischarge,
                 std::string& message);
int EMCodeDelete(std::int32_t EMCode, std::string& message);

}  // namespace bw
