#include "lists/Filters.h"

#include "text/Text.h"

namespace bw {
namespace {

constexpr std::string_view kFilterCaptions[] = {"All",
                                                "Incomplete",
                                                "Admitted",
                                                "Not Admitted",
                                                "Ready",
                                                "Posted",
                                                "Hospitals",
                                                "Board & Care",
                                                "Extended Care Facilities",
                                                "Home",
                                                "Allergies",
                                                "Medical History",
                                                "Surgical History",
                                                "Archived",
                                                "Office",
                                                "Duplicated DOB",
                                                "Duplicated Names",
                                                "Duplicated DOB+Names",
                                                "Duplicated Account"};

}  // namespace

std::span<const std::string_view> filterCaptions() { return kFilterCaptions; }

std::string emptyList(std::string_view several, std::int16_t filter) {
  if (filter <= 0 || filter >= std::ssize(kFilterCaptions))
    return concat("No ", several, " yet. Press Insert to make the first.");
  return concat("No ", several, " under ", kFilterCaptions[filter],
                ". Choose All to see the others.");
}

}  // namespace bw
