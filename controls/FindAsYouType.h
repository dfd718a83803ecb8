#pragma once

#include <QObject>
#include <QString>
#include <optional>
#include <vector>

#include "platform/ColumnSearch.h"

class QKeyEvent;
class QLabel;
class QTableView;

namespace bw {

class ListModel;

// Finds a row of a list by what is typed into it. The first row that shows the typed text is
// selected, from the row on that had the focus when the first letter came, round the end: a row
// with a text that begins with it, in any visible column, or when there is none one with a text
// that holds it. Case and accents do not matter. What is typed stands in a small field at the
// list's lower edge.
// Backspace takes a letter back, F3 goes on to the next row, Esc closes the field and nothing
// else. Every other key closes it and does what it does without it. A blank begins no text; in a
// list with ticks it belongs to the text only while that finds a row, else it ticks.
class FindAsYouType : public QObject {
 public:
  FindAsYouType(QTableView& list, const ListModel& model);

  // True when the key was one of the field's.
  bool takeKey(const QKeyEvent& event);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Found {
    int row;
    int column;
  };
  bool isOpen() const { return !text_.isEmpty(); }
  bool takeText(const QString& text);
  void open();
  void close();
  void shorten();
  std::optional<Found> find(const QString& text, int from);
  Hit hitOf(int row, int& column, std::string_view wanted) const;
  void show(const QString& text, const std::optional<Found>& found);
  void place();

  QTableView& list_;
  const ListModel& model_;
  QLabel* field_;  // a child of the list
  QString text_;
  int from_ = 0;
  // Of the visible columns, as they stand on the screen; as long as the field is open.
  struct Searched {
    int column;
    ColumnSearch texts;
    Hit best;  // of the last search
  };
  std::vector<Searched> columns_;
};

}  // namespace bw
