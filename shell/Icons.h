#pragma once

#include <QIcon>

namespace bw {

// A picture of the program by its name (New, Print, Paper, ...): the desktop theme's where it has
// the action, else the program's own.
QIcon icon(const char* name);

}  // namespace bw
