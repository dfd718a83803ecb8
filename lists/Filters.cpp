#include "lists/Filters.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "text/Text.h"

namespace bw {
namespace {

struct Caption {
  filter::Number filter;
  std::string_view text;
};

// At the places of their filters.
template <std::size_t count>
constexpr std::array<std::string_view, count> captionsOf(const Caption (&captions)[count]) {
  std::array<std::string_view, count> placed;
  for (const Caption& caption : captions) placed.at(caption.filter) = caption.text;
  return placed;
}

// clang-format off
constexpr std::array kFilterCaptions = captionsOf<filter::sameAccount + 1>({
    {filter::all, "All"},
    {filter::incomplete, "Incomplete"},
    {filter::admitted, "Admitted"},
    {filter::notAdmitted, "Not Admitted"},
    {filter::ready, "Ready"},
    {filter::posted, "Posted"},
    {filter::hospitals, "Hospitals"},
    {filter::boardAndCare, "Board & Care"},
    {filter::extendedCare, "Extended Care Facilities"},
    {filter::home, "Home"},
    {filter::allergies, "Allergies"},
    {filter::medicalHistory, "Medical History"},
    {filter::surgicalHistory, "Surgical History"},
    {filter::archived, "Archived"},
    {filter::office, "Office"},
    {filter::sameBirthday, "Duplicated DOB"},
    {filter::sameNames, "Duplicated Names"},
    {filter::sameBirthdayAndNames, "Duplicated DOB+Names"},
    {filter::sameAccount, "Duplicated Account"},
});
// clang-format on
static_assert(std::ranges::none_of(kFilterCaptions, &std::string_view::empty));

}  // namespace

std::span<const std::string_view> filterCaptions() { return kFilterCaptions; }

std::string emptyList(std::string_view several, std::int16_t filter) {
  if (filter <= 0 || filter >= std::ssize(kFilterCaptions))
    return concat("No ", several, " yet. Press Insert to make the first.");
  return concat("No ", several, " under ", kFilterCaptions[static_cast<std::size_t>(filter)],
                ". Choose All to see the others.");
}

}  // namespace bw
