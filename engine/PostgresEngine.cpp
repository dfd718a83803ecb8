#include "engine/PostgresEngine.h"

#include "engine/EngineTransaction.h"
#include "engine/PostgresKeys.h"
#include "engine/PostgresRows.h"
#include "engine/PostgresSession.h"
#include "text/Text.h"

namespace bw {
namespace {

bool startsWith(std::string_view statement, std::string_view word) {
  const std::size_t from = statement.find_first_not_of(" \t\r\n");
  return from != std::string_view::npos && sameName(statement.substr(from, word.size()), word);
}

class PostgresEngine final : public Engine, public EngineTrips {
 public:
  PostgresEngine(const std::string& address, const PostgresOptions& options)
      : Engine(SqlDialect::postgres), session_(address, options) {}

  EngineTrips* trips() noexcept override { return this; }
  std::vector<std::shared_ptr<RowStore>> readAll(
      std::span<const EngineStatement> statements) override;
  WrittenTogether executeAll(std::span<const EngineStatement> statements, Then then) override {
    return session_.write(statements, then);
  }

  std::int64_t execute(const EngineStatement& statement) override;
  std::shared_ptr<RowStore> read(const EngineStatement& statement) override {
    return readAll({&statement, 1}).front();
  }
  std::unique_ptr<BulkInsert> prepareInsert(const std::string& table,
                                            const std::vector<std::string>& columns,
                                            RowsAre rows) override;
  // Of which nothing is expected.
  void queue(const EngineStatement& statement) { session_.queue(statement); }

  void begin(TransactionKind kind) override { session_.begin(kind); }
  CommitResult commit() override { return session_.commit(); }
  void rollback() override { session_.rollback(); }
  void beginLevel(int level) override { session_.wait(concat("SAVEPOINT s", level)); }
  void keepLevel(int level) override { session_.wait(concat("RELEASE s", level)); }
  void undoLevel(int level) override {
    session_.wait(concat("ROLLBACK TO s", level));
    keepLevel(level);
  }
  bool inTransaction() const override { return session_.isOpen(); }

  void relaxSync() override { session_.relaxSync(); }
  void restoreSync() override { session_.restoreSync(); }
  ChangesOfOthers changesOfOthers() override { return session_.news().heard(session_.link()); }
  bool hasTable(std::string_view name) override;
  std::vector<std::string> findDamage() override;

 private:
  std::int64_t executeAlone(const EngineStatement& statement);
  EngineStatement inWholeOrder(EngineStatement statement);

  PostgresSession session_;
  PostgresKeys keys_;
};

std::int64_t PostgresEngine::execute(const EngineStatement& statement) {
  if (startsWith(statement.text, "SELECT")) {
    session_.run({&statement, 1}, [](std::size_t, const PGresult&) {});
    return 0;
  }
  if (!inTransaction()) return executeAlone(statement);
  const WrittenTogether written = executeAll({&statement, 1}, Then::stay);
  if (written.refusal) throw DatabaseRefusal(*written.refusal);
  for (const char* word : {"CREATE", "ALTER", "DROP"})
    if (startsWith(statement.text, word)) keys_.forget();
  return written.rows.front();
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
  if (!saysAnOrder(statement.text)) return statement;
  session_.requireUp();
  const std::string key = session_.asking(
      [&](PostgresLink& link) { return keys_.behindItsOrder(link, statement.text); });
  statement.text += key;
  if (!statement.shape.empty()) statement.shape += key;
  return statement;
}

std::vector<std::shared_ptr<RowStore>> PostgresEngine::readAll(
    std::span<const EngineStatement> statements) {
  std::vector<EngineStatement> ordered;
  for (const EngineStatement& statement : statements) ordered.push_back(inWholeOrder(statement));
  std::vector<PostgresRows> rows(statements.size());
  session_.run(ordered,
               [&rows](std::size_t number, const PGresult& result) { rows[number].take(result); });
  std::vector<std::shared_ptr<RowStore>> stores;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    std::shared_ptr<RowStore> store = rows[i].finish();
    if (!store) store = std::make_shared<RowStore>();
    if (!saysAnOrder(statements[i].text))
      session_.asking([&](PostgresLink& link) { keys_.order(link, rows[i], *store); });
    stores.push_back(std::move(store));
  }
  return stores;
}

bool PostgresEngine::hasTable(std::string_view name) {
  return read(concat("SELECT 1 FROM pg_class WHERE oid = to_regclass('", name, "')"))->rowCount() >
         0;
}

// Without checksums it counts none.
std::vector<std::string> PostgresEngine::findDamage() {
  session_.requireUp();
  const PostgresResult failures = session_.link().query(
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
