#pragma once

#include "lists/View.h"

namespace bw {

// The welcome page.
View& frmGeneralInfo();

}  // namespace bw
