#include "engine/PostgresSession.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "engine/PostgresRefusals.h"
#include "engine/ServerNames.h"
#include "text/BrokenOff.h"
#include "text/Text.h"

namespace bw {
namespace {

constexpr const char* kBegin = "BEGIN";
constexpr const char* kSavepoint = "SAVEPOINT bw_statement";
constexpr const char* kRelease = "RELEASE bw_statement";
constexpr const char* kUndo = "ROLLBACK TO bw_statement; RELEASE bw_statement";

constexpr const char* kForgetOldDesks =
    "DELETE FROM bw_desks WHERE token IN (SELECT token FROM bw_desks"
    " WHERE used < now() - interval '2 days' FOR UPDATE SKIP LOCKED)";

void ignore(std::size_t, const PGresult&) {}

// The interface of the library takes no constant in these two, and changes nothing.
std::int64_t rowsOf(const PGresult& result) {
  std::int64_t rows = 0;
  const std::string_view count = PQcmdTuples(const_cast<PGresult*>(&result));
  std::from_chars(count.data(), count.data() + count.size(), rows);
  return rows;
}

bool isCommit(const PGresult& result) {
  return std::string_view(PQcmdStatus(const_cast<PGresult*>(&result))) == "COMMIT";
}

}  // namespace

void PostgresSession::close() noexcept {
  open_ = false;
  writes_ = false;
  shapes_.drop(waiting_);  // what is not sent prepares nothing
  waiting_.clear();
  if (!relaxed_) news_.forget();
}

// What was committed with relaxed syncing goes with a server that crashes.
void PostgresSession::tellLoss(const DatabaseRefusal& loss) {
  close();
  if (std::exchange(hasRelaxed_, false)) throw DatabaseRefusal(Refusal::lostSome);
  throw loss;
}

void PostgresSession::requireUp() {
  if (open_ && link_.inTransaction()) return;
  try {
    link_.requireUp();
  } catch (const DatabaseRefusal&) {
    tellLoss(DatabaseRefusal(Refusal::lost));
  }
  if (relaxed_ && std::exchange(relaxedSession_, link_.session()) != link_.session())
    link_.query(concat("SET synchronous_commit = off; SET lock_timeout = ", lockWait_.count()));
}

// Whoever holds the lock keeps it longer than a statement takes: a loop of hundreds of rows must
// not wait in full for each. The next transaction sets it, since this one may be rolled back.
void PostgresSession::heedLock(const DatabaseRefusal& refusal) {
  constexpr std::chrono::milliseconds kShort{20};
  if (!relaxed_ || refusal.why() != Refusal::locked || lockWait_ <= kShort) return;
  lockWait_ = kShort;
  relaxedSession_ = 0;
}

// Rows of several tables keep their order.
void PostgresSession::queue(const EngineStatement& statement) {
  constexpr std::size_t kMostWaiting = 200;
  requireUp();
  shapes_.add(waiting_, statement, link_.session());
  writes_ = true;
  news_.note(statement.text);
  if (waiting_.size() >= kMostWaiting) sendWaiting();
}

void PostgresSession::sendWaiting() {
  try {
    const std::vector<PostgresCommand> commands = takeWaiting();
    const auto failure = link_.run(commands, ignore);
    if (!failure) return;
    shapes_.drop(std::span(commands).subspan(failure->command));
    recover(false);
    throw refusalOf(link_, *failure, "INSERT");
  } catch (const DatabaseRefusal& refusal) {
    if (refusal.why() == Refusal::lost) tellLoss(refusal);
    throw;
  }
}

// The first step of a station clears away those of stations that have not stored for long.
void PostgresSession::addCommit(std::vector<PostgresCommand>& commands, int number) {
  if (writes_ && link_.hasDesks()) {
    if (commits_.isFirst()) commands.push_back({.text = kForgetOldDesks});
    // What a loop changes is told once, at its end.
    shapes_.add(commands, commits_.nextStep(relaxed_ ? "" : news_.noted()), link_.session());
  }
  commands.push_back({.text = "COMMIT", .number = number});
}

// A statement within a transaction stands between a savepoint and its release, since the server
// gives up a transaction in which a statement fails. Right behind the beginning nothing is lost
// with it.
std::optional<PostgresSession::Failed> PostgresSession::tryAll(
    std::span<const EngineStatement> statements, Then then, const OnResult& onResult) {
  std::vector<PostgresCommand> commands = takeWaiting();
  const bool isGuarded = open_ && kind_ != TransactionKind::snapshot;
  const bool isAtBegin = isGuarded && commands.size() == 1 && commands.front().text == kBegin;
  for (std::size_t i = 0; i < statements.size(); ++i) {
    const bool isBare = !isGuarded || (i == 0 && isAtBegin);
    if (!isBare) commands.push_back({.text = kSavepoint});
    shapes_.add(commands, statements[i], link_.session());
    commands.back().number = static_cast<int>(i);
    if (!isBare) commands.push_back({.text = kRelease});
  }
  if (then == Then::commit) addCommit(commands, static_cast<int>(statements.size()));
  std::optional<PostgresFailure> failure = link_.run(commands, onResult);
  if (!failure) return std::nullopt;
  shapes_.drop(std::span(commands).subspan(failure->command));
  const auto ran = std::span(commands).first(failure->command);
  const auto count = static_cast<std::size_t>(
      std::ranges::count_if(ran, [](const PostgresCommand& one) { return one.number >= 0; }));
  recover(isAtBegin && count == 0);
  return Failed{std::move(*failure), count};
}

// After a failure: back to where the statement began, or out of a transaction that cannot go on.
void PostgresSession::recover(bool isAtBegin) {
  if (!link_.hasFailedTransaction()) {
    if (open_ && !link_.inTransaction()) close();
    return;
  }
  if (isAtBegin) {
    link_.query("ROLLBACK");
    return wait(kBegin);
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

// A prepared statement whose tables have changed since is prepared once more.
std::optional<PostgresSession::Failed> PostgresSession::runAll(
    std::span<const EngineStatement> statements, Then then, const OnResult& onResult) {
  constexpr std::string_view kPlanIsOld = "0A000";
  for (const EngineStatement& statement : statements)
    if (statement.text.empty())
      throw DatabaseRefusal(Refusal::statement, "The statement is empty.");
  std::optional<Failed> failed = tryAll(statements, then, onResult);
  if (!failed || failed->why.state != kPlanIsOld) return failed;
  shapes_.forget();
  const std::size_t done = failed->statement;
  failed = tryAll(statements.subspan(done), then, [&](std::size_t number, const PGresult& result) {
    onResult(done + number, result);
  });
  if (failed) failed->statement += done;
  return failed;
}

void PostgresSession::run(std::span<const EngineStatement> statements, const OnResult& onResult) {
  try {
    requireUp();
    const std::optional<Failed> failed = runAll(statements, Then::stay, onResult);
    if (!failed) return;
    const bool isOfStatement = failed->statement < statements.size();
    throw refusalOf(link_, failed->why, isOfStatement ? statements[failed->statement].text : "");
  } catch (const DatabaseRefusal& refusal) {
    if (refusal.why() == Refusal::lost) tellLoss(refusal);
    heedLock(refusal);
    throw;
  } catch (const BrokenOff&) {
    close();
    throw;
  }
}

WrittenTogether PostgresSession::write(std::span<const EngineStatement> statements, Then then) {
  WrittenTogether written;
  try {
    requireUp();
    writes_ = true;
    for (const EngineStatement& statement : statements) news_.note(statement.text);
    written = then == Then::commit ? writeAndCommit(statements) : writeOnly(statements);
  } catch (const DatabaseRefusal& refusal) {
    written.refusal = refusal;
  }
  return written;
}

WrittenTogether PostgresSession::writeOnly(std::span<const EngineStatement> statements) {
  WrittenTogether written;
  try {
    run(statements,
        [&](std::size_t, const PGresult& result) { written.rows.push_back(rowsOf(result)); });
  } catch (const DatabaseRefusal& refusal) {
    written.refusal = refusal;
  }
  return written;
}

WrittenTogether PostgresSession::writeAndCommit(std::span<const EngineStatement> statements) {
  WrittenTogether written;
  bool isCommitted = false;
  const std::optional<CommitResult> commit = ending([&]() -> std::optional<CommitResult> {
    const std::optional<Failed> failed =
        runAll(statements, Then::commit, [&](std::size_t number, const PGresult& result) {
          if (number < statements.size())
            written.rows.push_back(rowsOf(result));
          else
            isCommitted = isCommit(result);
        });
    if (failed && failed->statement < statements.size()) {
      written.refusal = refusalOf(link_, failed->why, statements[failed->statement].text);
      return std::nullopt;
    }
    return resultOf(failed, isCommitted);
  });
  written.commit = commit.value_or(CommitResult{});
  return written;
}

// The end of a transaction that has failed is told in the same way as a commit.
CommitResult PostgresSession::resultOf(const std::optional<Failed>& failed, bool isCommitted) {
  if (failed)
    return {.outcome = CommitResult::Outcome::refused, .why = refusalOf(link_, failed->why, "")};
  if (isCommitted) return {};
  return {.outcome = CommitResult::Outcome::refused, .why = DatabaseRefusal(Refusal::rolledBack)};
}

// Ends the transaction unless `send` returns nothing, and finds out what became of a commit whose
// answer was lost. Of one that was never sent, the step before would tell that it is stored.
template <class Send>
std::optional<CommitResult> PostgresSession::ending(Send send) {
  const bool writes = writes_;
  const std::int64_t step = commits_.step();
  const PostgresLink::Backend backend = link_.backend();
  std::optional<CommitResult> result;
  try {
    result = send();
    if (!result) return result;
    if (link_.inTransaction()) link_.query("ROLLBACK");
    hasRelaxed_ = hasRelaxed_ || (relaxed_ && writes);
  } catch (const DatabaseRefusal& loss) {
    const bool mayBeStored = writes && (commits_.step() != step || !link_.hasDesks());
    result = mayBeStored ? outcomeOf(backend)
                         : CommitResult{.outcome = CommitResult::Outcome::refused, .why = loss};
    if (result->why && std::exchange(hasRelaxed_, false))
      result->why = DatabaseRefusal(Refusal::lostSome);
  } catch (const BrokenOff&) {
    close();
    throw;
  }
  close();
  return result;
}

CommitResult PostgresSession::outcomeOf(const PostgresLink::Backend& backend) {
  if (link_.hasDesks()) return commits_.find(link_, backend, options_.returnTimeout);
  return {.outcome = CommitResult::Outcome::unknown, .why = DatabaseRefusal(Refusal::unknown)};
}

void PostgresSession::begin(TransactionKind kind) {
  close();
  open_ = true;
  kind_ = kind;
  wait(kind == TransactionKind::snapshot ? "BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY"
                                         : kBegin);
}

CommitResult PostgresSession::commit() {
  const bool isHeardOf = link_.isUp() && (link_.inTransaction() || writes_);
  if (!isHeardOf) {
    close();
    return {};
  }
  return *ending([this]() -> std::optional<CommitResult> {
    std::vector<PostgresCommand> commands = takeWaiting();
    addCommit(commands, 0);
    bool isCommitted = false;
    std::optional<PostgresFailure> failure = link_.run(
        commands, [&](std::size_t, const PGresult& result) { isCommitted = isCommit(result); });
    if (!failure) return resultOf({}, isCommitted);
    shapes_.drop(std::span(commands).subspan(failure->command));
    return resultOf(Failed{std::move(*failure), 0}, false);
  });
}

void PostgresSession::rollback() {
  const bool isHeardOf = link_.isUp() && link_.inTransaction();
  close();
  if (!isHeardOf) return;
  try {
    link_.query("ROLLBACK");
  } catch (const DatabaseRefusal& refusal) {
    if (refusal.why() != Refusal::lost) throw;  // the server rolls back what it lost
  }
}

void PostgresSession::relaxSync() {
  requireUp();
  hasRelaxed_ = false;
  relaxed_ = true;
  relaxedSession_ = 0;  // the first transaction sets it
  lockWait_ = options_.busyTimeout;
}

// One more commit that is synced makes those before it durable, since the log is one. It must have
// something to write: an empty one is not synced.
void PostgresSession::restoreSync() {
  relaxed_ = false;
  const std::string news = news_.noted();
  try {
    requireUp();
    link_.query(
        concat("RESET synchronous_commit; SET lock_timeout = ", options_.busyTimeout.count(),
               "; BEGIN; SELECT pg_logical_emit_message(true, 'bw_sync', '');",
               news.empty() ? "" : concat("SELECT pg_notify('", kNewsChannel, "', '", news, "');"),
               "COMMIT"));
    hasRelaxed_ = false;
    news_.forget();
  } catch (const DatabaseRefusal& loss) {
    tellLoss(loss);
  }
}

}  // namespace bw
