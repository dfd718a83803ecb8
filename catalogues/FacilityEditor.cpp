#include "catalogues/CatalogueEditor.h"
#include "catalogues/Editors.h"
#include "controls/QtText.h"
#include "core/Principal.h"
#include "core/Services.h"
#include "data/BWSQLFacilities.h"
#include "data/BWSQLWards.h"
#include "lists/Lists.h"
#include "text/Text.h"

namespace bw {
namespace {

class FacilityEditor : public CatalogueEditor {
 public:
  explicit FacilityEditor(QWidget* owner);
  ~FacilityEditor() override;
  void load();

 private:
  bool loadStored();
  bool loadNew();
  bool openWards();
  void appendWard(const std::string& description);
  void add();
  void openSelected();
  void ok();
  bool storeFacility();
  bool storeNewWards();
  void storeWards();
  int storeWard(int state, std::string& message);

  QLineEdit* TxtDescription;
  ComboBox* CBFacilityTypes;
  QLineEdit* TxtBillingCode;
  QLineEdit* TxtBillingCodeOut;
  RecordSetRef RsFacilityTypes;
  WorkingList wards_;
};

FacilityEditor::FacilityEditor(QWidget* owner)
    : CatalogueEditor("frmEditFacility", "Facility", owner),
      TxtDescription(addText("&Description:", "TxtDescription")),
      CBFacilityTypes(addCombo("&Type:", "CBFacilityTypes")),
      TxtBillingCode(addText("Billing code &Inpatients:", "TxtBillingCode")),
      TxtBillingCodeOut(addText("Billing code &Outpatients:", "TxtBillingCodeOut")),
      wards_(*new ListView({{"Description", "Description", 3600}}, {}, this)) {
  addDetails({.title = "Wards",
              .addTip = "Add a ward (Insert)",
              .delTip = "Remove the selected ward, or keep it after all (Delete)",
              .empty = "No ward yet. Press Insert here to add one; without a ward nobody can be "
                       "admitted.",
              .delText = "de&l"},
             wards_, [this] { add(); });
  wards_.list().onOpen = [this] { openSelected(); };
  addFoot([this] { ok(); });
  setSize(480, 460);
}

FacilityEditor::~FacilityEditor() {
  RsFacilityTypes.close();
  wards_.rows.close();
}

void FacilityEditor::load() {
  NotLoaded = true;
  if (!openRows(RsFacilityTypes, "select * from FacilityTypes",
                "You have to define Facility Types first!"))
    return;
  CBFacilityTypes->fillFrom(RsFacilityTypes, "Description");
  CBFacilityTypes->setListIndex(0);
  if (CurrentFacilityCode != 0 ? loadStored() : loadNew()) NotLoaded = false;
}

bool FacilityEditor::openWards() {
  return openRows(wards_.rows,
                  concat("select * from FacilityWards Where FacilityCode=", CurrentFacilityCode));
}

bool FacilityEditor::loadStored() {
  RecordSetRef facility = FacilityGet(CurrentFacilityCode);
  if (!foundRecord(facility) || !openWards()) return false;
  TxtDescription->setText(toQt(facility->textOrEmpty("Description")));
  TxtBillingCode->setText(toQt(facility->textOrEmpty("BillingFacilityCode")));
  TxtBillingCodeOut->setText(toQt(facility->textOrEmpty("BillingFacilityCodeOut")));
  CBFacilityTypes->selectFound(
      RsFacilityTypes, concat("FacilityTypeCode = ", facility->integer("FacilityTypeCode")));
  wards_.fill();
  facility.close();
  return true;
}

bool FacilityEditor::loadNew() {
  if (!openWards()) return false;
  appendWard("Default");
  wards_.fill();
  return true;
}

void FacilityEditor::appendWard(const std::string& description) {
  wards_.add({{"WardCode", Value(std::int64_t{0})},
              {"Description", Value(description)},
              {"FacilityCode", Value(std::int64_t{CurrentFacilityCode})}});
}

void FacilityEditor::add() {
  std::string& text = frmEditFacility().WardDescription;
  text.clear();
  frmEditWard().showModal();
  if (Trim(text).empty()) return;
  appendWard(text);
  ListFill(wards_.list(), wards_.rows);
}

// A ward that is new or marked to be removed stays that.
void FacilityEditor::openSelected() {
  const auto selected = wards_.list().selectedItem();
  if (!selected) return;
  moveToRow(wards_.rows, wards_.list(), *selected);
  std::string& text = frmEditFacility().WardDescription;
  text = wards_.rows->textOrEmpty("Description");
  frmEditWard().showModal();
  if (Trim(text).empty()) return;
  wards_.rows->set("Description", text);
  if (wards_.rows->integer("checked") == pending::kStored)
    wards_.rows->set("checked", pending::kChanged);
  wards_.rows->Update();
  wards_.list().setText(*selected, text);
}

// The wards of a new facility end with the first that fails, and the dialog stays: the facility is
// stored by then, a second Ok changes it and tries its wards by their marks. Those of a facility
// that was there all go through, whichever fails, and the dialog goes.
void FacilityEditor::ok() {
  CBFacilityTypes->moveToSelected(RsFacilityTypes);
  const bool isNew = CurrentFacilityCode == 0;
  if (!storeFacility()) return;
  if (!isNew)
    storeWards();
  else if (!storeNewWards())
    return;
  unload();
  RecordSaved = true;
}

bool FacilityEditor::storeFacility() {
  std::string message;
  if (storeRecord<FacilityInsert, FacilityUpdate>(
          CurrentFacilityCode, message, fromQt(TxtDescription->text()),
          RsFacilityTypes->code("FacilityTypeCode"), fromQt(TxtBillingCode->text()),
          fromQt(TxtBillingCodeOut->text())) == 0)
    return true;
  MsgBox(message);
  return false;
}

// Whatever their marks.
bool FacilityEditor::storeNewWards() {
  bool stored = true;
  wards_.forEach([&](int) {
    std::string message;
    if (!stored || storeWard(pending::kAdded, message) == 0) return;
    MsgBox(message);
    stored = false;
  });
  return stored;
}

void FacilityEditor::storeWards() {
  wards_.forEach([&](int state) {
    std::string message;
    if (storeWard(state, message) != 0) MsgBox(message);
  });
}

int FacilityEditor::storeWard(int state, std::string& message) {
  const std::string description = wards_.rows->textOrEmpty("Description");
  std::int16_t code = wards_.rows->code("WardCode");
  switch (state) {
    case pending::kAdded:
      return WardInsert(code, CurrentFacilityCode, description, message);
    case pending::kRemoved:
      return WardDelete(code, message);
    case pending::kChanged:
      return WardUpdate(code, CurrentFacilityCode, description, message);
    default:
      return 0;
  }
}

}  // namespace

EditFacilityForm& frmEditFacility() {
  static EditFacilityForm form(showModal<FacilityEditor>);
  return form;
}

}  // namespace bw
