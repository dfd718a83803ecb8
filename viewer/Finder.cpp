#include "viewer/Finder.h"

#include <QElapsedTimer>
#include <QStringMatcher>
#include <algorithm>
#include <tuple>
#include <utility>

#include "viewer/TextRows.h"

namespace bw {

namespace {

constexpr qint64 kSliceMilliseconds = 20;

bool isSearched(const PageItem& item) { return item.kind == ItemKind::text && !item.text.empty(); }

// In the order of writing.
std::vector<Match> writtenMatches(const PageItems& page, std::size_t number, std::size_t pageTotal,
                                  const QString& needle) {
  std::vector<Match> matches;
  if (needle.isEmpty()) return matches;
  const QStringMatcher matcher(needle, Qt::CaseInsensitive);
  const auto findIn = [&](const PageItem& item) {
    const QString text = QString::fromStdU16String(itemText(item, pageTotal));
    const auto index = static_cast<std::size_t>(&item - page.items.data());
    for (qsizetype at = 0; (at = matcher.indexIn(text, at)) >= 0; at += needle.size()) {
      matches.push_back({number, index, at, needle.size()});
    }
  };
  for (const PageItem& item : page.items) {
    if (isSearched(item)) findIn(item);
  }
  return matches;
}

}  // namespace

std::vector<Match> matchesOnPage(const PageItems& page, std::size_t number, std::size_t pageTotal,
                                 const QString& needle) {
  std::vector<Match> matches = writtenMatches(page, number, pageTotal, needle);
  if (matches.size() < 2) return matches;
  // Few pages hold several matches: only these are put in the order of reading.
  std::vector<const PageItem*> searched;
  for (const PageItem& item : page.items) {
    if (isSearched(item)) searched.push_back(&item);
  }
  std::vector<std::size_t> place(page.items.size());
  std::size_t next = 0;
  for (const TextRow& row : textRows(std::move(searched))) {
    for (const PageItem* item : row) {
      place[static_cast<std::size_t>(item - page.items.data())] = next++;
    }
  }
  std::stable_sort(matches.begin(), matches.end(), [&place](const Match& a, const Match& b) {
    return std::tie(place[a.item], a.from) < std::tie(place[b.item], b.from);
  });
  return matches;
}

std::size_t countMatches(const PageItems& page, std::size_t pageTotal, const QString& needle) {
  return writtenMatches(page, 1, pageTotal, needle).size();
}

Finder::Finder(QObject* parent) : QObject(parent) {
  timer_.setInterval(0);
  connect(&timer_, &QTimer::timeout, this, &Finder::searchSlice);
}

void Finder::setDocument(std::shared_ptr<const Document> document) {
  stop();
  document_ = std::move(document);
}

void Finder::findFrom(const QString& needle, std::size_t page) {
  besideStart_ = false;
  begin(needle, page, Direction::forward);
}

void Finder::findNext(const QString& needle, const Match& match, Direction direction) {
  start_ = match;
  besideStart_ = true;
  begin(needle, match.page, direction);
}

void Finder::stop() { timer_.stop(); }

void Finder::begin(const QString& needle, std::size_t page, Direction direction) {
  stop();
  if (document_ == nullptr || document_->pageCount() == 0 || needle.isEmpty()) return;
  needle_ = needle;
  direction_ = direction;
  page_ = std::clamp<std::size_t>(page, 1, document_->pageCount());
  searched_ = 0;
  wentRound_ = false;
  timer_.start();
}

// The page of the start is searched twice: beyond the start first, and whole at the very end.
void Finder::searchSlice() {
  QElapsedTimer clock;
  clock.start();
  const std::size_t pages = document_->pageCount();
  while (searched_ <= pages) {
    if (searchPage()) return;
    besideStart_ = false;
    ++searched_;
    if (direction_ == Direction::forward) {
      wentRound_ = wentRound_ || page_ == pages;
      page_ = page_ == pages ? 1 : page_ + 1;
    } else {
      wentRound_ = wentRound_ || page_ == 1;
      page_ = page_ == 1 ? pages : page_ - 1;
    }
    if (clock.elapsed() >= kSliceMilliseconds) return;
  }
  stop();
  emit notFound();
}

bool Finder::searchPage() {
  std::vector<Match> matches =
      matchesOnPage(document_->parse(page_), page_, document_->pageCount(), needle_);
  if (direction_ == Direction::backward) std::reverse(matches.begin(), matches.end());
  auto next = matches.begin();
  if (besideStart_) {
    const auto at = std::find(matches.begin(), matches.end(), start_);
    next = at == matches.end() ? matches.begin() : at + 1;
  }
  if (next == matches.end()) return false;
  stop();
  emit found(*next, wentRound_);
  return true;
}

}  // namespace bw
