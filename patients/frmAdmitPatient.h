#pragma once

#include "controls/Dialog.h"

namespace bw {

// Admission of CurrentPatientId: facility, ward, attending doctor, and the doctors who visit. On a
// patient who is admitted it is a transfer. It answers nothing: the caller reads the row again.
// CurrentFacilityCode, CurrentWardCode and CurrentDoctorCode become those of the patient.
const Form& frmAdmitPatient();

// One visiting doctor. The answer is in PickedDoctorCode, PickedDoctorNames, and the codes and
// descriptions of PickedAttentionType... and PickedFrequency...; Cancel leaves 0 in the first.
const Form& frmAdmitPatientDoctors();

}  // namespace bw
