#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "engine/LookedUpQuery.h"

namespace bw {

// "SELECT * FROM name [WHERE conditions]" of a looked-up query, the conditions being criteria.
struct LookedUpStatement {
  // The conditions as they are asked of the base alone: "" for all rows, " WHERE ..." otherwise.
  // Nothing when they cannot be, and for the few rows under one value of the key's first column: a
  // statement for each table costs more than the engine's look-ups.
  std::optional<std::string> ofBase;
};

// Nothing for a statement of another shape.
std::optional<LookedUpStatement> parseLookedUp(const LookedUpQuery& query,
                                               std::string_view statement);

}  // namespace bw
