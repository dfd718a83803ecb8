#pragma once

#include <QComboBox>
#include <QStringListModel>
#include <functional>
#include <string_view>

#include "platform/RecordSet.h"

namespace bw {

// A drop-down list. Its items are filled from a record set in the set's order, so that an item's
// index plus 1 is the position of its row.
// Assigning an index by code runs onSelected every time, also with the index that it has already:
// the handlers reposition record sets and count on it. So does a choice by the user.
class ComboBox : public QComboBox {
 public:
  explicit ComboBox(QWidget* parent = nullptr);

  std::function<void()> onSelected;

  // Without event; nothing is selected afterwards.
  void Clear();
  void setItems(const QStringList& items);
  // One item a row, the text of that field ("" for no value).
  void fillFrom(const RecordSetRef& rows, std::string_view field);

  int ListIndex() const { return currentIndex(); }
  // -1 for none. Outside -1 to count - 1: error 380.
  void setListIndex(int index);
  // Selects the item of the row that the criterion finds, searched from the set's first row on,
  // or the first item when there is none.
  void selectFound(const RecordSetRef& rows, std::string_view criterion);
  // Moves the set to the selected item's row.
  void moveToSelected(const RecordSetRef& rows) const;

 private:
  QStringListModel items_;
};

}  // namespace bw
