#include "catalogues/CatalogueEditor.h"
#include "catalogues/Editors.h"
#include "controls/QtText.h"
#include "core/Principal.h"
#include "core/Services.h"
#include "data/BWSQLDoctors.h"
#include "data/CodeList.h"
#include "picks/PickDialogs.h"
#include "text/Text.h"

namespace bw {
namespace {

class DoctorEditor : public CatalogueEditor {
 public:
  explicit DoctorEditor(QWidget* owner);
  ~DoctorEditor() override { coverage_.rows.close(); }
  void load();

 private:
  bool loadStored();
  void add();
  bool covers(std::int16_t doctor);
  void ok();

  QLineEdit* TxtDescription;
  QLineEdit* TxtBillingCode;
  WorkingList coverage_;
};

DoctorEditor::DoctorEditor(QWidget* owner)
    : CatalogueEditor("frmEditDoctor", "Doctor", owner),
      TxtDescription(addText("&Description:", "TxtDescription")),
      TxtBillingCode(addText("&Billing code:", "TxtBillingCode")),
      coverage_(*new ListView({{"Names", "Doctor", 3400}}, {}, this)) {
  addDetails({.title = "Doctors covered",
              .addTip = "Add a doctor (Insert)",
              .delTip = "Remove the selected doctor, or keep him after all (Delete)",
              .empty = "Nobody yet. Press Insert here to add who stands in for this doctor.",
              .delText = "de&l"},
             coverage_, [this] { add(); });
  addFoot([this] { ok(); });
  setSize(440, 400);
}

void DoctorEditor::load() {
  NotLoaded = true;
  if (!openRows(coverage_.rows,
                concat("Select * From Coverage Where DoctorCode=", CurrentDoctorCode)))
    return;
  if (CurrentDoctorCode != 0 && !loadStored()) return;
  NotLoaded = false;
}

bool DoctorEditor::loadStored() {
  RecordSetRef doctor = DoctorGet(CurrentDoctorCode);
  if (!foundRecord(doctor)) return false;
  TxtDescription->setText(toQt(doctor->textOrEmpty("Description")));
  TxtBillingCode->setText(toQt(doctor->textOrEmpty("BillingDoctorCode")));
  coverage_.fill();
  doctor.close();
  return true;
}

void DoctorEditor::add() {
  PickedDoctorCode = 0;
  frmPickDoctor().showModal();
  if (PickedDoctorCode == 0) return;
  if (PickedDoctorCode == CurrentDoctorCode) return MsgBox("Bad selection!");
  if (covers(PickedDoctorCode)) return MsgBox("Doctor already on the list!");
  coverage_.add({{"CoveringDoctorCode", Value(std::int64_t{PickedDoctorCode})},
                 {"Names", Value(PickedDoctorNames)}});
  coverage_.fill();
}

// One who is marked to be removed counts as well.
bool DoctorEditor::covers(std::int16_t doctor) {
  bool found = false;
  coverage_.forEach(
      [&](int) { found = found || coverage_.rows->code("CoveringDoctorCode") == doctor; });
  return found;
}

void DoctorEditor::ok() {
  std::string list = kNoCodes;
  coverage_.forEach([&](int state) {
    if (state != pending::kRemoved) appendCode(list, coverage_.rows->code("CoveringDoctorCode"));
  });
  std::string message;
  const int result = storeRecord<DoctorInsert, DoctorUpdate>(CurrentDoctorCode, message,
                                                             fromQt(TxtDescription->text()),
                                                             fromQt(TxtBillingCode->text()), list);
  finish(result, message);
}

}  // namespace

const Form& frmEditDoctor() { return formOf<DoctorEditor>(); }

}  // namespace bw
