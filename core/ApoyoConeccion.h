#pragma once

#include <string>

#include "engine/Connection.h"

namespace bw {

// What a session on that database and the workgroup file beside it is opened with.
std::string connectionStringOf(const std::string& path);

// Opens the one session, on DatabasePath and the workgroup file beside it. False when it was open
// already (`message` is left as it is), and false with `message` filled when it failed. The
// message shows the whole connection string, so that whoever helps the office sees both paths.
bool ConnectDatabase(std::string& message, EngineAccess access = EngineAccess::readWrite);

// What to do about the last failure of opening, where it is told better than by the paths; "" when
// there is nothing to add to them.
const std::string& connectionAdvice();

// A new connection in `connection`, with that connection string.
bool SessionCreate(Connection& connection, const std::string& connectionString);

// Opens it; false when that failed, the reason is not told.
bool SessionOpen(Connection& connection, EngineAccess access = EngineAccess::readWrite);

}  // namespace bw
