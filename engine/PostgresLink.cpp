#include "engine/PostgresLink.h"

#include <poll.h>

#include <array>

#include "engine/BreakableReading.h"
#include "engine/PostgresAddress.h"
#include "engine/Refusals.h"
#include "engine/ServerNames.h"
#include "text/Text.h"

namespace bw {
namespace {

constexpr Oid kInt8 = 20;
constexpr int kBinary = 1;

// A standby takes nobody who listens.
std::string listening() {
  return concat("DO 'BEGIN IF NOT pg_is_in_recovery() THEN LISTEN ", kNewsChannel,
                "; END IF; END';");
}

std::string fieldOf(const PGresult* result, int field) {
  const char* text = PQresultErrorField(result, field);
  return text == nullptr ? std::string() : text;
}

// Without a state it is libpq that speaks, of a connection that broke; the others are the server's
// when it goes down.
bool tellsALoss(const PGresult* result) {
  const std::string state = fieldOf(result, PG_DIAG_SQLSTATE);
  return state.empty() || state.starts_with("57P0") || state.starts_with("08");
}

PostgresFailure failureOf(const PGresult* result, std::size_t command) {
  return {.command = command,
          .state = fieldOf(result, PG_DIAG_SQLSTATE),
          .text = fieldOf(result, PG_DIAG_MESSAGE_PRIMARY),
          .constraint = fieldOf(result, PG_DIAG_CONSTRAINT_NAME),
          .table = fieldOf(result, PG_DIAG_TABLE_NAME),
          .column = fieldOf(result, PG_DIAG_COLUMN_NAME)};
}

bool isError(const PGresult* result) noexcept {
  return PQresultStatus(result) == PGRES_FATAL_ERROR;
}

// Values as libpq takes them: numbers with their type, texts without, so that the place decides.
struct Parameters {
  explicit Parameters(std::span<const StatementValue> values) {
    texts.reserve(values.size());
    for (const StatementValue& value : values) {
      const auto* number = std::get_if<std::int64_t>(&value);
      texts.push_back(number != nullptr ? std::to_string(*number) : std::get<std::string>(value));
      types.push_back(number != nullptr ? kInt8 : 0);
    }
    for (const std::string& text : texts) pointers.push_back(text.c_str());
  }
  int count() const noexcept { return static_cast<int>(texts.size()); }

