#pragma once

#include <QLineEdit>
#include <string>

#include "controls/ComboBox.h"
#include "controls/Dialog.h"
#include "lists/DetailFrame.h"
#include "lists/EditedRecord.h"
#include "lists/WorkingList.h"

class QLabel;
class QVBoxLayout;

namespace bw {

// What the dialogs of the catalogues share: fields one below the other, then perhaps a list, then
// Ok and Cancel. The controls are made from the top down, which is the order of the Tab key.
class CatalogueEditor : public Dialog {
 protected:
  CatalogueEditor(const char* name, const char* caption, QWidget* owner);

  QLineEdit* addText(const char* label, const char* name);
  // A line of words below the field added last.
  QLabel* addNote(const char* name);
  ComboBox* addCombo(const char* label, const char* name);

  void addDetails(const DetailFrame& frame, WorkingList& details, std::function<void()> add);
  // Without a handler of its own Cancel does what cancel() does.
  void addFoot(std::function<void()> ok, std::function<void()> onCancel = {});

  // After a writing routine: an error is shown and the dialog stays, otherwise it goes.
  void finish(int result, const std::string& message);
  void cancel();

 private:
  QVBoxLayout* column_;
  QGridLayout* grid_;
};

}  // namespace bw
