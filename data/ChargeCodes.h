#pragma once

#include <cstdint>

namespace bw {

// Numbers in the tables that the program gives a meaning of its own.

enum ChargeStatus : std::int16_t {
  kReady,
  kPosted,
  kArchived,       // by hand, in the charge editor
  kArchivedByRun,  // by the archive run; no item of the charge editor, and in no filter but "All"
};

// Rows of ChargeTypes: the patient's status.
enum ChargeType : std::int16_t { kInpatient = 1, kOutpatient };

// Rows of AttentionTypes, as a new database has them.
enum AttentionType : std::int16_t { kConsult = 1, kVisit };

}  // namespace bw
