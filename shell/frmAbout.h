#pragma once

#include "controls/Dialog.h"

namespace bw {

// The about box: title, version, and a button for the system information tool of the machine, if
// its settings name one.
const Form& frmAbout();

}  // namespace bw
