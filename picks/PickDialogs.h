#pragma once

#include <cstdint>
#include <string>

#include "controls/Dialog.h"

namespace bw {

// The pick dialogs: the user chooses rows of a catalogue for the form that opened the dialog.

// What the dialogs write and read of the editors that open them; it outlives both.
struct ChargeOpener {
  std::string PickResult;  // answer of frmPickDiagnosis and frmPickProcedures
};
ChargeOpener& chargeOpener();

struct PatientOpener {
  std::string PickResult;                 // answer of frmPickHistory
  std::int16_t LastSicknessTypeCode = 0;  // the sickness type last used; 0 at first
};
PatientOpener& patientOpener();

// By ticks. The answer is one text of fixed-width records in the opener's PickResult: the code or
// codes in five digits each, and forty characters of the description. Cancel leaves "".
const Form& frmPickDiagnosis();
const Form& frmPickProcedures();
const Form& frmPickHistory();

// By selection. The answer is in PickedPatientId, PickedDoctorCode (with PickedDoctorNames) or
// PickedInsuranceCode, which also name the row to begin with; Cancel leaves 0.
const Form& frmPickPatient();
const Form& frmPickDoctor();
const Form& frmPickInsurance();

}  // namespace bw
