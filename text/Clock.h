#pragma once

#include "text/Moment.h"

namespace bw {

// Local time of the computer, cut to whole seconds.
DateTime systemNow();

}  // namespace bw
