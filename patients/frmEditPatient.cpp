#include "patients/frmEditPatient.h"

#include <QLineEdit>
#include <QVBoxLayout>
#include <array>

#include "controls/ComboBox.h"
#include "controls/DatePicker.h"
#include "controls/QtText.h"
#include "core/Principal.h"
#include "core/Services.h"
#include "data/BWSQLPatients.h"
#include "engine/ReadAhead.h"
#include "lists/DetailFrame.h"
#include "lists/EditedRecord.h"
#include "lists/WorkingList.h"
#include "picks/PickDialogs.h"
#include "text/Text.h"

namespace bw {
namespace {

// Characters of a record of PickResult, and of each of the two codes in it.
constexpr int kRecord = 50;
constexpr int kCode = 5;

constexpr const char* kInsurances = "select * from insurance";
constexpr const char* kSicknessTypes = "select * from SicknessType";

std::string historyStatement() {
  return concat("select * from PatientsHistoryDescriptive Where PatientId=", CurrentPatientId);
}

class PatientEditor : public Dialog {
 public:
  explicit PatientEditor(QWidget* owner);
  ~PatientEditor() override;
  void load();

 private:
  void build();
  QWidget* buildHistory();

  bool openHistory();
  bool showStored();
  bool showNew();

  void sicknessTypeSelected();
  void addHistory();
  void ok();
  int storePatient(std::string& message);
  void storeHistory(bool ofNewPatient);
  void cancel();

  RecordSetRef RsInsurances;
  RecordSetRef RsSicknessTypes;

