#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/ChangeLog.h"
#include "engine/Engine.h"
#include "engine/LookedUpQuery.h"
#include "records/RecordSet.h"

namespace bw {

// The one road to a database. Statements are the program's own texts; they are rewritten here.
// A failing statement raises RuntimeError (number `database`) and leaves the transaction alive:
// what was done before it stands, what comes after it runs.
class Connection {
 public:
  Connection() = default;  // closed
  explicit Connection(std::unique_ptr<Engine> engine);

  std::string ConnectionString;

  // Saved queries whose rows Read puts together by itself, where a statement allows it.
  std::span<const LookedUpQuery> lookedUpQueries;

  // Opens what ConnectionString names: its data source, and where a workgroup file guards it that
  // file and its account. Raises error `database` when one of them is missing or refused.
  void Open(EngineAccess access = EngineAccess::readWrite);
  bool isOpen() const noexcept { return engine_ != nullptr; }

  // Transactions nest. Commit and Rollback end the innermost level only; what an inner commit
  // kept is undone by an outer rollback. A commit that fails rolls its level back. Without an open
  // transaction they raise `noTransaction`. When the engine has rolled back by itself (a full
  // disk), statements and commits fail until the last level is ended, and rollbacks succeed.
  // Returns the new level, from 1. The kind is that of the outermost one.
  int BeginTrans(TransactionKind kind = TransactionKind::ordinary);
  void CommitTrans();
  void RollbackTrans();
  int transactionLevel() const noexcept { return level_; }

  // Returns the number of rows that the statement matched. The refusal of a statement with an
  // apostrophe in a text says below its sentence how to go on. Where the database keeps a log of
  // changes, the statement's line is stored with it or neither is.
  std::int64_t Execute(std::string_view statement);
  // The same for a statement with texts as they were typed: they reach no row but the statement's
  // own (PlainWrite.h).
  std::int64_t Write(std::string_view statement);
  RecordSetRef Read(std::string_view statement, LockType lock = LockType::optimistic);

  // Statements within a transaction as Write takes them, none of which needs another's result, in
  // one trip where there are trips: then `tap` hears all before it. Ends at the first that is
  // refused; those before it stand, and the transaction is open. `commit` ends the level when all
  // ran, as CommitTrans does.
  struct Written {
    std::vector<std::int64_t> rows;       // matched, a number a statement that ran
    std::optional<RuntimeError> refusal;  // of the statement behind them, or of the commit
    bool isEnded = false;                 // the level, by a commit that is done or refused
  };
  Written WriteAll(std::span<const std::string> statements, Then then = Then::stay);

  // See ReadAhead.
  void readAhead(std::span<const std::string> statements);
  void forgetAhead() noexcept { ahead_.clear(); }

  // What other stations have committed since the last call, or since it was opened. Waits for
  // nobody. What cannot be told now, the next call tells.
  ChangesOfOthers changesOfOthers();

  // See RelaxedSync. False when there is no connection that could be relaxed now, or a transaction
  // is open.
  bool relaxSync();
  void restoreSync();

  // Whether the connection to a server was found lost by the latest statement or commit that
  // reached for it: a loop over records ends then, since each would be told the same. The next
  // statement outside a transaction connects anew.
  bool isLost() const noexcept { return lost_; }

  // Hears every statement as the program wrote it, before it runs; also BEGIN, COMMIT, ROLLBACK.
  std::function<void(std::string_view)> tap;

 private:
  Engine& engine();
  std::int64_t run(std::string_view statement, bool isTyped);
  Written writeEach(std::span<const std::string> statements);
  Written writeTogether(EngineTrips& trips, std::span<const std::string> statements, Then then);
  std::vector<EngineStatement> rewriteAll(std::span<const std::string> statements,
                                          std::optional<RuntimeError>& refusal);
  void endBy(const CommitResult& commit);
  template <class Commit>
  void end(Written& written, Commit commit);
  void hear(std::string_view statement) const;
  void commitLevel();
  std::shared_ptr<RowStore> readRows(std::string_view statement);
  void requireLevel() const;
  void requireAlive();
  template <class Work>
  auto reaching(Work work);

  std::unique_ptr<Engine> engine_;
  std::unique_ptr<ChangeLog> changeLog_;  // where the database keeps one
  std::map<std::string, std::shared_ptr<RowStore>, std::less<>> ahead_;  // by statement
  int level_ = 0;
  bool lost_ = false;
};

}  // namespace bw
