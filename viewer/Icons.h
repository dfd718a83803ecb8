#pragma once

#include <QIcon>

namespace bw {

// The icon of an action or of the program, by the name that desktop themes give it. All of one
// hand: themes have some of them only, and not for every background.
QIcon actionIcon(const char* name);

}  // namespace bw
