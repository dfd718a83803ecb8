#pragma once

#include <set>
#include <string>
#include <string_view>

#include "engine/Engine.h"
#include "engine/PostgresLink.h"

namespace bw {

// What stations tell each other of the tables that they change.
class PostgresNews {
 public:
  // A statement of the open transaction. What changes no rows of a table is passed over.
  void note(std::string_view statement);
  // The tables of its statements, parted by blanks.
  std::string noted() const;
  void forget() noexcept { noted_.clear(); }

  // What the others have told since the last call. A new connection may have missed some.
  ChangesOfOthers heard(PostgresLink& link);

 private:
  std::set<std::string> noted_;
  int session_ = 0;
};

}  // namespace bw
