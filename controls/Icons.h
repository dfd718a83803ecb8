#pragma once

#include <QIcon>

namespace bw {

// A picture of the program by its name (New, Print, Paper, ...). Our own throughout: a desktop
// theme has a picture for some of the actions only, and looking for it costs a tenth of the start.
QIcon icon(const char* name);

}  // namespace bw
