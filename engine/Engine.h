#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/EngineAccess.h"
#include "engine/EngineStatement.h"
#include "engine/Refusals.h"
#include "records/RowStore.h"

namespace bw {

// What is known of rows that are inserted.
enum class RowsAre : std::uint8_t {
  unknown,  // a row that is refused raises its refusal, and rows after it may follow
  good,     // they may be stored many at a time: a refusal may come late, and costs the transaction
};

// Inserts rows of one table, quicker than a statement each. Not to be used when its engine is gone.
class BulkInsert {
 public:
  BulkInsert() = default;
  BulkInsert(const BulkInsert&) = delete;
  BulkInsert& operator=(const BulkInsert&) = delete;
  virtual ~BulkInsert() = default;

  // One value a column, in the order of the columns. A refused row raises DatabaseRefusal; the
  // rows before it stand.
  virtual void row(std::span<const Value> values) = 0;
};

enum class TransactionKind : std::uint8_t {
  ordinary,  // what another station has locked fails the statement that needs it
  writing,   // on a file, fails at once when another station keeps everybody from writing
  snapshot,  // reads as of one moment, and writes nothing
};

// What became of a commit.
struct [[nodiscard]] CommitResult {
  enum class Outcome : std::uint8_t {
    done,
    refused,  // nothing is stored; the transaction may be open still
    unknown,  // the answer was lost, and nothing tells whether it is stored
  };

  Outcome outcome = Outcome::done;
  std::optional<DatabaseRefusal> why{};  // unless it is done

  // Raises why it is not done.
  void require() const {
    if (why) throw DatabaseRefusal(*why);
  }
};

// What became of statements that were handed over together.
struct WrittenTogether {
  std::vector<std::int64_t> rows;          // matched, a number a statement that ran, in their order
  std::optional<DatabaseRefusal> refusal;  // of the one behind them
  CommitResult commit{};                   // where it was asked for and none was refused
};

enum class Then : std::uint8_t { stay, commit };

// What other stations have committed.
struct ChangesOfOthers {
  bool any = false;
  std::vector<std::string> tables{};  // none: it is not known in which
};

// Several statements in one trip, of an engine whose statements are trips to another computer.
class EngineTrips {
 public:
  EngineTrips() = default;
  EngineTrips(const EngineTrips&) = delete;
  EngineTrips& operator=(const EngineTrips&) = delete;
  virtual ~EngineTrips() = default;

  // As Engine::read, of statements that don't depend on each other. One that is refused refuses
  // all.
  virtual std::vector<std::shared_ptr<RowStore>> readAll(
      std::span<const EngineStatement> statements) = 0;
  // Executes statements within a transaction, none of which needs another's result, and with
  // `commit` ends it when all ran. Ends at the first that is refused; those before it stand. A
  // commit raises nothing.
  virtual WrittenTogether executeAll(std::span<const EngineStatement> statements, Then then) = 0;
};

// What a connection asks of a database engine. Statements arrive rewritten (see Rewriter.h).
// A refusal raises DatabaseRefusal; the transaction that was open before it is open still, unless
// inTransaction() says otherwise.
class Engine {
 public:
  explicit Engine(SqlDialect dialect) noexcept : dialect_(dialect) {}
  Engine(const Engine&) = delete;
  Engine& operator=(const Engine&) = delete;
  virtual ~Engine() = default;

  SqlDialect dialect() const noexcept { return dialect_; }
  // nullptr where statements cost no trip.
  virtual EngineTrips* trips() noexcept { return nullptr; }

  // Returns the number of rows that the statement matched, cascades not counted.
  virtual std::int64_t execute(const EngineStatement& statement) = 0;
  // Reads the result to its end. Rows that no ORDER BY asks for in another order come in that of
  // the key of the table whose columns stand in front.
  virtual std::shared_ptr<RowStore> read(const EngineStatement& statement) = 0;
  virtual std::unique_ptr<BulkInsert> prepareInsert(const std::string& table,
                                                    const std::vector<std::string>& columns,
                                                    RowsAre rows) = 0;

  virtual void begin(TransactionKind kind = TransactionKind::ordinary) = 0;
  virtual CommitResult commit() = 0;
  virtual void rollback() = 0;
  // A level within the transaction, from 2 on. It is ended by keeping or by undoing what was done
  // since it began.
  virtual void beginLevel(int level) = 0;
  virtual void keepLevel(int level) = 0;
  virtual void undoLevel(int level) = 0;
  // False also when the engine has rolled back by itself.
  virtual bool inTransaction() const = 0;

  // Relaxed, a commit outlives the process but not a power cut. Restoring it makes durable what was
  // committed until then. Not inside a transaction. After the first full wait for another station's
  // lock the next waits are short until then.
  virtual void relaxSync() = 0;
  virtual void restoreSync() = 0;
  // Since the last call, or since it was opened. Waits for nobody; raises DatabaseRefusal.
  virtual ChangesOfOthers changesOfOthers() = 0;
  virtual bool hasTable(std::string_view name) = 0;
  // What is wrong with the database itself, a sentence each; not what its rows hold.
  virtual std::vector<std::string> findDamage() = 0;

 private:
  SqlDialect dialect_;
};

// All in one trip where there are trips, one after another elsewhere.
std::vector<std::shared_ptr<RowStore>> readAll(Engine& engine,
                                               std::span<const EngineStatement> statements);

}  // namespace bw
