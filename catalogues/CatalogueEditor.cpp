#include "catalogues/CatalogueEditor.h"

#include <QLabel>
#include <QVBoxLayout>

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

QLabel* CatalogueEditor::addNote(const char* name) {
  auto* note = new QLabel(this);
  note->setObjectName(name);
  grid_->addWidget(note, grid_->rowCount(), 1);
  return note;
}

ComboBox* CatalogueEditor::addCombo(const char* label, const char* name) {
  auto* box = new ComboBox(this);
  addField(grid_, grid_->rowCount(), 0, label, box, name);
  return box;
}

void CatalogueEditor::addDetails(const DetailFrame& frame, WorkingList& details,
                                 std::function<void()> add) {
  details.list().stretchLastColumn();
  column_->addWidget(makeDetailFrame(frame, details, this, std::move(add)), 1);
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

}  // namespace bw
