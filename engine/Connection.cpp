#include "engine/Connection.h"

#include <algorithm>

#include "engine/EngineMakers.h"
#include "engine/PlainWrite.h"
#include "engine/Refusals.h"
#include "engine/Rewriter.h"
#include "engine/Workgroup.h"
#include "text/Text.h"

namespace bw {
namespace {

// The value of one name of a connection string, "" when it is not there.
std::string settingOf(std::string_view connectionString, std::string_view name) {
  while (!connectionString.empty()) {
    const std::size_t end = std::min(connectionString.find(';'), connectionString.size());
    const std::string_view entry = connectionString.substr(0, end);
    const std::size_t equals = entry.find('=');
    if (equals != std::string_view::npos && sameName(entry.substr(0, equals), name))
      return std::string(entry.substr(equals + 1));
    connectionString.remove_prefix(std::min(end + 1, connectionString.size()));
  }
  return {};
}

// Stands below the refusal of a statement with a text that holds one.
constexpr const char* kApostrophe =
    "\n\nThe sign ' (apostrophe) in a text is what was refused. Type ’ in its place, or '' (the "
    "sign twice), and try again.";

}  // namespace

Connection::Connection(std::unique_ptr<Engine> engine)
    : engine_(std::move(engine)), changeLog_(ChangeLog::of(*engine_)) {}

void Connection::Open(EngineAccess access) {
  const std::string target = settingOf(ConnectionString, "Data Source");
  const EngineMaker& maker = makerOf(target);
  if (maker.guardedByWorkgroup &&
      !workgroupAdmits(settingOf(ConnectionString, "Jet OLEDB:System database"),
                       settingOf(ConnectionString, "User Id"),
                       settingOf(ConnectionString, "Password")))
    throw RuntimeError(ErrorNumber::database, "The account or its password is not valid.");
  std::unique_ptr<Engine> engine = maker.open(target, access);
  changeLog_ = ChangeLog::of(*engine);
  engine_ = std::move(engine);
  level_ = 0;
}

Engine& Connection::engine() {
  if (!engine_) throw RuntimeError(ErrorNumber::closed);
  return *engine_;
}

void Connection::hear(std::string_view statement) const {
  if (tap) tap(statement);
}

template <class Work>
auto Connection::reaching(Work work) {
  try {
    auto result = work();
    lost_ = false;
    return result;
  } catch (const DatabaseRefusal& refusal) {
    lost_ = lost_ || isLoss(refusal.why());
    throw;
  }
}

int Connection::BeginTrans(TransactionKind kind) {
  const int level = level_ + 1;
  hear(level == 1 ? "BEGIN" : concat("SAVEPOINT s", level));
  requireAlive();
  if (level == 1)
    engine().begin(kind);
  else
    engine().beginLevel(level);
  return level_ = level;
}

void Connection::CommitTrans() {
  requireLevel();
  try {
    commitLevel();
    --level_;
  } catch (const RuntimeError&) {
    // Left open, it would swallow everything that is stored from now on.
    RollbackTrans();
    throw;
  }
}

// What a commit in the trip of the last statements has become.
void Connection::endBy(const CommitResult& commit) {
  try {
    reaching([&commit] {
      commit.require();
      return true;
    });
    --level_;
  } catch (const RuntimeError&) {
    RollbackTrans();
    throw;
  }
}

void Connection::commitLevel() {
  hear(level_ == 1 ? "COMMIT" : concat("RELEASE s", level_));
  requireAlive();
  if (level_ > 1) return engine().keepLevel(level_);
  reaching([this] {
    engine().commit().require();
    return true;
  });
}

void Connection::RollbackTrans() {
  requireLevel();
  const int level = level_--;
  // After a full disk the engine may have rolled back by itself: then nothing is left to do.
  if (!engine().inTransaction()) return;
  if (level == 1) {
    hear("ROLLBACK");
    return engine().rollback();
  }
  hear(concat("ROLLBACK TO s", level));
  hear(concat("RELEASE s", level));
  engine().undoLevel(level);
}

bool Connection::relaxSync() {
  if (!engine_ || level_ > 0) return false;
  try {
    engine_->relaxSync();
  } catch (const DatabaseRefusal&) {
    return false;  // what is wrong the next statement tells
  }
  return true;
}

void Connection::restoreSync() { engine().restoreSync(); }

void Connection::requireLevel() const {
  if (level_ == 0) throw RuntimeError(ErrorNumber::noTransaction);
}

// What runs behind a transaction that the engine has given up would be stored by itself.
void Connection::requireAlive() {
  if (level_ > 0 && !engine().inTransaction()) throw DatabaseRefusal(Refusal::rolledBack);
}

std::int64_t Connection::Execute(std::string_view statement) { return run(statement, false); }

std::int64_t Connection::Write(std::string_view statement) { return run(statement, true); }

Connection::Written Connection::WriteAll(std::span<const std::string> statements, Then then) {
  if (statements.empty() && then == Then::stay) return {};
  EngineTrips* trips = changeLog_ ? nullptr : engine().trips();
  if (trips != nullptr && level_ == 1) return writeTogether(*trips, statements, then);
  Written written =
      trips == nullptr ? writeEach(statements) : writeTogether(*trips, statements, Then::stay);
  if (then == Then::commit && !written.refusal) end(written, [this] { CommitTrans(); });
  return written;
}

template <class Commit>
void Connection::end(Written& written, Commit commit) {
  written.isEnded = true;
  try {
    commit();
  } catch (const RuntimeError& refusal) {
    written.refusal = refusal;
  }
}

Connection::Written Connection::writeEach(std::span<const std::string> statements) {
  Written written;
  try {
    for (const std::string& statement : statements) written.rows.push_back(Write(statement));
  } catch (const RuntimeError& refusal) {
    written.refusal = refusal;
  }
  return written;
}

// Those in front of the first that is not let through.
std::vector<EngineStatement> Connection::rewriteAll(std::span<const std::string> statements,
                                                    std::optional<RuntimeError>& refusal) {
  std::vector<EngineStatement> all;
  try {
    for (const std::string& statement : statements) {
      hear(statement);
      requirePlainWrite(statement);
      all.push_back(rewriteStatement(statement, engine().dialect()));
    }
  } catch (const RuntimeError& error) {
    refusal = error;
  }
  return all;
}

Connection::Written Connection::writeTogether(EngineTrips& trips,
                                              std::span<const std::string> statements, Then then) {
  requireAlive();
  forgetAhead();
  Written written;
  const std::vector<EngineStatement> all = rewriteAll(statements, written.refusal);
  if (written.refusal) then = Then::stay;
  try {
    if (then == Then::commit) hear("COMMIT");
  } catch (const RuntimeError& refusal) {
    RollbackTrans();
    return {.refusal = refusal, .isEnded = true};
  }
  WrittenTogether done = trips.executeAll(all, then);
  lost_ = done.refusal && isLoss(done.refusal->why());
  written.rows = std::move(done.rows);
  if (done.refusal) written.refusal = *done.refusal;
  const bool isOfStatement = written.refusal && written.rows.size() < statements.size();
  if (isOfStatement && hasCutText(statements[written.rows.size()]))
    written.refusal =
        RuntimeError(written.refusal->number(), written.refusal->text() + kApostrophe);
  if (!done.refusal && then == Then::commit) end(written, [&] { endBy(done.commit); });
  return written;
}

std::int64_t Connection::run(std::string_view statement, bool isTyped) {
  hear(statement);
  requireAlive();
  forgetAhead();
  Engine& open = engine();
  try {
    if (isTyped) requirePlainWrite(statement);
    const EngineStatement rewritten = rewriteStatement(statement, open.dialect());
    return reaching([&] {
      return changeLog_ ? changeLog_->execute(rewritten, statement, level_)
                        : open.execute(rewritten);
    });
  } catch (const RuntimeError& error) {
    if (!hasCutText(statement)) throw;
    throw RuntimeError(error.number(), error.text() + kApostrophe);
  }
}

RecordSetRef Connection::Read(std::string_view statement, LockType lock) {
  hear(statement);
  if (const auto ahead = ahead_.find(statement); ahead != ahead_.end())
    return RecordSetRef(
        std::make_shared<RecordSet>(std::make_shared<RowStore>(*ahead->second), lock));
  return reaching(
      [&] { return RecordSetRef(std::make_shared<RecordSet>(readRows(statement), lock)); });
}

void Connection::readAhead(std::span<const std::string> statements) {
  EngineTrips* trips = engine_ ? engine_->trips() : nullptr;
  if (trips == nullptr) return;
  std::vector<EngineStatement> rewritten;
  rewritten.reserve(statements.size());
  try {
    for (const std::string& statement : statements)
      rewritten.push_back(rewriteStatement(statement, engine_->dialect()));
    std::vector<std::shared_ptr<RowStore>> rows = trips->readAll(rewritten);
    for (std::size_t i = 0; i < rows.size(); ++i)
      ahead_.insert_or_assign(statements[i], std::move(rows[i]));
  } catch (const DatabaseRefusal&) {
    ahead_.clear();  // the statement that is refused is told so when it is read
  }
}

ChangesOfOthers Connection::changesOfOthers() {
  try {
    return engine().changesOfOthers();
  } catch (const RuntimeError&) {
    return {};  // a lock or a loss, which the next statement meets
  }
}

std::shared_ptr<RowStore> Connection::readRows(std::string_view statement) {
  for (const LookedUpQuery& query : lookedUpQueries)
    if (std::shared_ptr<RowStore> rows = readLookedUp(engine(), query, statement)) return rows;
  return engine().read(rewriteStatement(statement, engine().dialect()));
}

}  // namespace bw
