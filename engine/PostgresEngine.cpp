#include "engine/PostgresEngine.h"

#include <charconv>

#include "engine/EngineTransaction.h"
#include "engine/PostgresCommit.h"
#include "engine/PostgresKeys.h"
#include "engine/PostgresLink.h"
#include "engine/PostgresRefusals.h"
#include "engine/PostgresRows.h"
#include "engine/PostgresShapes.h"
#include "text/BrokenOff.h"
#include "text/Text.h"

namespace bw {
namespace {

constexpr const char* kSavepoint = "SAVEPOINT bw_statement";
constexpr const char* kRelease = "RELEASE bw_statement";
constexpr const char* kUndo = "ROLLBACK TO bw_statement; RELEASE bw_statement";

void ignore(const PGresult&) {}

bool startsWith(std::string_view statement, std::string_view word) {
  const std::size_t from = statement.find_first_not_of(" \t\r\n");
  return from != std::string_view::npos && sameName(statement.substr(from, word.size()), word);
}

class PostgresEngine final : public Engine {
 public:
  PostgresEngine(const std::string& address, const PostgresOptions& options)
      : Engine(SqlDialect::postgres), options_(options), link_(address, options) {}

  std::int64_t execute(const EngineStatement& statement) override;
  std::shared_ptr<RowStore> read(const EngineStatement& statement) override;
  std::unique_ptr<BulkInsert> prepareInsert(const std::string& table,
                                            const std::vector<std::string>& columns,
                                            RowsAre rows) override;

  void begin(TransactionKind kind) override;
  CommitResult commit() override;
  void rollback() override;
  void beginLevel(int level) override { wait(concat("SAVEPOINT s", level)); }
  void keepLevel(int level) override { wait(concat("RELEASE s", level)); }
  void undoLevel(int level) override {
    wait(concat("ROLLBACK TO s", level));
    keepLevel(level);
  }
  bool inTransaction() const override { return open_; }

  void relaxSync() override;
  void restoreSync() override;
  bool hasTable(std::string_view name) override;
  std::vector<std::string> findDamage() override;

  // Puts a statement of which nothing is expected among those that wait.
  void queue(const EngineStatement& statement);

 private:
  void requireUp();
  void wait(std::string text) { waiting_.push_back({.text = std::move(text)}); }
  void sendWaiting();
  std::vector<PostgresCommand> takeWaiting();
  void run(const EngineStatement& statement, const PostgresLink::OnResult& onResult);
  std::optional<PostgresFailure> tryRun(const EngineStatement& statement,
                                        const PostgresLink::OnResult& onResult);
  void recover();
  void close() noexcept;
  EngineStatement inWholeOrder(EngineStatement statement);
  std::int64_t executeAlone(const EngineStatement& statement);
  CommitResult sendCommit();
  [[noreturn]] void tellLoss(const DatabaseRefusal& loss);

