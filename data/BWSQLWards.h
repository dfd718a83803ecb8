#pragma once

#include <cstdint>
#include <string>

#include "records/RecordSet.h"

namespace bw {

// Wards: rows of FacilityWards. Their numbers are unique across all facilities. Writers return 0
// when stored; otherwise nothing was written and `message` says why: 1 the database refused, 2 the
// row has gone.

// Unlike the other results of this kind, this one can be written to.
RecordSetRef WardGet(std::int16_t WardCode);
RecordSetRef WardListByFacility(std::int16_t FacilityCode);
std::int16_t WardNextCode();
// The code is set before anything else, to 0 when none could be allocated.
int WardInsert(std::int16_t& WardCode, std::int16_t FacilityCode, const std::string& Description,
               std::string& message);
int WardUpdate(std::int16_t WardCode, std::int16_t FacilityCode, const std::string& Description,
               std::string& message);
int WardDelete(std::int16_t WardCode, std::string& message);

}  // namespace bw
