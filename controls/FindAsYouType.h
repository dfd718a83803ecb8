#pragma once

#include <QItemSelection>
#include <QObject>
#include <functional>
#include <vector>

#include "controls/TypedSearch.h"
#include "records/ColumnSearch.h"

class QTableView;

namespace bw {

class Hint;
class ListModel;

// The groups of a catalogue, of which its list shows one at a time. Rows are those of the store
// that feeds the list.
struct ListGroups {
  struct Row {
    std::uint32_t row;
    int group;
  };
  std::function<int()> shown;
  std::function<void(int group)> show;  // fills the list
  std::function<QString(int group)> name;
  std::function<std::vector<Row>()> others;  // of the groups not shown, those of the next one first
};

// Finds a row of a list by what is typed into it, in any visible column (see TypedSearch), and
// selects it. What is typed stands in a hint at the list's edge. A text that the list's group does
// not have is looked for in the other groups, too.
// Every key that is none of the search ends it and does what it does without it; in a list with
// ticks Insert and Enter tick the row before. While no row has the text none is selected, and no
// key does anything: nothing can happen to a row that was not meant.
class FindAsYouType : public QObject, private TypedSearch::Rows {
 public:
  FindAsYouType(QTableView& list, ListModel& model);

  void setGroups(ListGroups groups) { groups_ = std::move(groups); }

  // True when nothing is left for the list to do.
  bool takeKey(const QKeyEvent& event);
  // Whether takeKey() wants a key that is somebody's shortcut.
  bool wantsShortcut(const QKeyEvent& event) const;
  bool failed() const { return search_.failed(); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  Near beginSearch() override;
  int farRows() override;
  Hit search(std::string_view wanted) override;
  Hit hit(int row) const override;
  void showFound(std::optional<int> found) override;
  void endSearch(bool givenUp) override;

  std::uint32_t storedRow(int row) const;
  Hit hitAt(std::uint32_t stored, int& column) const;
  void showGroup(int group);
  QModelIndex select(int row);
  void tick(int row);
  QString words(std::optional<int> found) const;
  void goBack();

  QTableView& list_;
  ListModel& model_;
  Hint* hint_;  // a child of the list
  TypedSearch search_;
  ListGroups groups_;
  // Of the visible columns, as they stand on the screen; as long as the search is open.
  struct Searched {
    int column;
    ColumnSearch texts;
    Hit best;  // of the last search
  };
  std::vector<Searched> columns_;
  std::string wanted_;
  // Where the search began.
  int from_ = 0;
  int group_ = 0;
  QItemSelection selection_;
  std::vector<std::uint32_t> near_;  // of a list with groups
  std::optional<std::vector<ListGroups::Row>> far_;
  bool filling_ = false;
};

}  // namespace bw
