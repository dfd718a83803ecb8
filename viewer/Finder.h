#pragma once

#include <QObject>
#include <QString>
#include <QTimer>
#include <memory>
#include <vector>

#include "viewer/Document.h"

namespace bw {

// A place where the text searched for stands.
struct Match {
  std::size_t page = 0;  // from 1
  std::size_t item = 0;  // index in PageItems::items
  qsizetype from = 0;    // in characters of the shown text
  qsizetype length = 0;

  bool operator==(const Match&) const = default;
};

// Without regard to case, within one item, captions included, in the order of reading.
std::vector<Match> matchesOnPage(const PageItems& page, std::size_t number, std::size_t pageTotal,
                                 const QString& needle);
std::size_t countMatches(const PageItems& page, std::size_t pageTotal, const QString& needle);

// Searches page after page in slices between events, so that the window stays alive however long
// the document is. A new search ends the one under way.
class Finder : public QObject {
  Q_OBJECT

 public:
  enum class Direction { forward, backward };

  explicit Finder(QObject* parent = nullptr);

  // Ends a search under way.
  void setDocument(std::shared_ptr<const Document> document);

  // The first match at or behind the beginning of `page`.
  void findFrom(const QString& needle, std::size_t page);

  // The next match before or behind `match`; goes on at the other end of the document.
  void findNext(const QString& needle, const Match& match, Direction direction);

  void stop();

 signals:
  void found(const bw::Match& match, bool wentRound);
  void notFound();

 private:
  void begin(const QString& needle, std::size_t page, Direction direction);
  void searchSlice();
  bool searchPage();

  std::shared_ptr<const Document> document_;
  QTimer timer_;
  QString needle_;
  Direction direction_ = Direction::forward;
  Match start_;
  bool besideStart_ = false;  // only matches beyond start_ count on its page
  std::size_t page_ = 0;
  std::size_t searched_ = 0;
  bool wentRound_ = false;
};

}  // namespace bw
