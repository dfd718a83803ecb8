#include "tools/Concepts.h"

#include <array>
#include <string_view>

#include "text/Text.h"
#include "tools/TableRows.h"

namespace bw {
namespace {

using Number = std::int64_t;

// A concept's words: "Hospital inpatient, first visit, short". Which of a doctor's visits and how
// long it took; the sequence is that of the catalogue of concepts.
struct Level {
  std::string_view before;
  std::string_view after;
  Number sequence;
};
constexpr std::array<Level, kConceptLevels> kLevels{
    Level{"first", ", short", 1}, Level{"first", ", long", 1},   Level{"further", ", short", 2},
    Level{"further", "", 2},      Level{"further", ", long", 2}, Level{"last", "", 3}};

// By the numbers of the kinds of facility.
constexpr std::array<std::string_view, 5> kPlaces{"Hospital", "Extended care", "Home",
                                                  "Board and care", "Office"};

std::string wordsOf(std::string_view place, Number chargeType, Number attention,
                    const Level& level) {
  return concat(place, chargeType == kInpatient ? " inpatient, " : " outpatient, ", level.before,
                attention == kConsult ? " consult" : " visit", level.after);
}

}  // namespace

Number conceptOf(Number facilityType, Number chargeType, Number attention, Number level) {
  const Number combination = ((facilityType - 1) * 2 + chargeType - 1) * 2 + attention - 1;
  return combination * static_cast<Number>(kLevels.size()) + level + 1;
}

void fillConcepts(Engine& engine, const std::function<ConceptCodes(Number code)>& codesOf) {
  TableRows rows(
      engine, "EvaluationManagement",
      {"EMCode", "Description", "FacilityTypeCode", "ChargeTypeCode", "AttentionTypeCode",
       "BillingEMCode", "RealEMCode", "ShowOnFirst", "ShowOnNext", "IsDischarge"});
  for (Number type = 1; const std::string_view place : kPlaces) {
    for (const Number chargeType : {kInpatient, kOutpatient})
      for (const Number attention : {kConsult, kVisit})
        for (Number number = 0; const Level& level : kLevels) {
          const Number code = conceptOf(type, chargeType, attention, number++);
          const ConceptCodes codes = codesOf(code);
          rows(code, wordsOf(place, chargeType, attention, level), type, chargeType, attention,
               codes.billing, codes.real, Number{level.sequence == 1}, Number{level.sequence != 1},
               level.sequence);
        }
    ++type;
  }
}

}  // namespace bw
