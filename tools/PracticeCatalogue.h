#pragma once

#include <array>
#include <cstdint>
#include <string_view>

// The words of the practice office. Every name is invented; the codes mean nothing.

namespace bw::practice {

struct Facility {
  std::string_view name;
  std::int64_t type;
  std::array<std::string_view, 4> wards;  // empty ones are none
};

struct Group {
  std::string_view name;
  std::array<std::string_view, 8> diagnoses;
};

struct HistoryKind {
  std::int64_t type;
  std::array<std::string_view, 7> items;  // empty ones are none
};

// clang-format off
inline constexpr std::array<std::string_view, 6> kInsurances{
    "Meadowbrook Mutual", "Harbour Health Plan", "Old Mill Cooperative", "Silver Birch Assurance",
    "Town and Country Fund", "Pays for himself"};

inline constexpr std::array<std::string_view, 18> kDoctors{
    "Bramble, Hester", "Bramble, Jonah", "Thistlewood, Ida", "Merrywether, Otto",
    "Larkspur, Nell", "O’Pippin, Amos", "St. Clover, Vera", "Tumbledown, Rex",
    "Applegarth, Mina", "Fernsby-Wren, Clement", "Bramble, Otto, Jr.", "Oakenshaw, Silas",
    "van der Moss, Dora", "Quillfeather, Amos", "Thistlewood, Gus", "St. Clover, Wim",
    "O’Pippin, Hester", "Larkspur, Nell Ann"};

inline constexpr std::array kFacilities{
    Facility{"Fenbridge General Hospital", 1, {"Medical ward", "Surgical ward", "Intensive care", "Heart station"}},
    Facility{"St. Alder Hospital", 1, {"East wing", "West wing", "Children’s ward"}},
    Facility{"St. Alder Hospital", 1, {"First floor", "Second floor"}},
    Facility{"Larkrise Care Centre", 2, {"Garden side", "River side"}},
    Facility{"Quiet Meadow Nursing Home", 2, {"Ground floor", "Upper floor"}},
    Facility{"At the patient’s home", 3, {}},
    Facility{"Widow Tansy’s Board and Care", 4, {}},
    Facility{"Our office", 5, {}},
    Facility{"St. Alder Village, Long-Term Care", 2, {"House A", "House B"}},
};

inline constexpr std::array kGroups{
    Group{"Heart and vessels", {"High blood pressure", "Weak heart", "Irregular heartbeat", "Narrowed heart vessels",
        "Chest pain", "Swollen legs", "Poor circulation in the legs", "Blood clot in a leg"}},
    Group{"Lungs and airways", {"Common cold", "Bronchitis", "Asthma", "Pneumonia",
        "Smoker’s cough", "Shortness of breath", "Hay fever", "Sore throat"}},
    Group{"Stomach and bowels", {"Heartburn", "Stomach ulcer", "Gallstones", "Constipation",
        "Upset stomach", "Inflamed bowel", "Hernia", "Fatty liver"}},
    Group{"Bones and joints", {"Back pain", "Worn knee", "Worn hip", "Broken wrist",
        "Broken hip", "Gout", "Brittle bones", "Stiff shoulder"}},
    Group{"General", {"High blood sugar", "Slow thyroid", "Low blood count", "Bladder infection",
        "Kidney weakness", "Headache", "Dizziness", "Poor sleep"}},
};

inline constexpr std::array<std::string_view, 30> kProcedures{
    "Heart tracing", "Heart ultrasound", "Exercise test", "Blood pressure over a day",
    "Chest picture", "Breathing test", "Oxygen measurement", "Inhalation",
    "Blood count", "Blood sugar", "Blood fats", "Thyroid values",
    "Urine test", "Urine culture", "Bladder catheter", "Belly ultrasound",
    "Stomach mirror", "Bowel mirror", "Vaccination against flu", "Vaccination against tetanus",
    "Injection into a muscle", "Injection into a joint", "Infusion", "Blood transfusion",
    "Wound dressing", "Wound stitches", "Removal of stitches", "Plaster cast",
    "Removal of a mole", "Eye test"};

inline constexpr std::array kHistory{
    HistoryKind{0, {"Penicillin", "Sulfa drugs", "Aspirin", "Latex", "Bee stings", "Peanuts", "Contrast fluid"}},
    HistoryKind{1, {"Heart attack", "Stroke", "Pneumonia", "Tuberculosis", "Jaundice", "Blood clot", "Depression"}},
    HistoryKind{2, {"Appendix removed", "Gallbladder removed", "New hip", "New knee", "Hernia repaired", "Tonsils removed"}},
};

inline constexpr std::array<std::string_view, 20> kFamilyNames{
    "Ashgrove", "Barleycorn-Finch", "Candlewick", "O’Dandelion", "Eiderdown", "Foxglove", "Gooseberry",
    "St. Heather", "Inglenook", "Juniper", "Kettlewell, Jr.", "Lavender", "Marigold", "van der Nettle",
    "Orchardson", "Primrose", "Quincely-Rose", "St. Rosebank", "Snowdrop", "Tanglewood"};

inline constexpr std::array<std::string_view, 19> kFirstNames{
    "Ada", "Barnaby", "Cora", "Desmond", "Edith", "Felix", "Greta", "Hugo", "Ivy", "Jasper",
    "Kitty", "Leopold", "Maud", "Ned", "Olive", "Percy", "Rosa", "Stella", "Tobias"};
// clang-format on

}  // namespace bw::practice
