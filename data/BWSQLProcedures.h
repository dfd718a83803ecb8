#pragma once

#include <cstdint>
#include <string>

#include "records/RecordSet.h"

namespace bw {

// Procedures: rows of Procedures. Writers return 0 when stored; otherwise nothing was written and
// `message` says why: 1 the database refused, 2 the row has gone.

RecordSetRef ProcedureGet(std::int16_t ProcedureCode);
std::int16_t ProcedureNextCode();
int ProcedureInsert(std::int16_t& ProcedureCode, const std::string& Description,
                    const std::string& RealProcedureCode, const std::string& BillingProcedureCode,
                    std::string& message);
int ProcedureUpdate(std::int16_t ProcedureCode, const std::string& Description,
                    const std::string& RealProcedureCode, const std::string& BillingProcedureCode,
                    std::string& message);
int ProcedureDelete(std::int16_t ProcedureCode, std::string& message);

}  // namespace bw
