#include "controls/ComboBox.h"

#include <QSignalBlocker>

#include "controls/EventGuard.h"
#include "controls/QtText.h"

namespace bw {

ComboBox::ComboBox(QWidget* parent) : QComboBox(parent) {
  setModel(&items_);
  // The default measures every item before the box is shown.
  setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  setMinimumContentsLength(18);
  setMaxVisibleItems(20);
  onEvent(this, &QComboBox::activated, this, [this] {
    if (onSelected) onSelected();
  });
}

void ComboBox::Clear() { setItems({}); }

void ComboBox::setItems(const QStringList& items) {
  const QSignalBlocker quiet(this);
  items_.setStringList(items);
  setCurrentIndex(-1);
}

void ComboBox::fillFrom(const RecordSetRef& rows, std::string_view field) {
  QStringList items;
  items.reserve(rows->RecordCount());
  if (rows->RecordCount() > 0)
    for (rows->MoveFirst(); !rows->EOF_(); rows->MoveNext())
      items.append(toQt(rows->textOrEmpty(field)));
  setItems(items);
}

void ComboBox::setListIndex(int index) {
  if (index < -1 || index >= count()) throw RuntimeError(ErrorNumber::invalidPropertyValue);
  {
    const QSignalBlocker quiet(this);
    setCurrentIndex(index);
  }
  update();
  if (onSelected) onSelected();
}

void ComboBox::selectFound(const RecordSetRef& rows, std::string_view criterion) {
  rows->MoveFirst();
  rows->Find(criterion);
  setListIndex(rows->EOF_() ? 0 : static_cast<int>(rows->AbsolutePosition()) - 1);
}

void ComboBox::moveToSelected(const RecordSetRef& rows) const {
  rows->setAbsolutePosition(ListIndex() + 1);
}

}  // namespace bw
