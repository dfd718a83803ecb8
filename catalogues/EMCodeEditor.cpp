#include <array>

#include "catalogues/CatalogueEditor.h"
#include "catalogues/Editors.h"
#include "controls/QtText.h"
#include "core/Principal.h"
#include "data/BWSQLEMCodes.h"
#include "text/Text.h"

namespace bw {
namespace {

// Boxes filled from tables, in the order in which the tables are read.
struct LookupRow {
  const char* statement;
  const char* emptyMessage;
  const char* code;
};
enum Lookup : std::size_t { kAttention, kCharge, kFacility, kLookups };
constexpr std::array<LookupRow, kLookups> kLookupRows{{
    {"select * from AttentionTypes", "You have to define Attention types first!",
     "AttentionTypeCode"},
    {"select * from ChargeTypes", "You have to define Charge types first!", "ChargeTypeCode"},
    {"select * from FacilityTypes", "You have to define Facility Types first!", "FacilityTypeCode"},
}};

// Boxes of fixed items.
struct ChoiceRow {
  const char* column;
  QStringList items;
  int first;  // number that the first item stands for
  int ofNew;  // index in a new record
};
enum Choice : std::size_t { kShowOnFirst, kShowOnNext, kSequence, kChoices };
const std::array<ChoiceRow, kChoices>& choiceRows() {
  static const std::array<ChoiceRow, kChoices> rows{{
      {"ShowOnFirst", {"No", "Yes"}, 0, 1},
      {"ShowOnNext", {"No", "Yes"}, 0, 1},
      {"IsDischarge", {"Initial", "Follow Up", "Discharge"}, 1, 0},
  }};
  return rows;
}

class EMCodeEditor : public CatalogueEditor {
 public:
  explicit EMCodeEditor(QWidget* owner);
  ~EMCodeEditor() override;
  void load();

 private:
  bool openLookups();
  bool loadStored();
  void ok();
  std::int16_t codeOf(Lookup lookup);
  std::int16_t numberOf(Choice choice) const;

  QLineEdit* TxtDescription;
  QLineEdit* TxtRealCode;
  QLineEdit* TxtBillingCode;
  std::array<ComboBox*, kLookups> lookups_{};
  std::array<RecordSetRef, kLookups> lookupRows_;
  std::array<ComboBox*, kChoices> choices_{};
};

EMCodeEditor::EMCodeEditor(QWidget* owner)
    : CatalogueEditor("frmEditEMCode", "Evaluation & Management code", owner),
      TxtDescription(addText("&Description:", "TxtDescription")),
      TxtRealCode(addText("&Real code:", "TxtRealCode")),
      TxtBillingCode(addText("&Billing code:", "TxtBillingCode")) {
  lookups_[kFacility] = addCombo("&Applies to:", "CBFacilityTypes");
  lookups_[kAttention] = addCombo("&Service as:", "CBAttentionTypes");
  lookups_[kCharge] = addCombo("&Patient status:", "CBChargeTypes");
  choices_[kSequence] = addCombo("Se&quence:", "CBCauseDischarge");
  choices_[kShowOnFirst] = addCombo("Show on the &first Visit?:", "CBShowOnFirst");
  choices_[kShowOnNext] = addCombo("Show on r&est of Visits?:", "CBShowOnNext");
  for (std::size_t i = 0; i < kChoices; ++i) choices_[i]->setItems(choiceRows()[i].items);
  addFoot([this] { ok(); });
  setSize(480);
}

EMCodeEditor::~EMCodeEditor() {
  for (RecordSetRef& rows : lookupRows_) rows.close();
}

void EMCodeEditor::load() {
  NotLoaded = true;
  if (!openLookups()) return;
  for (std::size_t i = 0; i < kLookups; ++i) {
    lookups_[i]->fillFrom(lookupRows_[i], "Description");
    lookups_[i]->setListIndex(0);
  }
  if (CurrentEMCode != 0) {
    if (!loadStored()) return;
  } else {
    for (std::size_t i = 0; i < kChoices; ++i) choices_[i]->setListIndex(choiceRows()[i].ofNew);
  }
  NotLoaded = false;
}

bool EMCodeEditor::openLookups() {
  for (std::size_t i = 0; i < kLookups; ++i)
    if (!openRows(lookupRows_[i], kLookupRows[i].statement, kLookupRows[i].emptyMessage))
      return false;
  return true;
}

// A stored number that no item stands for is error 380, which nothing catches.
bool EMCodeEditor::loadStored() {
  RecordSetRef record = EMCodeGet(CurrentEMCode);
  if (!foundRecord(record)) return false;
  TxtDescription->setText(toQt(record->textOrEmpty("Description")));
  TxtBillingCode->setText(toQt(record->textOrEmpty("BillingEMCode")));
  TxtRealCode->setText(toQt(record->textOrEmpty("RealEMCode")));
  for (std::size_t i = 0; i < kLookups; ++i) {
    const char* code = kLookupRows[i].code;
    lookups_[i]->selectFound(lookupRows_[i], concat(code, " = ", record->integer(code)));
  }
  for (std::size_t i = 0; i < kChoices; ++i) {
    const int index = record->integer(choiceRows()[i].column) - choiceRows()[i].first;
    if (index < 0) throw RuntimeError(ErrorNumber::invalidPropertyValue);
    choices_[i]->setListIndex(index);
  }
  record.close();
  return true;
}

std::int16_t EMCodeEditor::codeOf(Lookup lookup) {
  lookups_[lookup]->moveToSelected(lookupRows_[lookup]);
  return lookupRows_[lookup]->code(kLookupRows[lookup].code);
}

std::int16_t EMCodeEditor::numberOf(Choice choice) const {
  return static_cast<std::int16_t>(choices_[choice]->ListIndex() + choiceRows()[choice].first);
}

void EMCodeEditor::ok() {
  std::string message;
  const int result = storeRecord<EMCodeInsert, EMCodeUpdate>(
      CurrentEMCode, message, fromQt(TxtDescription->text()), codeOf(kFacility), codeOf(kCharge),
      codeOf(kAttention), fromQt(TxtBillingCode->text()), fromQt(TxtRealCode->text()),
      numberOf(kShowOnFirst), numberOf(kShowOnNext), numberOf(kSequence));
  finish(result, message);
}

}  // namespace

const Form& frmEditEMCode() { return formOf<EMCodeEditor>(); }

}  // namespace bw