  std::vector<std::string> texts;
  std::vector<const char*> pointers;
  std::vector<Oid> types;
};

}  // namespace

PostgresLink::PostgresLink(std::string address, const PostgresOptions& options)
    : address_(std::move(address)), options_(options) {
  connect();
}

void PostgresLink::connect() {
  connection_.reset();
  std::vector<const char*> names;
  std::vector<const char*> values;
  const auto settings = connectionSettings(address_);
  for (const auto& [name, value] : settings) {
    names.push_back(name.c_str());
    values.push_back(value.c_str());
  }
  names.push_back(nullptr);
  values.push_back(nullptr);
  constexpr int kExpandAddress = 1;
  PostgresConnection made(PQconnectdbParams(names.data(), values.data(), kExpandAddress));
  if (PQstatus(made.get()) != CONNECTION_OK)
    throw DatabaseRefusal(Refusal::notConnected, firstLine(PQerrorMessage(made.get())));
  PQsetNoticeReceiver(made.get(), hear, this);
  isClosing_ = false;
  connection_ = std::move(made);
  ++session_;
  setUp();
}

// Workers that read one table together would give its rows in another order each time.
void PostgresLink::setUp() {
  const PostgresResult facts = query(
      concat("SET lock_timeout = ", options_.busyTimeout.count(),
             "; SET max_parallel_workers_per_gather = 0;",
             "SET jit = off; SET standard_conforming_strings = on; SET datestyle = 'ISO, YMD';"
             "SET extra_float_digits = 1;",
             options_.access == EngineAccess::readOnly ? "SET default_transaction_read_only = on;"
                                                       : listening(),
             "SELECT pid, backend_start, to_regclass('bw_desks') IS NOT NULL"
             " FROM pg_stat_get_activity(pg_backend_pid()) AS a"));
  backend_ = {PQgetvalue(facts.get(), 0, 0), PQgetvalue(facts.get(), 0, 1)};
  hasDesks_ = std::string_view(PQgetvalue(facts.get(), 0, 2)) == "t";
}

void PostgresLink::requireUp() {
  if (!isUp()) return connect();
  if (isClosedByServer()) connect();
}

// Notices are not for anybody to read; the end of the server's process comes as one.
void PostgresLink::hear(void* link, const PGresult* notice) noexcept {
  const char* state = PQresultErrorField(notice, PG_DIAG_SQLSTATE);
  if (state != nullptr && std::string_view(state).starts_with("57P0"))
    static_cast<PostgresLink*>(link)->isClosing_ = true;
}

// Something to read between statements is mostly that the server has gone.
bool PostgresLink::isClosedByServer() {
  PGconn* connection = connection_.get();
  if (isClosing_ || PQstatus(connection) != CONNECTION_OK) return true;
  for (pollfd socket{.fd = PQsocket(connection), .events = POLLIN, .revents = 0};
       poll(&socket, 1, 0) > 0;) {
    if (PQconsumeInput(connection) == 0) return true;
    PQisBusy(connection);  // reads what has come
    if (isClosing_ || PQstatus(connection) != CONNECTION_OK) return true;
  }
  return false;
}

void PostgresLink::lose() {
  connection_.reset();
  throw DatabaseRefusal(Refusal::lost);
}

bool PostgresLink::send(const PostgresCommand& command) {
  const Parameters parameters(command.values);
  PGconn* connection = connection_.get();
  if (command.name.empty())
    return PQsendQueryParams(connection, command.text.c_str(), 0, nullptr, nullptr, nullptr,
                             nullptr, kBinary) == 1;
  if (!command.text.empty())
    return PQsendPrepare(connection, command.name.c_str(), command.text.c_str(), parameters.count(),
                         parameters.types.data()) == 1;
  return PQsendQueryPrepared(connection, command.name.c_str(), parameters.count(),
                             parameters.pointers.data(), nullptr, nullptr, kBinary) == 1;
}

// The user is asked when the server keeps us waiting, and whenever there is nothing left of what
// came over the wire at once: never for each row.
PostgresResult PostgresLink::nextResult() {
  const BreakableReading::Asked* const asked = BreakableReading::current();
  PGconn* connection = connection_.get();
  while (asked != nullptr && PQisBusy(connection) != 0) {
    constexpr int kMilliseconds = 50;
    if (const auto now = std::chrono::steady_clock::now(); now >= nextAsked_) {
      if ((*asked)()) throw BrokenOff();
      nextAsked_ = now + std::chrono::milliseconds(kMilliseconds);
    }
    pollfd socket{.fd = PQsocket(connection), .events = POLLIN, .revents = 0};
    if (poll(&socket, 1, kMilliseconds) != 0 && PQconsumeInput(connection) == 0) lose();
  }
  return PostgresResult(PQgetResult(connection));
}

// The server would work on for nobody.
void PostgresLink::giveUp() noexcept {
  std::array<char, 256> ignored{};
  const std::unique_ptr<PGcancel, void (*)(PGcancel*)> cancel(PQgetCancel(connection_.get()),
                                                              PQfreeCancel);
  if (cancel) PQcancel(cancel.get(), ignored.data(), static_cast<int>(ignored.size()));
  connection_.reset();
}

void PostgresLink::receive(std::span<const PostgresCommand> commands, std::size_t place,
                           const OnResult& onResult, std::optional<PostgresFailure>& failure) {
  const int number = commands[place].number;
  if (number >= 0) PQsetSingleRowMode(connection_.get());
  while (const PostgresResult result = nextResult()) {
    if (isError(result.get())) {
      if (tellsALoss(result.get())) lose();
      if (!failure) failure = failureOf(result.get(), place);
    } else if (number >= 0 && !failure && PQresultStatus(result.get()) != PGRES_PIPELINE_ABORTED) {
      onResult(static_cast<std::size_t>(number), *result);
    }
  }
  if (PQstatus(connection_.get()) != CONNECTION_OK) lose();
}

std::optional<PostgresFailure> PostgresLink::run(std::span<const PostgresCommand> commands,
                                                 const OnResult& onResult) {
  PGconn* connection = connection_.get();
  if (PQenterPipelineMode(connection) == 0) lose();
  for (const PostgresCommand& command : commands)
    if (!send(command)) lose();
  if (PQpipelineSync(connection) == 0) lose();
  std::optional<PostgresFailure> failure;
  try {
    for (std::size_t place = 0; place < commands.size(); ++place)
      receive(commands, place, onResult, failure);
  } catch (...) {
    giveUp();  // what has not been read would stand in front of the next answer
    throw;
  }
  const PostgresResult end(PQgetResult(connection));
  if (PQresultStatus(end.get()) != PGRES_PIPELINE_SYNC || PQexitPipelineMode(connection) == 0)
    lose();
  return failure;
}

PostgresResult PostgresLink::query(const std::string& statements) {
  PostgresResult result(PQexec(connection_.get(), statements.c_str()));
  if (PQstatus(connection_.get()) != CONNECTION_OK) lose();
  if (isError(result.get())) {
    if (tellsALoss(result.get())) lose();
    throw DatabaseRefusal(Refusal::statement, fieldOf(result.get(), PG_DIAG_MESSAGE_PRIMARY));
  }
  return result;
}

void PostgresLink::takeNews(const std::function<void(std::string_view)>& onNews) {
  PGconn* connection = connection_.get();
  if (!isUp() || PQconsumeInput(connection) == 0) return;  // the next statement connects anew
  while (const std::unique_ptr<PGnotify, FreeMemory> news{PQnotifies(connection)})
    if (news->be_pid != PQbackendPID(connection)) onNews(news->extra);
}

std::string PostgresLink::quoted(const std::string& text) const {
  const std::unique_ptr<char, FreeMemory> quoted(
      PQescapeLiteral(connection_.get(), text.c_str(), text.size()));
  return quoted == nullptr ? "NULL" : quoted.get();
}

bool PostgresLink::inTransaction() const noexcept {
  const PGTransactionStatusType status = PQtransactionStatus(connection_.get());
  return status == PQTRANS_INTRANS || status == PQTRANS_INERROR;
}

bool PostgresLink::hasFailedTransaction() const noexcept {
  return PQtransactionStatus(connection_.get()) == PQTRANS_INERROR;
}

}  // namespace bw