  QLineEdit* TxtNames;
  DatePicker* DTDOB;
  QLineEdit* TxtAccount;
  ComboBox* CBSeguros;
  ComboBox* CBSicknessType;
  ListView* ListView1;
  WorkingList history_;  // of all types; its filter shows one at a time
};

PatientEditor::PatientEditor(QWidget* owner)
    : Dialog("frmEditPatient", "Patient", owner), TxtNames(new QLineEdit(this)),
      DTDOB(new DatePicker(this, DatePicker::Kind::birth)), TxtAccount(new QLineEdit(this)),
      CBSeguros(new ComboBox(this)), CBSicknessType(new ComboBox(this)),
      ListView1(new ListView({{"Description", "Description", 3600}}, {}, this)),
      history_(*ListView1) {
  build();
}

PatientEditor::~PatientEditor() {
  for (RecordSetRef* rows : {&RsInsurances, &RsSicknessTypes, &history_.rows}) rows->close();
}

void PatientEditor::build() {
  auto* column = new QVBoxLayout(this);
  auto* grid = new QGridLayout;
  addField(grid, 0, 0, "&Names:", TxtNames, "TxtNames");
  addField(grid, 1, 0, "D&OB:", DTDOB, "DTDOB");
  addField(grid, 2, 0, "A&ccount:", TxtAccount, "TxtAccount");
  addField(grid, 3, 0, "&Insurance:", CBSeguros, "CBSeguros");
  grid->setColumnStretch(1, 1);
  column->addLayout(grid);
  column->addWidget(buildHistory(), 1);
  column->addWidget(makeFoot(
      {}, [this] { ok(); }, [this] { cancel(); }));
  TxtNames->setFocus();
  setSize(480, 480);
}

QWidget* PatientEditor::buildHistory() {
  auto* frame =
      makeDetailFrame({.title = "Medical History",
                       .addTip = "Add history entries (Insert)",
                       .delTip = "Remove the selected entry, or keep it after all (Delete)",
                       .empty = "Nothing of this kind yet. Press Insert here to add some."},
                      history_, this, [this] { addHistory(); });
  ListView1->stretchLastColumn();
  CBSicknessType->onSelected = [this] { sicknessTypeSelected(); };
  named(CBSicknessType, "CBSicknessType", "Medical History: type");
  static_cast<QVBoxLayout*>(frame->layout())->insertWidget(0, CBSicknessType);
  return frame;
}

void PatientEditor::load() {
  NotLoaded = true;
  const std::array foreseen{std::string(kInsurances), std::string(kSicknessTypes),
                            historyStatement()};
  const ReadAhead ahead(DatabaseConnection, foreseen);
  if (!openRows(RsInsurances, kInsurances, "You have to define Insurances First!") ||
      !openRows(RsSicknessTypes, kSicknessTypes, "You have to define Sickness Types First!"))
    return;
  CBSeguros->fillFrom(RsInsurances, "Description", {"BillingInsuranceCode", "InsuranceCode"});
  CBSeguros->setListIndex(0);
  if (!(CurrentPatientId != 0 ? showStored() : showNew())) return;
  CBSicknessType->fillFrom(RsSicknessTypes, "Description");
  CBSicknessType->setListIndex(0);
  NotLoaded = false;
}

bool PatientEditor::openHistory() { return openRows(history_.rows, historyStatement()); }

bool PatientEditor::showStored() {
  RecordSetRef patient = PatientGet(CurrentPatientId);
  if (!foundRecord(patient) || !openHistory()) return false;
  TxtNames->setText(toQt(patient->textOrEmpty("Names")));
  TxtAccount->setText(toQt(patient->textOrEmpty("AccountNumber")));
  DTDOB->setValue(patient->isNull("DateOfBirth")
                      ? std::nullopt
                      : std::optional<Date>(patient->date("DateOfBirth")));
  CBSeguros->selectFound(RsInsurances,
                         concat("InsuranceCode = ", patient->integer("InsuranceCode")));
  patient.close();
  return true;
}

bool PatientEditor::showNew() {
  DTDOB->setValue(today());
  return openHistory();
}

void PatientEditor::sicknessTypeSelected() {
  CBSicknessType->moveToSelected(RsSicknessTypes);
  history_.rows->setFilter(
      concat("SicknessTypeCode=", RsSicknessTypes->integer("SicknessTypeCode")));
  history_.fill();
}

void PatientEditor::addHistory() {
  CBSicknessType->moveToSelected(RsSicknessTypes);
  patientOpener().LastSicknessTypeCode = RsSicknessTypes->code("SicknessTypeCode");
  frmPickHistory().showModal();
  const std::string& picked = patientOpener().PickResult;
  const auto records = static_cast<int>(length(picked)) / kRecord;
  for (int i = 0; i < records; ++i) {
    const std::string record = Mid(picked, i * kRecord + 1, kRecord);
    history_.add({{"SicknessCode", Value(Left(record, kCode))},
                  {"SicknessTypeCode", Value(Mid(record, kCode + 1, kCode))},
                  {"Description", Value(std::string(Trim(Mid(record, 2 * kCode + 1))))}});
  }
  sicknessTypeSelected();
}

void PatientEditor::ok() {
  history_.rows->setFilter("");
  CBSeguros->moveToSelected(RsInsurances);
  const bool isNew = CurrentPatientId == 0;
  std::string message;
  if (storePatient(message) != 0) {
    MsgBox(message);
    if (!DTDOB->valueIfAny()) DTDOB->setFocus();
    return;
  }
  storeHistory(isNew);
  RecordSaved = true;
  unload();
}

int PatientEditor::storePatient(std::string& message) {
  return storeRecord<PatientInsert, PatientUpdate>(
      CurrentPatientId, message, fromQt(TxtNames->text()), DTDOB->valueIfAny(),
      fromQt(TxtAccount->text()), RsInsurances->code("InsuranceCode"));
}

// Each row by itself: one that fails leaves the patient and the other rows stored.
void PatientEditor::storeHistory(bool ofNewPatient) {
  history_.forEach([&](int state) {
    std::string message;
    const auto write = [&](auto routine) {
      if (routine(CurrentPatientId, history_.rows->code("SicknessCode"),
                  history_.rows->code("SicknessTypeCode"), message) != 0)
        MsgBox(message);
    };
    if (ofNewPatient || state == pending::kAdded)
      write(PatientHistoryInsert);
    else if (state == pending::kRemoved)
      write(PatientHistoryDelete);
  });
}

void PatientEditor::cancel() {
  RecordSaved = false;
  unload();
}

}  // namespace

const Form& frmEditPatient() { return formOf<PatientEditor>(); }

}  // namespace bw
