#pragma once

#include <cstdint>
#include <string>

#include "records/RecordSet.h"

namespace bw {

// Facilities: rows of Facility. Writers return 0 when stored; otherwise nothing was written and
// `message` says why: 1 the database refused, 2 the row has gone.

RecordSetRef FacilityGet(std::int16_t FacilityCode);
RecordSetRef FacilityList();
std::int16_t FacilityNextCode();
int FacilityInsert(std::int16_t& FacilityCode, const std::string& Description,
                   std::int16_t FacilityTypeCode, const std::string& BillingFacilityCode,
                   const std::string& BillingFacilityCodeOut, std::string& message);
int FacilityUpdate(std::int16_t FacilityCode, const std::string& Description,
                   std::int16_t FacilityTypeCode, const std::string& BillingFacilityCode,
                   const std::string& BillingFacilityCodeOut, std::string& message);
int FacilityDelete(std::int16_t FacilityCode, std::string& message);

}  // namespace bw
