#include "tools/StarterOffice.h"

#include <array>
#include <string_view>

#include "tools/Concepts.h"
#include "tools/TableRows.h"

namespace bw {
namespace {

constexpr std::array<std::string_view, 22> kGroups{"Heart and vessels",
                                                   "Lungs and airways",
                                                   "Ears, nose and throat",
                                                   "Eyes",
                                                   "Mouth and teeth",
                                                   "Stomach and bowels",
                                                   "Liver, gallbladder and pancreas",
                                                   "Kidneys and bladder",
                                                   "Bones, joints and muscles",
                                                   "Brain and nerves",
                                                   "Mind and behaviour",
                                                   "Skin, hair and nails",
                                                   "Blood and defence",
                                                   "Glands, sugar and weight",
                                                   "Infections",
                                                   "Tumours",
                                                   "Women's health",
                                                   "Pregnancy and birth",
                                                   "Men's health",
                                                   "Injuries and poisonings",
                                                   "Complaints without a known cause",
                                                   "Check-ups and vaccinations"};

}  // namespace

void fillStarter(Engine& engine) {
  fillConcepts(engine, [](std::int64_t) { return ConceptCodes(); });
  TableRows groups(engine, "DiagnosisFamily",
                   {"DiagnosisFamilyCode", "DiagnosisFamilyDescription"});
  for (std::int64_t code = 0; const std::string_view name : kGroups) groups(++code, name);
}

}  // namespace bw
