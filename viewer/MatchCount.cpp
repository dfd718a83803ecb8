#include "viewer/MatchCount.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace bw {

void MatchCount::begin(std::shared_ptr<const Document> document, const QString& needle) {
  stop();
  if (document == nullptr || needle.isEmpty()) return;
  document_ = std::move(document);
  needle_ = needle;
  onPages_.assign(document_->pageCount(), 0);
  walk_.start(
      document_->pageCount(), [this](std::size_t page) { return countPage(page); },
      [this] {
        complete_ = true;
        emit counted();
      });
}

void MatchCount::stop() {
  walk_.stop();
  document_.reset();
  onPages_.clear();
  complete_ = false;
}

std::optional<std::size_t> MatchCount::total() const {
  if (!complete_) return std::nullopt;
  return std::accumulate(onPages_.begin(), onPages_.end(), std::size_t{0});
}

std::size_t MatchCount::place(const Match& match) const {
  const auto end = onPages_.begin() + static_cast<std::ptrdiff_t>(match.page) - 1;
  const auto here =
      matchesOnPage(*document_->page(match.page), match.page, document_->pageCount(), needle_);
  const auto in = std::find(here.begin(), here.end(), match) - here.begin();
  return std::accumulate(onPages_.begin(), end, std::size_t{1}) + static_cast<std::size_t>(in);
}

std::size_t MatchCount::onPage(std::size_t page) const { return onPages_[page - 1]; }

bool MatchCount::countPage(std::size_t page) {
  const PageItems items = document_->parse(page);
  onPages_[page - 1] =
      static_cast<std::uint32_t>(countMatches(items, document_->pageCount(), needle_));
  return true;
}

}  // namespace bw
