#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string_view>

namespace bw {

class View;

// The views and filters of the main window. A view's number is the index of its Go To entry and
// the first two digits of a tree key, a filter's number the index of its Current View entry and
// the last two.

enum class ToolbarGroup { none, charges, patients, records, browser };

struct ViewRow {
  std::string_view caption;  // of the Go To entry
  View& (*form)();           // made at the first use
  std::string_view filters;  // entries of Current View besides "All": ",4,5,13,"
  ToolbarGroup group = ToolbarGroup::records;
  std::string_view actions;  // entries of the Actions menu: ",1,2,"
};

inline constexpr std::int16_t kViewCount = 13;
inline constexpr std::int16_t kFilterCount = 19;
inline constexpr std::int16_t kWelcomeView = 10;
inline constexpr std::int16_t kSponsorWebView = 11;
inline constexpr std::int16_t kMakerWebView = 12;

// Any number outside the table is treated like the welcome page.
const ViewRow& viewRow(std::int16_t view);

extern const std::array<std::string_view, kFilterCount> kFilterCaptions;

// Whether a list such as ",4,5,13," names the number.
bool names(std::string_view list, int number);

}  // namespace bw
