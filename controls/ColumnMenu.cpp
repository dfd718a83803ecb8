#include "controls/ColumnMenu.h"

#include <QHeaderView>
#include <algorithm>
#include <vector>

#include "controls/EventGuard.h"
#include "controls/ListView.h"
#include "controls/QtText.h"

namespace bw {
namespace {

QString textOf(const ListView& list, int column) {
  return toQt(list.column(column).text).replace("&", "&&");
}

// In the order in which they stand on the screen.
std::vector<int> columnsOf(const ListView& list) {
  std::vector<int> columns;
  const QHeaderView& head = *list.horizontalHeader();
  columns.reserve(static_cast<std::size_t>(head.count()));
  for (int place = 0; place < head.count(); ++place) columns.push_back(head.logicalIndex(place));
  return columns;
}

void showColumn(ListView& list, int column, bool shown) {
  list.setWidth(column, shown ? static_cast<float>(list.column(column).width) : 0);
}

void reset(ListView& list) {
  for (int column = 0; column < list.columns(); ++column) {
    list.setPosition(column, column + 1);
    showColumn(list, column, true);
  }
}

}  // namespace

void ColumnMenu::open(ListView& list, const QPoint& at) {
  auto* menu = new ColumnMenu(list);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->popup(at);
}

ColumnMenu::ColumnMenu(ListView& list) : QMenu(&list), list_(list) {
  setObjectName("columnMenu");
  setAccessibleName("Columns");
  if (list_.onColumnClick) addSorting();
  addShowing();
  addSeparator();
  onEvent(addAction("&Reset columns"), &QAction::triggered, &list_, [&list] { reset(list); });
}

void ColumnMenu::addSorting() {
  int number = 0;
  for (const int column : columnsOf(list_)) {
    if (list_.Width(column) == 0) continue;
    QAction* entry = addAction(QString("&%1  Sort by %2").arg(++number).arg(textOf(list_, column)));
    entry->setCheckable(true);
    entry->setChecked(list_.sorted() == column);
    onEvent(entry, &QAction::triggered, &list_,
            [&list = list_, column] { list.onColumnClick(column); });
  }
  addSeparator();
}

// The last column on show stays.
void ColumnMenu::addShowing() {
  const std::vector<int> columns = columnsOf(list_);
  const auto shown = std::count_if(columns.begin(), columns.end(),
                                   [this](int column) { return list_.Width(column) > 0; });
  for (const int column : columns) {
    const bool on = list_.Width(column) > 0;
    QAction* entry = addAction("Show " + textOf(list_, column));
    entry->setCheckable(true);
    entry->setChecked(on);
    entry->setEnabled(!on || shown > 1);
    onEvent(entry, &QAction::triggered, &list_,
            [&list = list_, column](bool wanted) { showColumn(list, column, wanted); });
  }
}

}  // namespace bw
