#include "lists/WorkingList.h"

#include "lists/Lists.h"
#include "text/Text.h"

namespace bw {

int WorkingList::state() const { return rows->isNull("checked") ? 0 : rows->integer("checked"); }

void WorkingList::fill() {
  ListFill(list_, rows);
  if (const auto selected = list_.selectedItem()) list_.setSelected(*selected, false);
}

void WorkingList::add(std::initializer_list<std::pair<const char*, Value>> fields) {
  rows->AddNew();
  for (const auto& [name, value] : fields) rows->set(name, value);
  rows->set("checked", pending::kAdded);
  rows->Update();
}

void WorkingList::toggleSelected() {
  const auto selected = list_.selectedItem();
  if (!selected) return;
  moveToRow(rows, list_, *selected);
  switch (state()) {
    case pending::kAdded:
      rows->Delete();
      list_.removeItem(*selected);
      break;
    case pending::kRemoved:
      rows->set("checked", pending::kStored);
      list_.setText(*selected, Mid(list_.text(*selected), 2));
      break;
    default:
      rows->set("checked", pending::kRemoved);
      list_.setText(*selected, concat("*", list_.text(*selected)));
      break;
  }
  rows->Update();
}

}  // namespace bw
