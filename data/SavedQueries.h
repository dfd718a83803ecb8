#pragma once

#include <memory>
#include <span>

#include "engine/Connection.h"

namespace bw {

// The saved queries that are described as a table and look-ups (see LookedUpQuery.h); the others
// are texts for the engine.
std::span<const LookedUpQuery> lookedUpQueries();

// A connection to an office's database that knows them.
Connection officeConnection(std::unique_ptr<Engine> engine);

}  // namespace bw
