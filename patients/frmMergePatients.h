#pragma once

#include "controls/Dialog.h"

namespace bw {

// Moves the charges of the patients in MergeSelection to the one of them that the user picks, and
// nothing else: the others stay, for the user to delete. The dialog stays open after a merge.
// RecordSaved is true afterwards only when charges were asked to be moved and the dialog was closed
// by other means than Cancel.
const Form& frmMergePatients();

}  // namespace bw
