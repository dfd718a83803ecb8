#include <algorithm>
#include <array>

#include "core/Services.h"
#include "lists/Settings.h"
#include "review/PageKind.h"
#include "text/Text.h"

namespace bw {

std::span<const PageKind* const> pageKinds() {
  static constexpr std::array kKinds{&kBeforePostingPage, &kRoundsPage, &kDoublesPage, &kLotsPage,
                                     &kFiguresPage};
  return kKinds;
}

const PageKind* pageOfName(std::string_view name) {
  const auto kinds = pageKinds();
  const auto found = std::find_if(kinds.begin(), kinds.end(), [name](const PageKind* kind) {
    return sameName(kind->name, name);
  });
  return found == kinds.end() ? nullptr : *found;
}

bool isTicked(std::string_view page, std::string_view key) {
  return GetSetting(kApplicationTitle, std::string(page), std::string(key), "on") != "off";
}

}  // namespace bw
