#pragma once

#include "controls/Dialog.h"

namespace bw {

// The charge editor. CurrentChargeDate kNewCharge means a new charge, for CurrentPatientId (0: to
// be chosen); otherwise it works on the charge of CurrentPatientId, CurrentChargeDate and
// CurrentChargeTime. After an Ok these hold the key of the stored charge, and RecordSaved is true.
const Form& frmEditCharge();

}  // namespace bw
