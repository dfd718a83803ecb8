#pragma once

namespace bw {

// On dark desktops draws the outlines of ticks, option buttons and text boxes, which the toolkit's
// own style leaves all but invisible there. Other styles are left alone. Called once, at the start.
void installDarkOutlines();

}  // namespace bw
