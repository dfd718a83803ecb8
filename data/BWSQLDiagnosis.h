#pragma once

#include <cstdint>
#include <string>

#include "records/RecordSet.h"

namespace bw {

// Diagnoses: rows of Diagnosis. Writers return 0 when stored; otherwise nothing was written and
// `message` says why: 1 the database refused, 2 the row has gone.

RecordSetRef DiagnosisGet(std::int16_t DiagnosisCode);
RecordSetRef DiagnosisFamilyList();  // a failure shows the error
std::int16_t DiagnosisNextCode();
int DiagnosisInsert(std::int16_t& DiagnosisCode, const std::string& Description,
                    std::int16_t DiagnosisFamilyCode, const std::string& RealDiagnosisCode,
                    const std::string& BillingDiagnosisCode, std::string& message);
int DiagnosisUpdate(std::int16_t DiagnosisCode, const std::string& Description,
                    std::int16_t DiagnosisFamilyCode, const std::string& RealDiagnosisCode,
                    const std::string& BillingDiagnosisCode, std::string& message);
int DiagnosisDelete(std::int16_t DiagnosisCode, std::string& message);

}  // namespace bw
