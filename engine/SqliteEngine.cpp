#include "engine/SqliteEngine.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <type_traits>

#include "engine/DamagedRows.h"
#include "engine/QuickCheck.h"
#include "engine/Refusals.h"
#include "engine/SqliteBinder.h"
#include "engine/SqliteHandles.h"
#include "engine/SqliteLog.h"
#include "records/ColumnFeed.h"
#include "text/RuntimeError.h"
#include "text/Text.h"

namespace bw {
namespace {

using Database = SqliteHandle;
using Statement = SqliteStatement;

struct Reset {
  void operator()(sqlite3_stmt* statement) const noexcept { sqlite3_reset(statement); }
};
using Run = std::unique_ptr<sqlite3_stmt, Reset>;  // of a statement that is kept

FieldType typeOfDeclaration(const char* declaration) noexcept {
  if (declaration == nullptr) return FieldType::untyped;
  const std::string_view name = declaration;
  if (sameName(name, "SMALLINT")) return FieldType::smallint;
  if (sameName(name, "INTEGER")) return FieldType::integer;
  if (sameName(name, "TEXT")) return FieldType::text;
  if (sameName(name, "DATE")) return FieldType::date;
  if (sameName(name, "TIME")) return FieldType::time;
  if (sameName(name, "DATETIME")) return FieldType::dateTime;
  return FieldType::untyped;
}

std::string_view textOf(sqlite3_value* value) noexcept {
  const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
  return {text, static_cast<std::size_t>(sqlite3_value_bytes(value))};
}

// bw_fold(text): its Unicode case folding, for the schema's queries.
void foldFunction(sqlite3_context* context, int, sqlite3_value** arguments) noexcept {
  if (sqlite3_value_type(arguments[0]) == SQLITE_NULL) return sqlite3_result_null(context);
  try {
    const std::string folded = fold(textOf(arguments[0]));
    sqlite3_result_text(context, folded.data(), static_cast<int>(folded.size()), SQLITE_TRANSIENT);
  } catch (const std::exception&) {
    sqlite3_result_error_nomem(context);
  }
}

class SqliteEngine final : public Engine {
 public:
  SqliteEngine(Database database, const SqliteOptions& options)
      : Engine(SqlDialect::sqlite), database_(std::move(database)), patience_(options.busyTimeout) {
  }

  std::int64_t execute(const EngineStatement& text) override {
    try {
      return use(text, [this](sqlite3_stmt* statement) { return run(statement); });
    } catch (const DatabaseRefusal&) {
      if (mayStandInLog(*database_) && !takeBackCommit(*database_))
        throw DatabaseRefusal(Refusal::unconfirmed);
      throw;
    }
  }

  std::shared_ptr<RowStore> read(const EngineStatement& text) override {
    const BreakableSqlite breakable(*database_);
    return use(text, [this](sqlite3_stmt* statement) { return readRows(statement); });
  }

  std::unique_ptr<BulkInsert> prepareInsert(const std::string& table,
                                            const std::vector<std::string>& columns,
                                            RowsAre rows) override;

  // Takes no lock yet, unless it is for writing: a lock held by another station must fail at the
  // statement that needs it, inside the transaction.
  void begin(TransactionKind kind) override {
    execute(kind == TransactionKind::writing ? "BEGIN IMMEDIATE" : "BEGIN");
  }
  CommitResult commit() override {
    try {
      execute("COMMIT");
      return {};
    } catch (const DatabaseRefusal& why) {
      using enum CommitResult::Outcome;
      return {.outcome = why.why() == Refusal::unconfirmed ? unknown : refused, .why = why};
    }
  }
  void rollback() override { execute("ROLLBACK"); }
  void beginLevel(int level) override { execute(concat("SAVEPOINT s", level)); }
  void keepLevel(int level) override { execute(concat("RELEASE s", level)); }
  void undoLevel(int level) override {
    execute(concat("ROLLBACK TO s", level));
    keepLevel(level);
  }
  bool inTransaction() const override { return sqlite3_get_autocommit(database_.get()) == 0; }

  void relaxSync() override {
    execute("PRAGMA synchronous=NORMAL");
    inLoop_ = true;
  }

  // One more commit that is synced makes those before it durable, since the log is one file. A
  // checkpoint would not do: while another station reads it can leave the log as it is.
  void restoreSync() override {
    inLoop_ = false;
    wait(patience_);
    execute("PRAGMA synchronous=FULL");
    commitNothing(*database_);
  }

  // The engine counts the commits of others alone. A lock is not waited for; a loop's patience
  // stays what it was.
  ChangesOfOthers changesOfOthers() override {
    const std::chrono::milliseconds patience = waits_;
    const std::int64_t last = version_;
    wait(std::chrono::milliseconds{0});
    try {
      version_ = read("PRAGMA data_version")->columns.front().raw(0);
    } catch (const DatabaseRefusal&) {
      wait(patience);
      throw;
    }
    wait(patience);
    return {.any = last != 0 && version_ != last};
  }

