#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "viewer/DocumentBytes.h"
#include "viewer/DocumentIndex.h"
#include "viewer/PageItems.h"

namespace bw {

// Told how much of a long work is done; false ends the work.
using Progress = std::function<bool(std::size_t done, std::size_t total)>;

// An opened document: a snapshot of its file, the index of its pages, and the pages shown last.
// It never changes; a file written anew is opened as another document.
class Document {
 public:
  explicit Document(DocumentBytes bytes);

  // Nothing when the file cannot be read; damage in it is no reason.
  static std::shared_ptr<const Document> open(const std::string& path, std::error_code& error);

  PageSize pageSize() const noexcept { return index_.pageSize(); }
  std::size_t pageCount() const noexcept { return index_.pageCount(); }
  double rightEdge() const noexcept { return index_.rightEdge(); }  // of all items, twips
  // Without the damage of items, which reading their pages tells.
  const std::vector<Damage>& damages() const noexcept { return index_.damages(); }

  // Pages from 1 to pageCount(); a page beyond has no items.
  std::shared_ptr<const PageItems> page(std::size_t number) const;
  PageItems parse(std::size_t number) const;  // for walks through all pages: keeps nothing

 private:
  struct Kept {
    std::size_t number = 0;
    std::size_t lastUse = 0;
    std::shared_ptr<const PageItems> page;
  };

  DocumentBytes bytes_;
  DocumentIndex index_;
  mutable std::vector<Kept> kept_;
  mutable std::size_t uses_ = 0;
};

// All that is damaged, the first damaged item of all pages included. Nothing when `progress` ended
// it.
std::optional<std::vector<Damage>> allDamages(const Document& document, const Progress& progress);

}  // namespace bw
