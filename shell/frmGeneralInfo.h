#pragma once

#include "shell/View.h"

namespace bw {

// The welcome page.
View& frmGeneralInfo();

}  // namespace bw