  bool hasTable(std::string_view name) override {
    return read(concat("SELECT 1 FROM sqlite_schema WHERE type = 'table' AND name = '", name, "'"))
               ->rowCount() > 0;
  }

  std::vector<std::string> findDamage() override {
    std::vector<std::string> damage = findUnreadableRows(*database_);
    if (std::string quick = findQuickly(*database_); !quick.empty())
      damage.push_back(std::move(quick));
    for (std::string& line : findByEngine(*database_)) damage.push_back(std::move(line));
    return damage;
  }

  // Steps an insert to its end, and leaves it ready for the next.
  void insert(const Statement& statement) const {
    step(statement.get());
    sqlite3_reset(statement.get());
  }

 private:
  void wait(std::chrono::milliseconds patience) const {
    waits_ = patience;
    sqlite3_busy_timeout(database_.get(), static_cast<int>(patience.count()));
  }

  [[noreturn]] void refuse() const {
    constexpr std::chrono::milliseconds kShort{20};
    // Whoever holds the lock keeps it longer than a statement takes: a loop of hundreds of rows
    // must not wait in full for each.
    if (inLoop_ && (sqlite3_errcode(database_.get()) & 0xff) == SQLITE_BUSY)
      wait(std::min(patience_, kShort));
    refuseSqlite(sqlite3_extended_errcode(database_.get()), sqlite3_errmsg(database_.get()));
  }

  Statement prepare(const std::string& text) const { return prepareSqlite(database_.get(), text); }

  bool step(sqlite3_stmt* statement) const {
    const int status = sqlite3_step(statement);
    if (status == SQLITE_ROW) return true;
    if (status != SQLITE_DONE) refuseStep(statement);
    return false;
  }

  std::int64_t run(sqlite3_stmt* statement) const {
    while (step(statement)) {
    }
    return sqlite3_stmt_readonly(statement) != 0 ? 0 : sqlite3_changes64(database_.get());
  }

  std::shared_ptr<RowStore> readRows(sqlite3_stmt* statement) const {
    auto store = std::make_shared<RowStore>();
    const int count = sqlite3_column_count(statement);
    store->columns.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
      store->columns.emplace_back(sqlite3_column_name(statement, i),
                                  typeOfDeclaration(sqlite3_column_decltype(statement, i)));
    std::vector<ColumnFeed> feeds(store->columns.begin(), store->columns.end());
    while (step(statement)) feedRow(statement, feeds);
    for (ColumnFeed& feed : feeds) feed.flush();
    for (Column& column : store->columns) column.finish();
    return store;
  }

  // One record after another is often read or written by statements of one shape, sometimes two in
  // turns. From the second one on they share a prepared statement; the first one runs as it stands,
  // since its values may matter to its plan.
  template <class Work>
  std::invoke_result_t<Work, sqlite3_stmt*> use(const EngineStatement& asked, Work work) {
    if (asked.shape.empty()) return work(prepare(asked.text).get());
    const auto known = std::ranges::find(shared_, asked.shape, &Shared::shape);
    if (known == shared_.end()) {
      std::rotate(shared_.begin(), shared_.end() - 1, shared_.end());
      shared_.front() = {asked.shape, nullptr};
      return work(prepare(asked.text).get());
    }
    if (!known->statement) known->statement = prepare(known->shape);
    const Run run(known->statement.get());
    bindAll(run.get(), asked.values);
    return work(run.get());
  }

  // The values' texts outlive the run.
  static void bindAll(sqlite3_stmt* statement, const std::vector<StatementValue>& values) {
    int place = 0;
    for (const StatementValue& value : values)
      bind({.statement = statement, .place = ++place, .lifetime = SQLITE_STATIC}, value);
  }

  // A foreign key tells neither table nor direction; the statement's kind does.
  [[noreturn]] void refuseStep(sqlite3_stmt* statement) const {
    const int code = sqlite3_extended_errcode(database_.get());
    const bool byRelation =
        code == SQLITE_CONSTRAINT_FOREIGNKEY ||
        (code == SQLITE_CONSTRAINT_TRIGGER &&
         std::string_view(sqlite3_errmsg(database_.get())) == "FOREIGN KEY constraint failed");
    if (!byRelation) refuse();
    const bool deletes = sameName(std::string_view(sqlite3_sql(statement)).substr(0, 6), "DELETE");
    throw DatabaseRefusal(deletes ? Refusal::inUse : Refusal::missingParent);
  }

  static void feedRow(sqlite3_stmt* statement, std::vector<ColumnFeed>& feeds) {
    int i = 0;
    for (ColumnFeed& feed : feeds) {
      sqlite3_value* value = sqlite3_column_value(statement, i++);
      switch (sqlite3_value_type(value)) {
        case SQLITE_INTEGER:
          feed.integer(sqlite3_value_int64(value));
          break;
        case SQLITE_NULL:
          feed.null();
          break;
        default:
          feed.text(textOf(value));
          break;
      }
    }
  }

  struct Shared {
    std::string shape;
    Statement statement;  // once the shape has come a second time
  };

