#pragma once

#include <cstdint>
#include <string>

#include "records/RecordSet.h"

namespace bw {

// Groups of diagnoses: rows of DiagnosisFamily. Writers return 0 when stored; otherwise nothing was
// written and `message` says why: 1 the database refused, 2 the row has gone.

// A failure shows the error, unlike in the other families.
RecordSetRef DiagnosisFamilyGet(std::int16_t DiagnosisFamilyCode);
std::int16_t DiagnosisFamilyNextCode();
int DiagnosisFamilyInsert(std::int16_t& DiagnosisFamilyCode,
                          const std::string& DiagnosisFamilyDescription, std::string& message);
int DiagnosisFamilyUpdate(std::int16_t DiagnosisFamilyCode,
                          const std::string& DiagnosisFamilyDescription, std::string& message);
int DiagnosisFamilyDelete(std::int16_t DiagnosisFamilyCode, std::string& message);

}  // namespace bw
