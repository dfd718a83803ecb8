#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace bw {

// Whose SQL a statement is.
enum class SqlDialect : std::uint8_t { sqlite, postgres };

using StatementValue = std::variant<std::int64_t, std::string>;

// A statement as an engine takes it.
struct EngineStatement {
  EngineStatement() = default;
  // One that shares no shape.
  EngineStatement(std::string statement) : text(std::move(statement)) {}
  EngineStatement(const char* statement) : text(statement) {}

  std::string text;
  // What statements that differ in nothing but the values behind their equals signs have in common:
  // "... WHERE PatientId = 7 AND ChargeDate = '2003-06-15'" and the one for the next charge. With a
  // ? (SQLite) or $1, $2 and so on (PostgreSQL) for each value; empty when the statement shares
  // none.
  std::string shape;
  std::vector<StatementValue> values;
};

}  // namespace bw
