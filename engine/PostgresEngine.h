#pragma once

#include <memory>
#include <string>

#include "engine/Engine.h"
#include "engine/PostgresOptions.h"

namespace bw {

// Connects to a database on a server (see PostgresAddress.h). Raises DatabaseRefusal
// (notConnected). A connection that is lost is told by the statement that meets it; the next
// statement outside a transaction connects anew.
std::unique_ptr<Engine> openPostgres(const std::string& address,
                                     const PostgresOptions& options = {});

}  // namespace bw
