#pragma once

#include <memory>
#include <vector>

#include "viewer/Document.h"
#include "viewer/FittedPage.h"

namespace bw {

// The pages of a document as they are laid out, those shown last kept.
class FittedDocument {
 public:
  // `natural` takes wide documents to a wider paper instead of narrowing them.
  FittedDocument(std::shared_ptr<const Document> document, const LetterWidths& letters,
                 bool natural = false);

  const Document& document() const noexcept { return *document_; }
  const std::shared_ptr<const Document>& shared() const noexcept { return document_; }
  const PageFit& fit() const noexcept { return fit_; }
  PageSize paper() const noexcept { return fit_.paper; }

  std::shared_ptr<const FittedPage> page(std::size_t number) const;
  FittedPage make(std::size_t number) const;  // for walks through all pages: keeps nothing

 private:
  struct Kept {
    std::size_t number = 0;
    std::shared_ptr<const FittedPage> page;
  };

  std::shared_ptr<const Document> document_;
  const LetterWidths& letters_;
  PageFit fit_;
  mutable std::vector<Kept> kept_;  // the one used last at the end
};

}  // namespace bw
