#pragma once

namespace bw {

// The program's entry: reads where the database lies, opens the session, shows the title window,
// makes and loads the main window. False when there is no session: the message was shown, and no
// window exists.
bool start();

}  // namespace bw
