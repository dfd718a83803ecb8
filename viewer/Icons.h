#pragma once

#include <QIcon>

namespace bw {

// The desktop theme's icon for an action or for the program, else the one drawn for this program.
QIcon actionIcon(const char* name);

}  // namespace bw
