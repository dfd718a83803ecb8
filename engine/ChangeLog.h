#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "engine/Engine.h"

namespace bw {

// The table in which a database keeps who changed what: Number, Moment (local time), UserName,
// Station, RowCount (matched by the statement) and Statement (as the program wrote it). A database
// that keeps none has no such table, or has the second one beside it as a sign.
inline constexpr const char* kChangeLogTable = "ChangeLog";
inline constexpr const char* kChangeLogStopped = "ChangeLogStopped";

// Writes a line for each statement that changes rows.
class ChangeLog {
 public:
  // Null when the database keeps none. Raises DatabaseRefusal.
  static std::unique_ptr<ChangeLog> of(Engine& engine);
  explicit ChangeLog(Engine& engine);

  // Executes a statement and writes its line in one transaction: one of its own outside of any
  // (level 0), a level within the open one otherwise. A line that cannot be written fails the
  // statement. Returns the rows that the statement matched. Raises DatabaseRefusal.
  std::int64_t execute(const EngineStatement& statement, std::string_view written, int level);

 private:
  void begin(int level);
  void keep(int level);
  void undo(int level);
  void write(std::string_view statement, std::int64_t rows);

  Engine& engine_;
  std::string user_;
  std::string station_;
  std::unique_ptr<BulkInsert> lines_;
};

}  // namespace bw
