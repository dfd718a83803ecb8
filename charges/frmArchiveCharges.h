#pragma once

#include "controls/Dialog.h"

namespace bw {

// Asks for a date and archives what is older (see Archiving.h).
const Form& frmArchiveCharges();

}  // namespace bw
