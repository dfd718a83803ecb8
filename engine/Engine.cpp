#include "engine/Engine.h"

namespace bw {

std::vector<std::shared_ptr<RowStore>> readAll(Engine& engine,
                                               std::span<const EngineStatement> statements) {
  if (EngineTrips* trips = engine.trips()) return trips->readAll(statements);
  std::vector<std::shared_ptr<RowStore>> all;
  all.reserve(statements.size());
  for (const EngineStatement& statement : statements) all.push_back(engine.read(statement));
  return all;
}

}  // namespace bw
