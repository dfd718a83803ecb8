#include "charges/ChargeEditor.h"

#include "charges/LastCharge.h"
#include "charges/frmEditCharge.h"
#include "controls/QtText.h"
#include "core/Principal.h"
#include "core/Services.h"
#include "data/BWSQLPatients.h"
#include "data/ChargeCodes.h"
#include "engine/ReadAhead.h"
#include "lists/EditedRecord.h"
#include "lists/Lists.h"
#include "picks/PickDialogs.h"
#include "records/RowMark.h"
#include "text/Conversions.h"
#include "text/Text.h"

// What the charge editor does; its window is built in ChargeEditorWindow.cpp, its charge is stored
// in ChargeStore.cpp.

namespace bw {
namespace {

// Characters of a record of PickResult, and of the code in it.
constexpr int kRecord = 45;
constexpr int kCode = 5;

const std::vector<std::string> kDoctorMarks{"BillingDoctorCode", "DoctorCode"};

constexpr const char* kConcepts = "select * from EvaluationManagement";
constexpr const char* kFacilities = "select * from facility";
constexpr const char* kChargeTypes = "select * from ChargeTypes";
constexpr const char* kDoctors = "select * from Doctors";

std::string currentStatement(const char* view) {
  return chargeStatement(view, CurrentPatientId, CurrentChargeDate, CurrentChargeTime);
}

std::string patientStatement() {
  return concat("select * from Patient Where PatientId =", CurrentPatientId);
}

}  // namespace

ChargeEditor::~ChargeEditor() {
  for (RecordSetRef* rows : {&RsEMCodes, &RsFacilities, &RsChargeTypes, &RsRefDoctors, &RsDoctors,
                             &diagnoses_.list.rows, &procedures_.list.rows})
    rows->close();
}

bool ChargeEditor::isNew() const { return CurrentChargeDate == kNewCharge; }

void ChargeEditor::load() {
  NotLoaded = true;
  if (isNew()) CurrentChargeTime = TimeOfDay{0};
  const ReadAhead ahead(DatabaseConnection, foreseen());
  if (!openCatalogues()) return;
  CBChargeTypes->fillFrom(RsChargeTypes, "Description");
  CBChargeTypes->setListIndex(0);
  CBFacilities->fillFrom(RsFacilities, "Description",
                         {"BillingFacilityCode", "BillingFacilityCodeOut", "FacilityCode"});
  CBFacilities->setListIndex(0);
  CBRefDoctors->fillFrom(RsRefDoctors, "Description", kDoctorMarks);
  CBRefDoctors->setListIndex(0);
  fillDoctors();
  EditEMCode = 0;
  if (isNew() ? loadNew() : loadStored()) NotLoaded = false;
}

// What is read in any case.
std::vector<std::string> ChargeEditor::foreseen() const {
  std::vector<std::string> statements{kConcepts,
                                      kFacilities,
                                      kChargeTypes,
                                      kDoctors,
                                      currentStatement(diagnoses_.view),
                                      currentStatement(procedures_.view)};
  statements.insert(statements.end(), DoctorEntries::kStatements.begin(),
                    DoctorEntries::kStatements.end());
  if (isNew() && CurrentPatientId != 0) statements.push_back(patientStatement());
  return statements;
}

bool ChargeEditor::openCatalogues() {
  return openRows(RsEMCodes, kConcepts,
                  "You have to define Evaluation & Management Codes first!") &&
         openRows(RsFacilities, kFacilities, "You have to define Facilities first!") &&
         openRows(RsChargeTypes, kChargeTypes, "You have to define Charge types first!") &&
         openRows(RsRefDoctors, kDoctors, "You have to define Doctors first!");
}

bool ChargeEditor::openDetails(Details& details) {
  return openRows(details.list.rows, currentStatement(details.view));
}

bool ChargeEditor::loadStored() {
  Command5->hide();  // the patient of a stored charge stays
  RecordSetRef charge;
  if (!openRows(charge, currentStatement("ChargesDescriptive")) || !foundRecord(charge))
    return false;
  for (Details* details : {&diagnoses_, &procedures_}) {
    if (!openDetails(*details)) return false;
    details->list.fill();
  }
  showStored(charge);
  charge.close();
  return true;
}

void ChargeEditor::showStored(const RecordSetRef& charge) {
  EditEMCode = charge->integer("EMCode");
  // The concept is searched among those of the first facility's type, as the filter stands now;
  // if it is not among them the charge type stays as it was. The types have the codes 1, 2, 3...
  if (RsEMCodes->RecordCount() > 0) {
    RsEMCodes->MoveFirst();
    RsEMCodes->Find(concat("EMCode=", EditEMCode));
    if (!RsEMCodes->EOF_()) {
      EditChargeTypeCode = RsEMCodes->code("ChargeTypeCode");
      CBChargeTypes->setListIndex(EditChargeTypeCode - 1);
    }
  }
  TxtPatient->setText(toQt(charge->textOrEmpty("Names")));
  storedStatus_ = charge->code("Status");
  CBStatus->setListIndex(storedStatus_ < CBStatus->count() ? storedStatus_ : -1);
  DTDOC->setValue(charge->date("ChargeRealDate"));
  CBFacilities->selectFound(RsFacilities,
                            concat("FacilityCode = ", charge->integer("FacilityCode")));
  CBDoctors->selectFound(RsDoctors, concat("DoctorCode = ", charge->integer("DoctorCode")));
  CBRefDoctors->selectFound(RsRefDoctors,
                            concat("DoctorCode = ", charge->integer("ReferDoctorCode")));
}

bool ChargeEditor::loadNew() {
  if (!showPatientOfNew()) return false;
  DTDOC->setValue(today());
  // A new charge opens on the first facility, also for an admitted patient: the admission decides
  // the charge type alone.
  if (CBFacilities->count() > 0) CBFacilities->setListIndex(0);
  CBStatus->setListIndex(0);
  return openDetails(diagnoses_) && openDetails(procedures_);
}

bool ChargeEditor::showPatientOfNew() {
  if (CurrentPatientId == 0) {
    TxtPatient->setText("Select a Patient");
    return true;
  }
  RecordSetRef patient;
  if (!openRows(patient, patientStatement(), "Error recovering patient information.")) return false;
  TxtPatient->setText(toQt(patient->textOrEmpty("Names")));
  if (patient->integer("InFacilityCode") > 0) {
    CBChargeTypes->setListIndex(0);
    CBFacilities->selectFound(RsFacilities,
                              concat("FacilityCode = ", patient->integer("InFacilityCode")));
  } else {
    CBChargeTypes->setListIndex(1);
  }
  patient.close();
  return true;
}

void ChargeEditor::facilitySelected() {
  unsay();
  CBFacilities->moveToSelected(RsFacilities);
  fillEMCodes();
}

void ChargeEditor::chargeTypeSelected() {
  unsay();
  CBChargeTypes->moveToSelected(RsChargeTypes);
  EditChargeTypeCode = RsChargeTypes->code("ChargeTypeCode");
  fillEMCodes();
  LblDoctorCaption->setText(toQt(RsChargeTypes->textOrEmpty("DoctorCaption") + ":"));
  CBRefDoctors->setAccessibleName(LblDoctorCaption->text());
  CBRefDoctors->setVisible(EditChargeTypeCode != kInpatient);
  LblDoctorCaption->setVisible(EditChargeTypeCode != kInpatient);
  fillDoctors();
}

void ChargeEditor::doctorSelected() {
  unsay();
  CBDoctors->moveToSelected(RsDoctors);
  takeAttentionType();
  fillEMCodes();
}

// From the doctor on which RsDoctors stands.
void ChargeEditor::takeAttentionType() {
  const bool none = RsDoctors->isNull("AttentionTypeCode");
  PickedAttentionTypeCode = none ? std::int16_t{0} : RsDoctors->code("AttentionTypeCode");
  if (PickedAttentionTypeCode == 0) PickedAttentionTypeCode = kVisit;
}

// A new charge is offered the concepts of the facility's type, the patient's status and the
// doctor's attention type; a stored one every concept of the facility's type.
void ChargeEditor::fillEMCodes() {
  std::string filter = concat("FacilityTypeCode=", RsFacilities->integer("FacilityTypeCode"));
  if (isNew())
    filter += concat(" and ChargeTypeCode=", RsChargeTypes->integer("ChargeTypeCode"),
                     " and AttentionTypeCode=", PickedAttentionTypeCode);
  RsEMCodes->setFilter(filter);
  CBEMCodes->Clear();
  if (RsEMCodes->RecordCount() == 0) return;
  QStringList items;
  int remembered = 0;
  for (RsEMCodes->MoveFirst(); !RsEMCodes->EOF_(); RsEMCodes->MoveNext()) {
    items.append(toQt(RsEMCodes->textOrEmpty("Description") + " (" +
                      RsEMCodes->textOrEmpty("BillingEMCode") + ")"));
    if (RsEMCodes->integer("EMCode") == EditEMCode)
      remembered = static_cast<int>(RsEMCodes->AbsolutePosition()) - 1;
  }
  CBEMCodes->setItems(items, [this](int index) {
    return toQt(markOf(*RsEMCodes->rows(), RsEMCodes->view()[static_cast<std::size_t>(index)],
                       {"RealEMCode", "EMCode"}));
  });
  CBEMCodes->setListIndex(remembered);
}

void ChargeEditor::fillDoctors() {
  std::string message;
  if (doctorEntries_.read(RsDoctors, message) != 0) return MsgBox(message);
  CBDoctors->fillFrom(RsDoctors, "Names", [this](int index) { return doctorMark(index); });
  if (CBDoctors->count() == 0) return;
  CBDoctors->setListIndex(0);
  RsDoctors->MoveFirst();
  takeAttentionType();
  fillEMCodes();
}

// Two doctors of one name, or two whom one covers.
QString ChargeEditor::doctorMark(int index) const {
  const std::vector<std::uint32_t>& shown = RsDoctors->view();
  const auto place = static_cast<std::size_t>(index);
  const std::size_t own = shown.size() - doctorEntries_.covered().size();
  const RowStore& rows = *RsDoctors->rows();
  const auto code = rows.columns[rows.indexOf("DoctorCode")].raw(shown[place]);
  std::string mark = codesOfDoctor(static_cast<std::int32_t>(code));
  if (place >= own) mark += " for " + codesOfDoctor(doctorEntries_.covered()[place - own]);
  return toQt(mark);
}

std::string ChargeEditor::codesOfDoctor(std::int32_t code) const {
  const RowStore& doctors = *RsRefDoctors->rows();
  const Column& codes = doctors.columns[doctors.indexOf("DoctorCode")];
  for (const std::uint32_t row : RsRefDoctors->view())
    if (codes.raw(row) == code) return markOf(doctors, row, kDoctorMarks);
  return concat(code);
}

void ChargeEditor::pickPatient() {
  unsay();
  PickFacilityCode =
      EditChargeTypeCode == kInpatient ? RsFacilities->code("FacilityCode") : std::int16_t{0};
  PickedPatientId = CurrentPatientId;
  frmPickPatient().showModal();
  if (PickedPatientId == 0 || PickedPatientId == CurrentPatientId) return;
  RecordSetRef patient = PatientGet(PickedPatientId);
  if (!patient || patient->RecordCount() == 0) return;
  TxtPatient->setText(toQt(patient->textOrEmpty("Names")));
  CurrentPatientId = PickedPatientId;
  if (EditChargeTypeCode == kInpatient) takeAttending(patient);
  fillDoctors();
  patient.close();
}

void ChargeEditor::takeAttending(const RecordSetRef& patient) {
  CBRefDoctors->selectFound(RsRefDoctors,
                            concat("DoctorCode = ", patient->integer("InDoctorCode")));
}

void ChargeEditor::addDetails(Details& details) {
  details.pick().showModal();
  const std::string& picked = chargeOpener().PickResult;
  const auto records = static_cast<int>(Round(static_cast<double>(length(picked)) / kRecord, 0));
  for (int i = 0; i < records; ++i) {
    const std::string record = Mid(picked, i * kRecord + 1, kRecord);
    details.list.add({{details.column, Value(Left(record, kCode))},
                      {"Description", Value(std::string(Trim(Mid(record, kCode + 1))))}});
    details.list.fill();
  }
}

void ChargeEditor::cancel() {
  RecordSaved = false;
  unload();
}

const Form& frmEditCharge() { return formOf<ChargeEditor>(); }

}  // namespace bw
