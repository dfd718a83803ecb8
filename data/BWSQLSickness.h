#pragma once

#include <cstdint>
#include <string>

#include "records/RecordSet.h"

namespace bw {

// History items: rows of Sickness. Writers return 0 when stored; otherwise nothing was written and
// `message` says why: 1 the database refused, 2 the row has gone.

RecordSetRef SicknessGet(std::int16_t SicknessCode);
RecordSetRef SicknessTypeList();  // a failure shows the error
std::int16_t SicknessNextCode();
int SicknessInsert(std::int16_t& SicknessCode, const std::string& Description,
                   std::int16_t SicknessTypeCode, std::string& message);
int SicknessUpdate(std::int16_t SicknessCode, const std::string& Description,
                   std::int16_t SicknessTypeCode, std::string& message);
int SicknessDelete(std::int16_t SicknessCode, std::string& message);

}  // namespace bw
