#include "charges/ChargeEditor.h"
#include "core/Advice.h"
#include "core/Principal.h"
#include "core/Services.h"
#include "data/BWSQLCharges.h"
#include "data/CodeList.h"
#include "engine/Refusals.h"
#include "text/Text.h"

// How the charge editor stores its charge, and what it says when that is refused.

namespace bw {

std::string ChargeEditor::codeListOf(Details& details) const {
  std::string list = kNoCodes;
  details.list.forEach([&](int state) {
    if (state != pending::kRemoved) appendCode(list, details.list.rows->code(details.column));
  });
  return list;
}

void ChargeEditor::ok() {
  if (std::exchange(otherConcept_, false)) return CBEMCodes->setFocus();
  for (const ComboBox* required : {CBFacilities, CBEMCodes, CBDoctors})
    if (required->ListIndex() < 0) return;
  std::string message;
  if (store(message) != 0) return MsgBox(withAdvice(message, adviceOn(message)));
  RecordSaved = true;
  unload();
}

int ChargeEditor::store(std::string& message) {
  diagnoses_.list.rows->setFilter("");
  procedures_.list.rows->setFilter("");
  CBFacilities->moveToSelected(RsFacilities);
  CBDoctors->moveToSelected(RsDoctors);
  CBRefDoctors->moveToSelected(RsRefDoctors);
  CBEMCodes->moveToSelected(RsEMCodes);
  const auto status =
      CBStatus->ListIndex() < 0 ? storedStatus_ : static_cast<std::int16_t>(CBStatus->ListIndex());
  const auto write = [&](auto routine) {
    return routine(CurrentPatientId, CurrentChargeDate, CurrentChargeTime, DTDOC->value(),
                   RsEMCodes->integer("EMCode"), RsDoctors->code("DoctorCode"),
                   RsRefDoctors->code("DoctorCode"), RsFacilities->code("FacilityCode"),
                   codeListOf(diagnoses_), codeListOf(procedures_), status, message);
  };
  return isNew() ? write(ChargeInsert) : write(ChargeUpdate);
}

// What can be done about a refusal, "" when its text or the general advice says it.
std::string ChargeEditor::adviceOn(const std::string& refusal) const {
  if (CurrentPatientId == 0) return "Choose the patient first: Alt+P.";
  for (const Details* details : {&diagnoses_, &procedures_}) {
    const std::string twice = standsTwice(*details);
    if (!twice.empty())
      return concat(twice, " stands twice in the list. Take it out once with del, then press Ok.");
  }
  if (isNew() && refusal == refusalSentence(Refusal::duplicateKey))
    return "Another charge of this patient was entered in this second. Press Ok again.";
  return "";
}

// The description of the first code that the list has twice.
std::string ChargeEditor::standsTwice(const Details& details) {
  std::string before = kNoCodes;
  std::string twice;
  details.list.forEach([&](int state) {
    if (state == pending::kRemoved || !twice.empty()) return;
    const std::int16_t code = details.list.rows->code(details.column);
    if (before.find(concat(";", code, ";")) == std::string::npos) return appendCode(before, code);
    twice = details.list.rows->textOrEmpty("Description");
  });
  return twice;
}

}  // namespace bw
