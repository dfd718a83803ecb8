#include "lists/DetailFrame.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "controls/Dialog.h"
#include "lists/WorkingList.h"

namespace bw {

QGroupBox* makeDetailFrame(const DetailFrame& frame, WorkingList& details, QWidget* parent,
                           std::function<void()> add) {
  auto* box = named(new QGroupBox(frame.title, parent), frame.name, frame.title);
  auto* column = new QVBoxLayout(box);
  ListView& list = details.list();
  list.onInsertKey = add;
  list.onDeleteKey = [&details] { details.toggleSelected(); };
  list.setEmptyText(frame.empty);
  column->addWidget(named(&list, frame.list, frame.title));
  auto* buttons = new QHBoxLayout;
  auto* addButton = makeButton(frame.addName, frame.addText, box, std::move(add));
  auto* delButton =
      makeButton(frame.delName, frame.delText, box, [&details] { details.toggleSelected(); });
  addButton->setToolTip(frame.addTip);
  delButton->setToolTip(frame.delTip);
  buttons->addWidget(addButton);
  buttons->addWidget(delButton);
  buttons->addStretch();
  column->addLayout(buttons);
  return box;
}

}  // namespace bw
