#pragma once

#include "controls/Dialog.h"

namespace bw {

// The patient editor. Works on CurrentPatientId, 0 for a new patient.
const Form& frmEditPatient();

}  // namespace bw
