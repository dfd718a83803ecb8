#include "catalogues/CatalogueEditor.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "core/AsisRutinasRecordsets.h"
#include "core/Principal.h"
#include "core/Services.h"

namespace bw {

CatalogueEditor::CatalogueEditor(const char* name, const char* caption, QWidget* owner)
    : Dialog(name, caption, owner), column_(new QVBoxLayout(this)), grid_(new QGridLayout) {
  column_->addLayout(grid_);
  grid_->setColumnStretch(1, 1);
}

QLineEdit* CatalogueEditor::addText(const char* label, const char* name) {
  auto* box = new QLineEdit(this);
  addField(grid_, grid_->rowCount(), 0, label, box, name);
  return box;
}

ComboBox* CatalogueEditor::addCombo(const char* label, const char* name) {
  auto* box = new ComboBox(this);
  addField(grid_, grid_->rowCount(), 0, label, box, name);
  return box;
}

void CatalogueEditor::addFrame(const Frame& frame, WorkingList& rows, std::function<void()> add) {
  auto* box = named(new QGroupBox(frame.title, this), "Frame1", frame.title);
  auto* column = new QVBoxLayout(box);
  ListView& list = rows.list();
  list.setParent(box);
  column->addWidget(named(&list, "ListView1", frame.title));
  list.stretchLastColumn();
  list.onInsertKey = add;
  list.onDeleteKey = [&rows] { rows.toggleSelected(); };
  auto* buttons = new QHBoxLayout;
  auto* addButton = makeButton("Command1", "&add", box, std::move(add));
  auto* delButton = makeButton("Command2", "de&l", box, [&rows] { rows.toggleSelected(); });
  addButton->setToolTip(frame.addTip);
  delButton->setToolTip(frame.delTip);
  buttons->addWidget(addButton);
  buttons->addWidget(delButton);
  buttons->addStretch();
  column->addLayout(buttons);
  column_->addWidget(box, 1);
}

void CatalogueEditor::addFoot(std::function<void()> ok, std::function<void()> onCancel) {
  if (!onCancel) onCancel = [this] { cancel(); };
  column_->addStretch();
  column_->addWidget(makeFoot({}, std::move(ok), std::move(onCancel)));
}

void CatalogueEditor::finish(int result, const std::string& message) {
  if (result != 0) return MsgBox(message);
  RecordSaved = true;
  unload();
}

void CatalogueEditor::cancel() {
  RecordSaved = false;
  unload();
}

bool openLookup(RecordSetRef& rows, const char* statement, const char* emptyMessage) {
  std::string message;
  if (OpenRecordset(rows, statement, message) != 0) return MsgBox(message), false;
  if (rows->RecordCount() == 0) return MsgBox(emptyMessage), false;
  return true;
}

bool foundRecord(const RecordSetRef& record) {
  if (record && record->RecordCount() > 0) return true;
  MsgBox("Record not found.  Please report this error!");
  return false;
}

}  // namespace bw
