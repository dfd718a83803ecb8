#pragma once

#include "controls/Dialog.h"

namespace bw {

// Asks whether to post, with which lot number, and whether to print. What goes in and comes out are
// the Post... members of the charges view; left by any way but "Post", the count is 0.
const Form& frmPostCharges();

}  // namespace bw
