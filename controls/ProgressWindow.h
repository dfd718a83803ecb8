#pragma once

namespace bw {

// Lets long works show a window with a bar (see LongWork). While it stands the other windows are
// painted, can be moved and take no input; it cannot be closed by hand.
void installProgressWindow();

}  // namespace bw
