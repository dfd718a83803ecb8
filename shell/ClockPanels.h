#pragma once

class QStatusBar;

namespace bw {

// The status bar's panels: a wide one without text, the date, and the time to the minute.
void addClockPanels(QStatusBar* bar);

}  // namespace bw
