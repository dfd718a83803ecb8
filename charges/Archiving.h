#pragma once

#include <string>

#include "text/Moment.h"

namespace bw {

// Sets status 3 on the charges of all patients whose date of care is earlier than `until`, except
// each patient's latest among those not archived yet. A charge that fails is told in a message, and
// the run goes on. CurrentPatientId is left at the last patient.
// False when the charges could not be read, the connection was lost, or what was done may be lost
// yet: `message` says what, and what to do.
bool archiveCharges(Date until, std::string& message);

}  // namespace bw
