#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace bw {

// Captions of the Current View entries; a filter's number is the place of its caption.
std::span<const std::string_view> filterCaptions();

// What an empty list of such records says under a filter.
std::string emptyList(std::string_view several, std::int16_t filter);

}  // namespace bw
