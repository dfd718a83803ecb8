#pragma once

#include <QComboBox>
#include <QHash>
#include <QStringListModel>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "controls/TypedInput.h"
#include "controls/TypedSearch.h"
#include "records/RecordSet.h"

namespace bw {

class Hint;

// A drop-down list. Its items are filled from a record set in the set's order, so that an item's
// index plus 1 is the position of its row.
// Assigning an index by code runs onSelected every time, also with the index that it has already:
// the handlers reposition record sets and count on it. So does a choice by the user.
//
// What is typed finds an item (see TypedSearch): it is chosen at once, in the open list marked. A
// text that no item has leaves the choice as it is. Whoever then presses Enter, Tab or Ok is told
// so and held back; a second time the choice counts as it stands.
class ComboBox : public QComboBox, public TypedInput, private TypedSearch::Rows {
 public:
  explicit ComboBox(QWidget* parent = nullptr);

  std::function<void()> onSelected;

  // Without event; nothing is selected afterwards. Items of one text are told apart by their mark,
  // which is asked for them alone.
  using Mark = std::function<QString(int index)>;
  void Clear();
  void setItems(const QStringList& items, const Mark& mark = {});
  // One item a row, the text of that field ("" for no value); the fields of the mark.
  void fillFrom(const RecordSetRef& rows, std::string_view field, const Mark& mark = {});
  void fillFrom(const RecordSetRef& rows, std::string_view field,
                const std::vector<std::string>& marks);
  QString mark(int index) const { return items_.marks.value(index); }

  int ListIndex() const { return currentIndex(); }
  // -1 for none. Outside -1 to count - 1: error 380.
  void setListIndex(int index);
  // Selects the item of the row that the criterion finds, searched from the set's first row on,
  // or the first item when there is none.
  void selectFound(const RecordSetRef& rows, std::string_view criterion);
  // Moves the set to the selected item's row.
  void moveToSelected(const RecordSetRef& rows) const;

  bool settle() override;
  void showPopup() override;
  void hidePopup() override;

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  struct Items : QStringListModel {
    QHash<int, QString> marks;  // of items whose text another one has
    // For assistive tools and the popup the mark stands behind the text.
    QVariant data(const QModelIndex& index, int role) const override;
  };

  Near beginSearch() override;
  Hit search(std::string_view wanted) override { return texts_.search(wanted); }
  Hit hit(int row) const override { return texts_.hit(static_cast<std::size_t>(row)); }
  void showFound(std::optional<int> found) override;
  void endSearch(bool givenUp) override;

  bool isPopupOpen() const;
  bool wantsShortcut(const QKeyEvent& event) const;
  bool takePopupKey(const QKeyEvent& event);
  void preparePopup();
  int widestItem() const;
  void widenPopup();
  void choose(int row);
  void goTo(int row);
  bool stopOnce();
  void sayHint();
  QString hintWords() const;
  QString fullText(int index) const;

  Items items_;
  TypedSearch search_;
  TextSearch texts_;  // of the items, while the search is open
  int from_ = -1;     // the choice, or the mark in the open list, when it began
  bool stopped_ = false;
  Hint* hint_ = nullptr;       // made when they are first needed: a dialog has many boxes
  Hint* popupHint_ = nullptr;  // a child of the popup's view
};

}  // namespace bw
