#pragma once

#include <QLineEdit>
#include <string>

#include "controls/ComboBox.h"
#include "controls/Dialog.h"
#include "lists/WorkingList.h"

class QVBoxLayout;

namespace bw {

// What the dialogs of the catalogues share: fields one below the other, then perhaps a list, then
// Ok and Cancel. The controls are made from the top down, which is the order of the Tab key.
class CatalogueEditor : public Dialog {
 protected:
  CatalogueEditor(const char* name, const char* caption, QWidget* owner);

  QLineEdit* addText(const char* label, const char* name);
  ComboBox* addCombo(const char* label, const char* name);

  // The frame of a working list, with its buttons "add" and "del".
  struct Frame {
    const char* title;
    const char* addTip;
    const char* delTip;
  };
  void addFrame(const Frame& frame, WorkingList& rows, std::function<void()> add);
  // Without a handler of its own Cancel does what cancel() does.
  void addFoot(std::function<void()> ok, std::function<void()> onCancel = {});

  // After a writing routine: an error is shown and the dialog stays, otherwise it goes.
  void finish(int result, const std::string& message);
  void cancel();

 private:
  QVBoxLayout* column_;
  QGridLayout* grid_;
};

// Opens the rows of a combo box. False, after a message, when that fails or there are none.
bool openLookup(RecordSetRef& rows, const char* statement, const char* emptyMessage);

// Whether a Get delivered its record. If not, that is told in a message.
bool foundRecord(const RecordSetRef& record);

}  // namespace bw
