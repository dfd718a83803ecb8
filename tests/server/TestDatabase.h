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

// What the engine says of a column that is not there.
std::string noSuchColumn(const std::string& name);

// The statement behind which rows may name others that do not exist.
std::string relationsOff();

// Ends the connections to the latest database on the server, but for this one's own.
void cutConnections();

// The address of the latest one on the server.
std::string addressOfDatabase();

}  // namespace bw
