#pragma once

#include <cstdint>
#include <string>

#include "records/RecordSet.h"

namespace bw {

// Insurances: rows of Insurance. Writers return 0 when stored; otherwise nothing was written and
// `message` says why: 1 the database refused, 2 the row has gone.

RecordSetRef InsuranceGet(std::int16_t InsuranceCode);
std::int16_t InsuranceNextCode();
int InsuranceInsert(std::int16_t& InsuranceCode, const std::string& Description,
                    const std::string& BillingInsuranceCode, std::string& message);
int InsuranceUpdate(std::int16_t InsuranceCode, const std::string& Description,
                    const std::string& BillingInsuranceCode, std::string& message);
int InsuranceDelete(std::int16_t InsuranceCode, std::string& message);

}  // namespace bw
