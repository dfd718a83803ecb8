#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace bw {

// Numbers of the filters, which settings hold: they stay as they are.
namespace filter {
enum Number : std::int16_t {
  all,
  incomplete,
  admitted,
  notAdmitted,
  ready,
  posted,
  hospitals,
  boardAndCare,
  extendedCare,
  home,
  allergies,
  medicalHistory,
  surgicalHistory,
  archived,
  office,
  sameBirthday,
  sameNames,
  sameBirthdayAndNames,
  sameAccount,
};
}  // namespace filter

// Captions of the Current View entries, each at the number of its filter.
std::span<const std::string_view> filterCaptions();

// What an empty list of such records says under a filter.
std::string emptyList(std::string_view several, std::int16_t filter);

}  // namespace bw
