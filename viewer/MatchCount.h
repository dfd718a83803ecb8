#pragma once

#include <QObject>
#include <QString>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "viewer/Finder.h"
#include "viewer/PageWalk.h"

namespace bw {

// How often a text stands in a document, and on which pages. Counts between events.
class MatchCount : public QObject {
  Q_OBJECT

 public:
  // Ends a count under way; nothing is counted without a text.
  void begin(std::shared_ptr<const Document> document, const QString& needle);
  void stop();

  // Nothing before all pages are counted.
  std::optional<std::size_t> total() const;
  // The place of a match among all, from 1. Only with a total.
  std::size_t place(const Match& match) const;
  std::size_t onPage(std::size_t page) const;

 signals:
  void counted();

 private:
  bool countPage(std::size_t page);

  std::shared_ptr<const Document> document_;
  QString needle_;
  PageWalk walk_;
  std::vector<std::uint32_t> onPages_;
  bool complete_ = false;
};

}  // namespace bw
