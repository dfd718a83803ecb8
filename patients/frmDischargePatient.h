#pragma once

#include "controls/Dialog.h"

namespace bw {

// Shows where CurrentPatientId lies and ends the admission. It answers nothing: the caller reads
// the row again. The visiting doctors stay for the next admission.
// CurrentFacilityCode, CurrentWardCode and CurrentDoctorCode become those of the patient.
const Form& frmDischargePatient();

}  // namespace bw