  PostgresOptions options_;
  PostgresLink link_;
  PostgresShapes shapes_;
  PostgresKeys keys_;
  PostgresCommits commits_;
  // What begins and ends transactions and levels waits for the next statement and goes with it.
  std::vector<PostgresCommand> waiting_;
  bool open_ = false;  // a transaction, also one that the server has not heard of yet
  TransactionKind kind_ = TransactionKind::ordinary;
  bool writes_ = false;  // the transaction
  bool relaxed_ = false;
  int relaxedSession_ = 0;   // the latest that was told
  bool hasRelaxed_ = false;  // something was committed since
};

void PostgresEngine::close() noexcept {
  open_ = false;
  writes_ = false;
  if (!waiting_.empty()) shapes_.forget();  // some are prepared by what is not sent
  waiting_.clear();
}

// What was committed with relaxed syncing goes with a server that crashes.
void PostgresEngine::tellLoss(const DatabaseRefusal& loss) {
  close();
  if (std::exchange(hasRelaxed_, false)) throw DatabaseRefusal(Refusal::lostSome);
  throw loss;
}

void PostgresEngine::requireUp() {
  if (open_ && link_.inTransaction()) return;
  try {
    link_.requireUp();
  } catch (const DatabaseRefusal&) {
    tellLoss(DatabaseRefusal(Refusal::lost));
  }
  if (relaxed_ && std::exchange(relaxedSession_, link_.session()) != link_.session())
    link_.query("SET synchronous_commit = off");
}

std::vector<PostgresCommand> PostgresEngine::takeWaiting() { return std::exchange(waiting_, {}); }

// Within a transaction. Rows of several tables keep their order.
void PostgresEngine::queue(const EngineStatement& statement) {
  constexpr std::size_t kMostWaiting = 200;
  requireUp();
  shapes_.add(waiting_, statement, link_.session());
  writes_ = true;
  if (waiting_.size() >= kMostWaiting) sendWaiting();
}

void PostgresEngine::sendWaiting() {
  try {
    const std::vector<PostgresCommand> commands = takeWaiting();
    const auto failure = link_.run(commands, commands.size() - 1, ignore);
    if (!failure) return;
    recover();
    throw refusalOf(link_, *failure, "INSERT");
  } catch (const DatabaseRefusal& refusal) {
    if (refusal.why() == Refusal::lost) tellLoss(refusal);
    throw;
  }
}

// A statement within a transaction stands between a savepoint and its release, since the server
// gives up a transaction in which a statement fails. All go in one trip.
std::optional<PostgresFailure> PostgresEngine::tryRun(const EngineStatement& statement,
                                                      const PostgresLink::OnResult& onResult) {
  std::vector<PostgresCommand> commands = takeWaiting();
  const bool isGuarded = open_ && kind_ != TransactionKind::snapshot;
  if (isGuarded) commands.push_back({.text = kSavepoint});
  shapes_.add(commands, statement, link_.session());
  const std::size_t main = commands.size() - 1;
  if (isGuarded) commands.push_back({.text = kRelease});
  std::optional<PostgresFailure> failure = link_.run(commands, main, onResult);
  if (failure) shapes_.failed(statement, commands[failure->command]);
  return failure;
}

// After a failure: back to where the statement began, or out of a transaction that cannot go on.
void PostgresEngine::recover() {
  if (!link_.hasFailedTransaction()) {
    if (open_ && !link_.inTransaction()) close();
    return;
  }
  if (kind_ != TransactionKind::snapshot) {
    try {
      link_.query(kUndo);
      return;
    } catch (const DatabaseRefusal& refusal) {
      if (refusal.why() == Refusal::lost) throw;
    }
  }
  close();
  link_.query("ROLLBACK");
}

void PostgresEngine::run(const EngineStatement& statement, const PostgresLink::OnResult& onResult) {
  constexpr std::string_view kPlanIsOld = "0A000";
  if (statement.text.empty()) throw DatabaseRefusal(Refusal::statement, "The statement is empty.");
  requireUp();
  try {
    std::optional<PostgresFailure> failure = tryRun(statement, onResult);
    if (failure) recover();
    if (failure && failure->state == kPlanIsOld) {
      shapes_.forget();
      failure = tryRun(statement, onResult);
      if (failure) recover();
    }
    if (failure) throw refusalOf(link_, *failure, statement.text);
  } catch (const DatabaseRefusal& refusal) {
    if (refusal.why() == Refusal::lost) tellLoss(refusal);
    throw;
  } catch (const BrokenOff&) {
    close();
    throw;
  }
}

std::int64_t PostgresEngine::execute(const EngineStatement& statement) {
  if (startsWith(statement.text, "SELECT")) {
    run(statement, ignore);
    return 0;
  }
  if (!open_) return executeAlone(statement);
  std::int64_t rows = 0;
  run(statement, [&rows](const PGresult& result) {
    // The interface of the library takes no constant here, and changes nothing.
    const std::string_view count = PQcmdTuples(const_cast<PGresult*>(&result));
    std::from_chars(count.data(), count.data() + count.size(), rows);
  });
  writes_ = true;
  for (const char* word : {"CREATE", "ALTER", "DROP"})
    if (startsWith(statement.text, word)) keys_.forget();
  return rows;
}

// So that it is known what became of it when the answer is lost.
std::int64_t PostgresEngine::executeAlone(const EngineStatement& statement) {
  EngineTransaction transaction(*this);
  const std::int64_t rows = execute(statement);
  transaction.commit();
  return rows;
}

// Rows that are equal in what a statement orders by come in the order of their key.
EngineStatement PostgresEngine::inWholeOrder(EngineStatement statement) {
  requireUp();
  const std::string key = keys_.behindItsOrder(link_, statement.text);
  statement.text += key;
  if (!statement.shape.empty()) statement.shape += key;
  return statement;
}

std::shared_ptr<RowStore> PostgresEngine::read(const EngineStatement& statement) {
  const bool isOrdered = saysAnOrder(statement.text);
  PostgresRows rows;
  const auto take = [&rows](const PGresult& result) { rows.take(result); };
  if (isOrdered)
    run(inWholeOrder(statement), take);
  else
    run(statement, take);
  std::shared_ptr<RowStore> store = rows.finish();
  if (!store) return std::make_shared<RowStore>();
  if (!isOrdered) keys_.order(link_, rows, *store);
  return store;
}

void PostgresEngine::begin(TransactionKind kind) {
  close();
  open_ = true;
  kind_ = kind;
  wait(kind == TransactionKind::snapshot ? "BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY"
                                         : "BEGIN");
}

CommitResult PostgresEngine::sendCommit() {
  std::vector<PostgresCommand> commands = takeWaiting();
  if (writes_ && link_.hasDesks()) commits_.addStep(commands);
  commands.push_back({.text = "COMMIT"});
  bool isCommitted = false;
  const auto failure = link_.run(commands, commands.size() - 1, [&](const PGresult& result) {
    isCommitted = std::string_view(PQcmdStatus(const_cast<PGresult*>(&result))) == "COMMIT";
  });
  if (link_.inTransaction()) link_.query("ROLLBACK");
  if (failure)
    return {.outcome = CommitResult::Outcome::refused, .why = refusalOf(link_, *failure, "")};
  // The end of a transaction that has failed is told in the same way as a commit.
  if (isCommitted) return {};
  return {.outcome = CommitResult::Outcome::refused, .why = DatabaseRefusal(Refusal::rolledBack)};
}

CommitResult PostgresEngine::commit() {
  const bool writes = writes_;
  const bool isHeardOf = link_.isUp() && (link_.inTransaction() || writes);
  const PostgresLink::Backend backend = link_.backend();
  CommitResult result;
  try {
    if (isHeardOf) result = sendCommit();
    hasRelaxed_ = hasRelaxed_ || (relaxed_ && writes);
  } catch (const DatabaseRefusal& loss) {
    if (!writes)
      result = {.outcome = CommitResult::Outcome::refused, .why = loss};
    else if (!link_.hasDesks())
      result = {.outcome = CommitResult::Outcome::unknown,
                .why = DatabaseRefusal(Refusal::unknown)};
    else
      result = commits_.find(link_, backend, options_.returnTimeout);
    if (result.why && std::exchange(hasRelaxed_, false))
      result.why = DatabaseRefusal(Refusal::lostSome);
  }
  close();
  return result;
}

void PostgresEngine::rollback() {
  const bool isHeardOf = link_.isUp() && link_.inTransaction();
  close();
  if (!isHeardOf) return;
  try {
    link_.query("ROLLBACK");
  } catch (const DatabaseRefusal& refusal) {
    if (refusal.why() != Refusal::lost) throw;  // the server rolls back what it lost
  }
}

void PostgresEngine::relaxSync() {
  hasRelaxed_ = false;
  relaxed_ = true;
  relaxedSession_ = 0;
  requireUp();
}

// One more commit that is synced makes those before it durable, since the log is one. It must have
// something to write: an empty one is not synced.
void PostgresEngine::restoreSync() {
  relaxed_ = false;
  try {
    requireUp();
    link_.query(
        "RESET synchronous_commit; BEGIN; SELECT pg_logical_emit_message(true, 'bw_sync', '');"
        "COMMIT");
    hasRelaxed_ = false;
  } catch (const DatabaseRefusal& loss) {
    tellLoss(loss);
  }
}

bool PostgresEngine::hasTable(std::string_view name) {
  return read(concat("SELECT 1 FROM pg_class WHERE oid = to_regclass('", name, "')"))->rowCount() >
         0;
}

std::vector<std::string> PostgresEngine::findDamage() {
  requireUp();
  const PostgresResult failures = link_.query(
      "SELECT coalesce(checksum_failures, 0) FROM pg_stat_database"
      " WHERE datname = current_database()");
  const std::string_view count = PQgetvalue(failures.get(), 0, 0);
  if (count == "0") return {};
  return {concat("The server has met ", count, " damaged pages in this database.")};
}

// The text of a value as the server reads it; nothing for no value.
std::optional<std::string> textFor(const Value& value) {
  if (isNull(value)) return std::nullopt;
  if (const auto* date = std::get_if<Date>(&value)) return isoDate(*date);
  if (const auto* time = std::get_if<TimeOfDay>(&value)) return isoTime(*time);
  if (const auto* moment = std::get_if<DateTime>(&value)) return isoDateTime(*moment);
  return textOf(value);
}

// A row a trip, so that the one that is refused is known, unless they are good. Its statement
// shares the shape of the others; a row that lacks values has another.
class PostgresBulkInsert final : public BulkInsert {
 public:
  PostgresBulkInsert(PostgresEngine& engine, const std::string& table,
                     const std::vector<std::string>& columns, RowsAre rows)
      : engine_(engine), rows_(rows),
        start_(concat("INSERT INTO ", table, " (",
                      joined(columns, ", ", [](const std::string& one) { return one; }),
                      ") VALUES (")) {}

  void row(std::span<const Value> values) override {
    EngineStatement statement;
    std::string places;
    for (const Value& value : values) {
      if (!places.empty()) places += ", ";
      const std::optional<std::string> text = textFor(value);
      if (text) statement.values.emplace_back(*text);
      places += text ? concat("$", statement.values.size()) : "NULL";
    }
    statement.text = statement.shape = concat(start_, places, ")");
    if (rows_ == RowsAre::good && engine_.inTransaction())
      engine_.queue(statement);
    else
      engine_.execute(statement);
  }

 private:
  PostgresEngine& engine_;
  RowsAre rows_;
  std::string start_;
};

std::unique_ptr<BulkInsert> PostgresEngine::prepareInsert(const std::string& table,
                                                          const std::vector<std::string>& columns,
                                                          RowsAre rows) {
  return std::make_unique<PostgresBulkInsert>(*this, table, columns, rows);
}

}  // namespace

std::unique_ptr<Engine> openPostgres(const std::string& address, const PostgresOptions& options) {
  return std::make_unique<PostgresEngine>(address, options);
}

}  // namespace bw
