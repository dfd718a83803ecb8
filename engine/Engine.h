#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "engine/EngineStatement.h"
#include "records/RowStore.h"

namespace bw {

// Inserts rows of one table, quicker than a statement each. Not to be used when its engine is gone.
class BulkInsert {
 public:
  BulkInsert() = default;
  BulkInsert(const BulkInsert&) = delete;
  BulkInsert& operator=(const BulkInsert&) = delete;
  virtual ~BulkInsert() = default;

  // One value a column, in the order of the columns. A refused row raises error `database`; the
  // rows before it stand, and rows after it may follow.
  virtual void row(std::span<const Value> values) = 0;
};

// What a connection asks of a database engine. Statements arrive rewritten (see Rewriter.h).
// A refusal raises error `database` whose text is a sentence for the user; the transaction that
// was open before it is open still, unless inTransaction() says otherwise.
class Engine {
 public:
  Engine() = default;
  Engine(const Engine&) = delete;
  Engine& operator=(const Engine&) = delete;
  virtual ~Engine() = default;

  // Returns the number of rows that the statement matched, cascades not counted.
  virtual std::int64_t execute(const EngineStatement& statement) = 0;
  // Reads the result to its end.
  virtual std::shared_ptr<RowStore> read(const EngineStatement& statement) = 0;
  virtual std::unique_ptr<BulkInsert> prepareInsert(const std::string& table,
                                                    const std::vector<std::string>& columns) = 0;
  // Relaxed, a commit outlives the process but not a power cut. Restoring it makes durable what was
  // committed until then. Not inside a transaction.
  virtual void relaxSync() = 0;
  virtual void restoreSync() = 0;
  // What is wrong with the file itself, a sentence each; not what its rows hold.
  virtual std::vector<std::string> findDamage() = 0;
  // False also when the engine has rolled back by itself.
  virtual bool inTransaction() const = 0;
};

struct SqliteOptions {
  std::chrono::milliseconds busyTimeout{5000};
};

// Opens an existing file, read-write; it is never created. Missing, damaged or refused: raises
// error `database`. The path ":memory:" gives an empty database of its own.
std::unique_ptr<Engine> openSqlite(const std::string& path, const SqliteOptions& options = {});

// Makes an empty database file, readable and writable by its owner alone, and opens it.
// A file that is there already, or one that cannot be made: raises error `database`.
std::unique_ptr<Engine> createSqlite(const std::string& path, const SqliteOptions& options = {});

}  // namespace bw
