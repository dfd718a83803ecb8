#include "charges/ChargeEditor.h"
#include "charges/LastCharge.h"
#include "controls/QtText.h"
#include "core/Principal.h"
#include "core/Services.h"
#include "data/BWSQLPatients.h"
#include "data/ChargeCodes.h"
#include "text/Text.h"

// The charge editor's key "as last time".

namespace bw {

void ChargeEditor::unsay() {
  otherConcept_ = false;
  patientHint_->say({});
  conceptHint_->say({});
}

void ChargeEditor::asLastTime() {
  unsay();
  if (!isNew()) return patientHint_->say("F9 fills in new charges only.");
  if (CurrentPatientId == 0)
    return patientHint_->say("Choose the patient first: Alt+P. F9 then fills in his last charge.");
  LastCharge last;
  std::string message;
  if (readLastCharge(CurrentPatientId, last, message) != 0) return MsgBox(message);
  if (last.charge->RecordCount() == 0)
    return patientHint_->say("This patient has no charge yet: fill in the fields.");
  apply(last);
}

void ChargeEditor::apply(const LastCharge& last) {
  const RecordSetRef& charge = last.charge;
  if (!offers(*CBFacilities, RsFacilities, concat("FacilityCode=", charge->code("FacilityCode"))) ||
      !offers(*CBRefDoctors, RsRefDoctors, concat("DoctorCode=", charge->code("ReferDoctorCode"))))
    return patientHint_->say(
        "The last charge names a facility or doctor entered meanwhile:\n"
        "Cancel, and begin the charge anew.");
  CBFacilities->selectFound(RsFacilities,
                            concat("FacilityCode = ", charge->integer("FacilityCode")));
  CBChargeTypes->selectFound(RsChargeTypes,
                             concat("ChargeTypeCode = ", charge->integer("ChargeTypeCode")));
  const bool offered = chooseDoctorWith(charge->code("DoctorCode"), charge->integer("EMCode"));
  chooseReferring(last);
  addMissing(diagnoses_, last.diagnoses);
  addMissing(procedures_, last.procedures);
  if (offered) return;
  otherConcept_ = true;
  const QString had = toQt(concat(charge->textOrEmpty("EMDescription"), " (",
                                  charge->textOrEmpty("BillingEMCode"), ")"));
  const QString now = CBEMCodes->ListIndex() < 0 ? "nothing" : CBEMCodes->currentText();
  conceptHint_->say(QString("Last time: %1. %2 is not offered it here.\nNow: %3. Please check it.")
                        .arg(had, CBDoctors->currentText(), now));
}

// Whether a list, which is read when the window opens, has that row.
bool ChargeEditor::offers(const ComboBox& box, const RecordSetRef& rows,
                          const std::string& criterion) {
  rows->MoveFirst();
  rows->Find(criterion);
  const bool found = !rows->EOF_();
  box.moveToSelected(rows);
  return found;
}

// The doctor's first entry that offers the concept, own or covering; when none does, his first.
bool ChargeEditor::chooseDoctorWith(std::int16_t doctor, std::int32_t concept_) {
  int first = 0;
  for (int entry = CBDoctors->count() - 1; entry >= 0; --entry) {
    RsDoctors->setAbsolutePosition(entry + 1);
    if (RsDoctors->code("DoctorCode") == doctor) first = entry;
  }
  for (int entry = first; entry < CBDoctors->count(); ++entry) {
    RsDoctors->setAbsolutePosition(entry + 1);
    if (RsDoctors->code("DoctorCode") != doctor) continue;
    CBDoctors->setListIndex(entry);
    if (chooseConcept(concept_)) return true;
  }
  CBDoctors->setListIndex(first);
  return false;
}

bool ChargeEditor::chooseConcept(std::int32_t concept_) {
  if (RsEMCodes->RecordCount() == 0) return false;
  RsEMCodes->MoveFirst();
  RsEMCodes->Find(concat("EMCode=", concept_));
  if (RsEMCodes->EOF_()) return false;
  CBEMCodes->setListIndex(static_cast<int>(RsEMCodes->AbsolutePosition()) - 1);
  return true;
}

// Of an inpatient the doctor of the admission, as picking the patient takes him. One who has been
// discharged has none any more: then that of the charge.
void ChargeEditor::chooseReferring(const LastCharge& last) {
  const RecordSetRef patient = PatientGet(CurrentPatientId);
  const bool admitted =
      patient && patient->RecordCount() > 0 && patient->integer("InDoctorCode") != 0;
  if (EditChargeTypeCode == kInpatient && admitted) return takeAttending(patient);
  CBRefDoctors->selectFound(RsRefDoctors,
                            concat("DoctorCode = ", last.charge->integer("ReferDoctorCode")));
}

// What the list has already is not added a second time.
void ChargeEditor::addMissing(Details& details, const RecordSetRef& rows) {
  const std::string there = codeListOf(details);
  for (; !rows->EOF_(); rows->MoveNext()) {
    const std::int16_t code = rows->code(details.column);
    if (there.find(concat(";", code, ";")) != std::string::npos) continue;
    details.list.add({{details.column, Value(std::int64_t{code})},
                      {"Description", Value(rows->textOrEmpty("Description"))}});
  }
  details.list.fill();
}

}  // namespace bw
