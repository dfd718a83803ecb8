#include "viewer/Document.h"

#include <algorithm>
#include <utility>

namespace bw {

namespace {

// More pages than a screen shows at the smallest zoom that can be read.
constexpr std::size_t kKeptPages = 24;

}  // namespace

Document::Document(DocumentBytes bytes) : bytes_(std::move(bytes)), index_(bytes_.view()) {}

std::shared_ptr<const Document> Document::open(const std::string& path, std::error_code& error) {
  DocumentBytes bytes(path, error);
  if (error) return nullptr;
  return std::make_shared<const Document>(std::move(bytes));
}

std::shared_ptr<const PageItems> Document::page(std::size_t number) const {
  const auto known = std::find_if(kept_.begin(), kept_.end(),
                                  [number](const Kept& kept) { return kept.number == number; });
  ++uses_;
  if (known != kept_.end()) {
    known->lastUse = uses_;
    return known->page;
  }
  if (kept_.size() == kKeptPages) {
    kept_.erase(std::min_element(kept_.begin(), kept_.end(), [](const Kept& a, const Kept& b) {
      return a.lastUse < b.lastUse;
    }));
  }
  kept_.push_back({number, uses_, std::make_shared<const PageItems>(parse(number))});
  return kept_.back().page;
}

PageItems Document::parse(std::size_t number) const {
  return parsePage(bytes_.view(), index_.runs(number));
}

std::optional<std::vector<Damage>> allDamages(const Document& document, const Progress& progress) {
  std::vector<Damage> damages = document.damages();
  const std::size_t pages = document.pageCount();
  for (std::size_t number = 1; number <= pages; ++number) {
    if (!progress(number - 1, pages)) return std::nullopt;
    if (const Damage damage = document.parse(number).damage) {
      damages.push_back(damage);
      break;
    }
  }
  return damages;
}

}  // namespace bw
