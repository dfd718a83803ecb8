#include "engine/PostgresShapes.h"

#include <utility>

#include "text/Text.h"

namespace bw {
namespace {

constexpr std::size_t kMostShapes = 200;

// With the kinds of the values: the same place may take a number once and a text another time.
std::string keyOf(const EngineStatement& statement) {
  std::string key = statement.shape;
  for (const StatementValue& value : statement.values)
    key += std::holds_alternative<std::int64_t>(value) ? '\1' : '\2';
  return key;
}

bool isShared(const EngineStatement& statement) {
  return !statement.shape.empty() && statement.shape.find_first_of("<>") == std::string::npos;
}

}  // namespace

void PostgresShapes::add(std::vector<PostgresCommand>& commands, const EngineStatement& statement,
                         int session) {
  if (std::exchange(session_, session) != session) names_.clear();
  if (!isShared(statement)) return commands.push_back({.text = statement.text});
  if (names_.size() > kMostShapes) {
    names_.clear();
    commands.push_back({.text = "DEALLOCATE ALL"});
  }
  const auto [shape, isNew] = names_.try_emplace(keyOf(statement));
  const bool runsAsItStands = statement.text != statement.shape;
  if (isNew && runsAsItStands) return commands.push_back({.text = statement.text});
  if (shape->second.empty()) {
    shape->second = concat("s", ++count_);
    commands.push_back(
        {.text = statement.shape, .name = shape->second, .values = statement.values});
  }
  commands.push_back({.name = shape->second, .values = statement.values});
}

void PostgresShapes::drop(std::span<const PostgresCommand> commands) {
  for (const PostgresCommand& command : commands)
    if (!command.name.empty() && !command.text.empty())
      std::erase_if(names_, [&](const auto& shape) { return shape.second == command.name; });
}

}  // namespace bw
