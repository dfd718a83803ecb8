#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

#include "platform/RowStore.h"

namespace bw {

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
  virtual std::int64_t execute(const std::string& statement) = 0;
  // Reads the result to its end.
  virtual std::shared_ptr<RowStore> read(const std::string& statement) = 0;
  // False also when the engine has rolled back by itself.
  virtual bool inTransaction() const = 0;
};

struct SqliteOptions {
  std::chrono::milliseconds busyTimeout{5000};
};

// Opens an existing file, read-write; it is never created. Missing, damaged or refused: raises
// error `database`. The path ":memory:" gives an empty database of its own.
std::unique_ptr<Engine> openSqlite(const std::string& path, const SqliteOptions& options = {});

}  // namespace bw
