#include "charges/frmArchiveCharges.h"

#include "charges/Archiving.h"
#include "controls/DatePicker.h"
#include "controls/Explanation.h"
#include "controls/QtText.h"
#include "core/Services.h"

namespace bw {
namespace {

class ArchiveDialog : public Dialog {
 public:
  explicit ArchiveDialog(QWidget* owner);
  // A year ago is what offices archive.
  void load() { DTPicker1->setValue(fromQt(toQt(today()).addYears(-1))); }

 private:
  void archive();

  DatePicker* DTPicker1 = new DatePicker;
};

ArchiveDialog::ArchiveDialog(QWidget* owner)
    : Dialog("frmArchiveCharges", "Archive Charges", owner) {
  constexpr const char* kExplanation =
      "This option mark as archived the charges below the desired date excluding the last charge "
      "of the patient.";
  QGridLayout* fields = explainedFields(this, "Label1", kExplanation);
  addField(fields, 0, 0, "Archive until:", DTPicker1, "DTPicker1");
  fields->setColumnStretch(2, 1);
  layout()->addWidget(makeFoot(
      {"OKButton", "Archive", "CancelButton", "Cancel", true}, [this] { archive(); },
      [this] { unload(); }));
  DTPicker1->setFocus();
}

void ArchiveDialog::archive() {
  std::string message;
  if (!archiveCharges(DTPicker1->value(), message)) return MsgBox(message);
  MsgBox("Process ended successfully");
  unload();
}

}  // namespace

const Form& frmArchiveCharges() { return formOf<ArchiveDialog>(); }

}  // namespace bw
