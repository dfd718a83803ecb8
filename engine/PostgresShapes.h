#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "engine/PostgresLink.h"

namespace bw {

// The shapes of statements that a session has met (see EngineStatement.h). From the second time on
// those of a shape share a prepared statement; the first one runs as it stands, since its values
// may matter to its plan. So do all whose values bound a range.
class PostgresShapes {
 public:
  // Puts what runs a statement behind the commands that a trip has already.
  void add(std::vector<PostgresCommand>& commands, const EngineStatement& statement, int session);
  // These commands did not run: what they prepare is not there.
  void drop(std::span<const PostgresCommand> commands);
  // A statement's tables have changed: all are prepared anew.
  void forget() noexcept { names_.clear(); }

 private:
  std::unordered_map<std::string, std::string> names_;  // by shape; "" once it was met
  int session_ = 0;
  int count_ = 0;
};

}  // namespace bw