  Database database_;
  std::chrono::milliseconds patience_;
  mutable std::chrono::milliseconds waits_ = patience_;  // now
  bool inLoop_ = false;
  std::int64_t version_ = 0;      // of what others have committed; 0 until it is asked for
  std::array<Shared, 4> shared_;  // the latest shapes
};

class SqliteBulkInsert final : public BulkInsert {
 public:
  SqliteBulkInsert(SqliteEngine& engine, Statement statement)
      : engine_(engine), statement_(std::move(statement)) {}

  void row(std::span<const Value> values) override {
    // Also behind a refused row: a statement that has been stepped takes no values.
    sqlite3_reset(statement_.get());
    int place = 0;
    for (const Value& value : values)
      bind({.statement = statement_.get(), .place = ++place, .lifetime = SQLITE_TRANSIENT}, value);
    engine_.insert(statement_);
  }

 private:
  SqliteEngine& engine_;
  Statement statement_;
};

std::unique_ptr<BulkInsert> SqliteEngine::prepareInsert(const std::string& table,
                                                        const std::vector<std::string>& columns,
                                                        RowsAre) {
  std::string names;
  std::string places;
  for (const std::string& column : columns) {
    names += (names.empty() ? "[" : ", [") + column + "]";
    places += places.empty() ? "?" : ", ?";
  }
  return std::make_unique<SqliteBulkInsert>(
      *this, prepare("INSERT INTO [" + table + "] (" + names + ") VALUES (" + places + ")"));
}

void setUp(sqlite3* database, const SqliteOptions& options) {
  sqlite3_extended_result_codes(database, 1);
  sqlite3_busy_timeout(database, static_cast<int>(options.busyTimeout.count()));
  sqlite3_db_config(database, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
  sqlite3_db_config(database, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
  sqlite3_create_function_v2(database, "bw_fold", 1,
                             SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, nullptr,
                             foldFunction, nullptr, nullptr, nullptr);
}

constexpr const char* kInMemory = ":memory:";

std::unique_ptr<Engine> openFile(const std::string& path, const SqliteOptions& options) {
  const bool inMemory = path == kInMemory;
  sqlite3* opened = nullptr;
  // One thread uses a connection: locks within it would only cost.
  const bool readsOnly = options.access == EngineAccess::readOnly;
  const int flags = (readsOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE) |
                    SQLITE_OPEN_NOMUTEX | (inMemory ? SQLITE_OPEN_CREATE : 0);
  const int status = sqlite3_open_v2(path.c_str(), &opened, flags, nullptr);
  Database database(opened);
  if (status != SQLITE_OK) throw DatabaseRefusal(Refusal::notOpened, sqlite3_errmsg(opened));
  // Without the right to write the engine opens it for reading alone and says nothing.
  if (!readsOnly && sqlite3_db_readonly(database.get(), "main") != 0)
    throw DatabaseRefusal(Refusal::readOnly);
  setUp(database.get(), options);
  sqlite3* handle = database.get();
  auto engine = std::make_unique<SqliteEngine>(std::move(database), options);
  // A file of rubbish opens too; only reading tells.
  engine->read("SELECT count(*) FROM sqlite_schema");
  if (options.quickCheck && !inMemory && !findQuickly(*handle).empty())
    throw DatabaseRefusal(Refusal::damaged);
  engine->execute("PRAGMA foreign_keys=ON");
  engine->execute("PRAGMA synchronous=FULL");
  return engine;
}

// Why a file that is there does not open, where the engine's own word would mislead.
void explainOpening(const std::string& path) {
  namespace fs = std::filesystem;
  constexpr std::uintmax_t kSharedMemory = 32U << 10U;  // what the engine makes beside the file
  std::error_code error;
  for (const char* ending : {"-wal", "-shm"})
    if (const std::string part = path + ending;
        fs::exists(part, error) && faccessat(AT_FDCWD, part.c_str(), R_OK | W_OK, AT_EACCESS) != 0)
      throw DatabaseRefusal(Refusal::foreignPart, part);
  const fs::space_info space = fs::space(fs::absolute(path).parent_path(), error);
  if (!error && space.available < kSharedMemory) throw DatabaseRefusal(Refusal::full);
}

}  // namespace

std::unique_ptr<Engine> openSqlite(const std::string& path, const SqliteOptions& options) {
  std::error_code ignored;
  if (path == kInMemory) return openFile(path, options);
  if (!std::filesystem::is_regular_file(path, ignored))
    throw DatabaseRefusal(Refusal::notOpened, "there is no file " + path);
  try {
    return openFile(path, options);
  } catch (const DatabaseRefusal& refusal) {
    if (refusal.why() != Refusal::damaged && refusal.why() != Refusal::locked) explainOpening(path);
    throw;
  }
}

std::unique_ptr<Engine> createSqlite(const std::string& path, const SqliteOptions& options) {
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
  if (file < 0) throw DatabaseRefusal(Refusal::notCreated, std::generic_category().message(errno));
  close(file);
  std::unique_ptr<Engine> engine = openSqlite(path, options);
  engine->execute("PRAGMA journal_mode=WAL");
  return engine;
}

}  // namespace bw
