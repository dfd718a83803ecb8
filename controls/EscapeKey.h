#pragma once

#include <functional>

namespace bw {

// Begins to look for Esc in the program's windows. What it returns says, each time it is asked,
// whether Esc has been pressed since, for as long as it lives. It runs no event loop and takes
// nothing away: every key comes to its window afterwards, Esc as well. Known under X11; elsewhere
// no press is seen. Tests put their own in its place.
using PressedSince = std::function<bool()>;
std::function<PressedSince()>& watchEscape();

}  // namespace bw
