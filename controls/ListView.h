#pragma once

#include <QTableView>
#include <functional>
#include <optional>
#include <string>

#include "controls/FindAsYouType.h"
#include "controls/ListModel.h"

namespace bw {

// A list of rows under column heads. Columns can be dragged, resized and hidden (width 0), also by
// the head's menu (see ColumnMenu); it never sorts by itself. A row is known by its key: "K" and
// its position in the record set, at the moment of filling, in ten digits. Selecting, ticking and
// changing texts by code runs no handler. Letters typed find a row (see FindAsYouType).
class ListView : public QTableView {
 public:
  enum class Selection { single, several };

  struct Options {
    Selection selection = Selection::single;
    bool checkBoxes = false;
  };
  ListView(std::vector<ListColumn> columns, Options options, QWidget* parent = nullptr);

  // Handlers; each may be unset.
  std::function<void(int column)> onColumnClick;
  std::function<void()> onOpen;                            // double click, Enter; with ticks Enter
  std::function<void()> onChosen;                          // the user clicked or moved to a row
  std::function<void()> onInsertKey;                       // Insert
  std::function<void()> onDeleteKey;                       // Delete
  std::function<void(int row, bool checked)> onItemCheck;  // a tick by the user, when it is done

  // Columns, counted from 0 as they were designed.
  int columns() const { return model_.columnCount(); }
  const ListColumn& column(int column) const {
    return model_.columns()[static_cast<std::size_t>(column)];
  }
  int columnOf(std::string_view key) const;  // raises 35601
  int Position(int column) const;            // place on the screen, from 1
  void setPosition(int column, int position);
  float Width(int column) const;  // twips, at the standard font
  void setWidth(int column, float twips);
  // The column by whose texts the rows are ordered; -1 for none. Its head bears an arrow.
  void showSorted(int column);
  int sorted() const;
  // To the list's edge, in dialogs that store no layout. Only the last one can still be resized.
  void stretchLastColumn();
  void stretchColumn(int column);

  // What an empty list shows in place of rows, and tells assistive tools.
  void setEmptyText(const QString& text);

  // Rows. fill() leaves none selected.
  void fill(std::shared_ptr<const RowStore> store, const std::vector<std::uint32_t>& rows);
  void removeItem(int row);  // a selected one leaves none selected
  int count() const { return model_.count(); }
  std::ptrdiff_t position(int row) const { return model_.position(row); }
  int rowAt(std::ptrdiff_t position) const;  // raises 35601
  std::string text(int row) const;           // of the first column
  void setText(int row, const std::string& text);
  bool checked(int row) const { return model_.checked(row); }
  // What a row shows, and, when another looks the same, the fields that tell them apart.
  QString words(int row) const;
  void setMarks(std::vector<std::string> fields) { model_.setMarks(std::move(fields)); }
  QString mark(int row) const { return model_.mark(row); }

  // The list shows one group of a catalogue; a search goes over all of them.
  void setGroups(ListGroups groups) { find_->setGroups(std::move(groups)); }

  bool selected(int row) const;
  // With several selectable rows, selecting one adds it; it becomes the selected item.
  void setSelected(int row, bool selected);
  void clearSelected();
  // The row with the focus when it is selected.
  std::optional<int> selectedItem() const;
  // Selected rows, the last one first.
  std::vector<int> selectedFromLast() const;
  void ensureVisible(int row);

  QSize sizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void setUpHeaders();
  void tick(int row, bool checked);
  void takeFont();
  void openColumnMenu();
  void tellWhenEmpty();
  bool runKey(int key);

  ListModel model_;
  FindAsYouType* find_;        // a child
  std::vector<float> widths_;  // twips; a designed width stays as it is until it is changed
  bool settingWidth_ = false;
  // Of a row with a check box, when a button went down on it.
  QPersistentModelIndex pressed_;
  bool wasChecked_ = false;
  bool doubleClicked_ = false;
  double scale_ = 1;  // of the font
  QString emptyText_;
};

}  // namespace bw
