#pragma once

#include <QWidget>
#include <functional>
#include <string>

#include "controls/ListView.h"
#include "records/RecordSet.h"
#include "review/PageKind.h"

class QBoxLayout;
class QLabel;
class QSplitter;

namespace bw {

class BarChart;
class PageChoices;

// One page: its choices at the head, its lists below each other, its sums and buttons at the foot.
class Page : public QWidget {
 public:
  Page(const PageKind& kind, QWidget* parent);

  std::function<void(const QString& text)> onTold;  // what was done, for the status bar

  const PageKind& kind() const { return kind_; }
  // Reads the office and shows it.
  void read();
  void readOnce();
  // Writes the document of what is on show and opens it in the viewer. False when there is nothing
  // to print, which was told.
  bool print();
  // Asks where to, and saves what is on show as a table.
  void saveTable();
  std::string table();      // its text
  std::string tableName();  // its proposed name
  void storeLayout() const;
  void takeFocus();
  void switchLists();  // from the leading list to the other, and back

 private:
  struct Shown {
    const PageList* list = nullptr;
    ListView* view = nullptr;
    RecordSetRef records{};
  };
  void readOffice();
  void makeLists(QBoxLayout* column);
  void makeFoot(QBoxLayout* column);
  Shown makeList(const PageList& list, QSplitter* splitter);
  void fill(Shown& shown, const Rows& rows);
  void tick(int row, bool on);
  void follow();
  void showBars();
  void copyRow(const Shown& shown);
  std::int64_t chosenLink() const;
  void selectLink(std::int64_t link);
  const Shown& printed() const { return following_.view != nullptr ? following_ : leading_; }

  const PageKind& kind_;
  PageChoices* choices_;
  Shown leading_;
  Shown following_;
  BarChart* bars_ = nullptr;
  QLabel* told_ = nullptr;
  bool wasRead_ = false;
};

}  // namespace bw
