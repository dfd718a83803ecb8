#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

#include "engine/Engine.h"

namespace bw {

// A catalogue of concepts in words of our own: for every kind of facility, patient's status and
// attention one for each of a doctor's visits that there is.

// Numbers of the lookup rows of a new database.
inline constexpr std::int64_t kInpatient = 1;
inline constexpr std::int64_t kOutpatient = 2;
inline constexpr std::int64_t kConsult = 1;
inline constexpr std::int64_t kVisit = 2;

inline constexpr std::size_t kConceptLevels = 6;
inline constexpr std::int64_t kUsualConceptLevel = 3;  // a further visit of usual length

// `level` from 0 on.
std::int64_t conceptOf(std::int64_t facilityType, std::int64_t chargeType, std::int64_t attention,
                       std::int64_t level);

struct ConceptCodes {
  std::string billing{};
  std::string real{};
};
void fillConcepts(Engine& engine, const std::function<ConceptCodes(std::int64_t code)>& codesOf);

}  // namespace bw
