#include "viewer/FittedDocument.h"

#include <algorithm>
#include <utility>

namespace bw {

namespace {

// More pages than a screen shows at the smallest zoom that can be read.
constexpr std::size_t kKeptPages = 24;

}  // namespace

FittedDocument::FittedDocument(std::shared_ptr<const Document> document,
                               const LetterWidths& letters, bool natural)
    : document_(std::move(document)), letters_(letters),
      fit_((natural ? naturalFit : fitToPaper)(document_->pageSize(), document_->rightEdge())) {}

std::shared_ptr<const FittedPage> FittedDocument::page(std::size_t number) const {
  const auto known = std::find_if(kept_.begin(), kept_.end(),
                                  [number](const Kept& kept) { return kept.number == number; });
  if (known != kept_.end()) {
    std::rotate(known, known + 1, kept_.end());
  } else {
    if (kept_.size() == kKeptPages) kept_.erase(kept_.begin());
    kept_.push_back(
        {number, std::make_shared<const FittedPage>(
                     fitPage(document_->page(number), fit_, letters_, document_->pageCount()))});
  }
  return kept_.back().page;
}

FittedPage FittedDocument::make(std::size_t number) const {
  return fitPage(std::make_shared<const PageItems>(document_->parse(number)), fit_, letters_,
                 document_->pageCount());
}

}  // namespace bw
