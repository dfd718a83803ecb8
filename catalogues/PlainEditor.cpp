#include <optional>
#include <vector>

#include "catalogues/CatalogueEditor.h"
#include "catalogues/CodeField.h"
#include "catalogues/Editors.h"
#include "controls/QtText.h"
#include "core/Principal.h"
#include "core/Services.h"
#include "data/BWSQLDiagnosis.h"
#include "data/BWSQLDiagnosisFamilies.h"
#include "data/BWSQLInsurances.h"
#include "data/BWSQLProcedures.h"
#include "data/BWSQLSickness.h"
#include "text/Text.h"

// The editors of catalogues of a few texts and perhaps a group.

namespace bw {
namespace {

// What is typed and chosen in such a dialog.
struct Values {
  std::string description;
  std::string billingCode;
  std::string realCode;
  std::int16_t group = 0;
};

struct TextRow {
  const char* label;
  const char* name;
  const char* column;
  std::string Values::*value;
  std::optional<CodeBook> book{};  // whose codes it takes
};

// The combo box of the record's group.
struct GroupRow {
  const char* name;
  RecordSetRef (*read)();  // nothing, after a message, when it fails
  const char* shown;
  const char* code;
  const char* emptyMessage;
};

struct PlainRow {
  const char* name;
  const char* caption;
  std::int16_t& current;
  RecordSetRef (*get)(std::int16_t code);
  int (*store)(std::int16_t& code, const Values& values, std::string& message);
  std::vector<TextRow> texts;
  const GroupRow* group = nullptr;
};

// Writes the values in the order in which the routines take them.
template <auto insert, auto update, auto... values>
int store(std::int16_t& code, const Values& from, std::string& message) {
  return storeRecord<insert, update>(code, message, from.*values...);
}

RecordSetRef readSicknessTypes() {
  RecordSetRef rows;
  openRows(rows, "select * from SicknessType");
  return rows;
}

constexpr GroupRow kFamilies{"CBDiagnosisFamily", DiagnosisFamilyList, "DiagnosisFamilyDescription",
                             "DiagnosisFamilyCode", "You have to define Diagnosis Groups first!"};
constexpr GroupRow kSicknessTypes{"CBSicknessTypes", readSicknessTypes, "Description",
                                  "SicknessTypeCode", "You have to define History Groups first!"};

TextRow description(const char* column) {
  return {"&Description:", "TxtDescription", column, &Values::description};
}
TextRow billingCode(const char* column) {
  return {"&Billing code:", "TxtBillingCode", column, &Values::billingCode};
}
TextRow realCode(const char* column, CodeBook book) {
  return {"&Real code:", "TxtRealCode", column, &Values::realCode, book};
}

const PlainRow kInsurance{
    "frmEditInsurance",
    "Insurance",
    CurrentInsuranceCode,
    InsuranceGet,
    store<InsuranceInsert, InsuranceUpdate, &Values::description, &Values::billingCode>,
    {description("Description"), billingCode("BillingInsuranceCode")}};
const PlainRow kProcedure{"frmEditProcedure",
                          "Procedure",
                          CurrentProcedureCode,
                          ProcedureGet,
                          store<ProcedureInsert, ProcedureUpdate, &Values::description,
                                &Values::realCode, &Values::billingCode>,
                          {description("Description"), billingCode("BillingProcedureCode"),
                           realCode("RealProcedureCode", CodeBook::procedures)}};
const PlainRow kDiagnosis{"frmEditDiagnosis",
                          "Diagnosis",
                          CurrentDiagnosisCode,
                          DiagnosisGet,
                          store<DiagnosisInsert, DiagnosisUpdate, &Values::description,
                                &Values::group, &Values::realCode, &Values::billingCode>,
                          {description("Description"), billingCode("BillingDiagnosisCode"),
                           realCode("RealDiagnosisCode", CodeBook::diagnoses)},
                          &kFamilies};
const PlainRow kDiagnosisFamily{
    "frmEditDiagnosisFamily",
    "Diagnosis Group",
    CurrentDiagnosisFamilyCode,
    DiagnosisFamilyGet,
    store<DiagnosisFamilyInsert, DiagnosisFamilyUpdate, &Values::description>,
    {description("DiagnosisFamilyDescription")}};
const PlainRow kSickness{
    "frmEditSickness",
    "History Item",
    CurrentSicknessCode,
    SicknessGet,
    store<SicknessInsert, SicknessUpdate, &Values::description, &Values::group>,
    {description("Description")},
    &kSicknessTypes};

class PlainEditor : public CatalogueEditor {
 public:
  PlainEditor(const PlainRow& row, QWidget* owner);
  ~PlainEditor() override { RsGroups.close(); }
  void load();

 private:
  bool loadGroups();
  bool loadStored();
  void ok();

  const PlainRow& row_;
  std::vector<QLineEdit*> texts_;  // the description first
  CodeField* code_ = nullptr;
  ComboBox* groups_ = nullptr;
  RecordSetRef RsGroups;
};

PlainEditor::PlainEditor(const PlainRow& row, QWidget* owner)
    : CatalogueEditor(row.name, row.caption, owner), row_(row) {
  for (const TextRow& text : row_.texts) {
    texts_.push_back(addText(text.label, text.name));
    if (text.book)
      code_ = new CodeField(*text.book, *texts_.back(), *texts_.front(), *addNote("LblRealCode"));
  }
  if (row_.group != nullptr) groups_ = addCombo("&Type:", row_.group->name);
  addFoot([this] { ok(); });
  setSize(420);
}

void PlainEditor::load() {
  NotLoaded = true;
  if (row_.group != nullptr && !loadGroups()) return;
  if (row_.current != 0 && !loadStored()) return;
  NotLoaded = false;
}

bool PlainEditor::loadGroups() {
  RsGroups = row_.group->read();
  if (!RsGroups) return false;
  if (RsGroups->RecordCount() == 0) return MsgBox(row_.group->emptyMessage), false;
  groups_->fillFrom(RsGroups, row_.group->shown, {row_.group->code});
  groups_->setListIndex(0);
  return true;
}

bool PlainEditor::loadStored() {
  RecordSetRef record = row_.get(row_.current);
  if (!foundRecord(record)) return false;
  for (std::size_t i = 0; i < texts_.size(); ++i)
    texts_[i]->setText(toQt(record->textOrEmpty(row_.texts[i].column)));
  if (code_ != nullptr) code_->judge();
  if (row_.group != nullptr)
    groups_->selectFound(RsGroups,
                         concat(row_.group->code, " = ", record->integer(row_.group->code)));
  record.close();
  return true;
}

void PlainEditor::ok() {
  Values values;
  for (std::size_t i = 0; i < texts_.size(); ++i)
    values.*row_.texts[i].value = fromQt(texts_[i]->text());
  if (row_.group != nullptr) {
    groups_->moveToSelected(RsGroups);
    values.group = RsGroups->code(row_.group->code);
  }
  std::string message;
  const int result = row_.store(row_.current, values, message);
  finish(result, message);
}

}  // namespace

const Form& frmEditInsurance() { return formOf<PlainEditor, kInsurance>(); }
const Form& frmEditProcedure() { return formOf<PlainEditor, kProcedure>(); }
const Form& frmEditDiagnosis() { return formOf<PlainEditor, kDiagnosis>(); }
const Form& frmEditDiagnosisFamily() { return formOf<PlainEditor, kDiagnosisFamily>(); }
const Form& frmEditSickness() { return formOf<PlainEditor, kSickness>(); }

}  // namespace bw
