#pragma once

#include "controls/Dialog.h"

namespace bw {

// Offers the entries of PrintDialogItems under PrintDialogCaption and puts the number of the chosen
// one into PrintDialogChoice, 0 for none.
const Form& frmPrintGeneral();

}  // namespace bw
