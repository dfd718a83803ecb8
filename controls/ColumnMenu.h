#pragma once

#include <QMenu>

namespace bw {

class ListView;

// The menu of a list's head: sorts by a column, where the list can be sorted, shows and hides
// columns, and brings back the designed order and widths.
class ColumnMenu : public QMenu {
 public:
  // At a point of the screen; gone when it is closed.
  static void open(ListView& list, const QPoint& at);

 private:
  explicit ColumnMenu(ListView& list);

  void addSorting();
  void addShowing();

  ListView& list_;
};

}  // namespace bw
