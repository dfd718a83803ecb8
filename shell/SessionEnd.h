#pragma once

namespace bw {

// From now on SIGTERM, SIGINT and SIGHUP, as they come when the user's session ends, leave the
// program as its close box does, so that settings are stored. Call once, with an application.
void installSessionEnd();

// Closes what is open, dialogs first: each by its close box, with nothing of it stored. A work that
// is under way runs to its end before. Returns at once; the windows go with the events that follow.
void endSession();

}  // namespace bw
