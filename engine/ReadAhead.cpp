#include "engine/ReadAhead.h"

#include "engine/Connection.h"

namespace bw {

ReadAhead::ReadAhead(Connection& connection, std::span<const std::string> statements)
    : connection_(connection) {
  connection_.readAhead(statements);
}

ReadAhead::~ReadAhead() { connection_.forgetAhead(); }

}  // namespace bw
