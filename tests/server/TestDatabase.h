#pragma once

#include <memory>
#include <string>

#include "engine/Engine.h"

namespace bw {

// Databases for tests: in memory, or on the server whose address is in $BRANTIWELL_TEST_SERVER, so
// that the same tests run on both.

bool onServer();

// A database without tables, gone with the next one.
std::unique_ptr<Engine> emptyDatabase();

// One with the tables, saved queries and lookup rows of an office.
std::unique_ptr<Engine> emptyOffice();

// The address of the latest one on the server.
std::string addressOfDatabase();

}  // namespace bw
