#pragma once

#include <QString>
#include <optional>
#include <string_view>

#include "text/TextSearch.h"

class QAbstractItemView;
class QKeyEvent;
class QModelIndex;

namespace bw {

class Hint;

// Finds one of many rows by what is typed into their control. No time ends the text, and a blank
// belongs to it, but for one that would begin it; blanks at its end count for nothing. A row that
// begins with the text goes before one in which a word does, and that before one that holds it; of
// equals the first one counts, from the row on where the search began, round the end. Case and
// accents do not matter.
// Backspace takes a letter back, F3 goes on to the next row. Esc, and Backspace at the first
// letter, give the search up.
class TypedSearch {
 public:
  // What is searched, numbered from 0. What is said of near rows holds for all of most controls:
  // far ones are looked at only when no near one has the text, and then without a ring.
  class Rows {
   public:
    struct Near {
      int count = 0;
      int from = 0;  // where the search begins
    };
    // The first letter has come: the texts are to be made ready.
    virtual Near beginSearch() = 0;
    virtual int farRows() { return 0; }
    virtual Hit search(std::string_view wanted) = 0;  // in all rows; the best hit
    virtual Hit hit(int row) const = 0;               // of the last search
    // Another text, or another row for it; nothing when no row has it.
    virtual void showFound(std::optional<int> found) = 0;
    // The text is gone. Given up, the control goes back to where the search began.
    virtual void endSearch(bool givenUp) = 0;

   protected:
    ~Rows() = default;
  };

  explicit TypedSearch(Rows& rows) : rows_(rows) {}

  // taken: a key of the search, done. passing: nothing to do with a search. other: a key for the
  // control while a text stands there.
  enum class Key { taken, passing, other };
  Key takeKey(const QKeyEvent& event);

  bool isOpen() const { return !text_.isEmpty(); }
  // A text stands there that no row has.
  bool failed() const { return isOpen() && !found_; }
  const QString& text() const { return text_; }
  std::optional<int> found() const { return found_; }

  // As if the text were selected: another one that is typed takes its place.
  void selectText() { selected_ = true; }
  // Forgets the text; the control stays where it is.
  void end() { close(false); }

 private:
  bool takeText(const QString& text);
  void shorten();
  void look();
  std::optional<int> next(std::optional<int> after) const;
  void close(bool givenUp);

  Rows& rows_;
  QString text_;
  Rows::Near near_;
  Hit best_ = Hit::none;
  std::optional<int> found_;
  bool selected_ = false;
};

// Scrolls to a row that was found; the hint at the view's edge does not cover it.
void showBeside(Hint& hint, QAbstractItemView& view, const QModelIndex& found);

}  // namespace bw
