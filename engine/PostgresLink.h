#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "engine/EngineStatement.h"
#include "engine/PostgresHandles.h"
#include "engine/PostgresOptions.h"

namespace bw {

// One statement of a trip to the server.
struct PostgresCommand {
  std::string text{};                    // or, of a prepared one that is run, ""
  std::string name{};                    // of a prepared one
  std::vector<StatementValue> values{};  // of a prepared one
  int number = -1;                       // under which its results are handed on; -1: they are not
};

// What the server says of a statement that failed.
struct PostgresFailure {
  std::size_t command = 0;  // its place in the trip
  std::string state;        // SQLSTATE
  std::string text;
  std::string constraint, table, column;
};

// The connection to a server. A connection that is lost raises DatabaseRefusal (lost) once and is
// down from then on.
class PostgresLink {
 public:
  using OnResult = std::function<void(std::size_t number, const PGresult&)>;

  // Connects. Raises DatabaseRefusal (notConnected).
  PostgresLink(std::string address, const PostgresOptions& options);

  bool isUp() const noexcept { return connection_ != nullptr; }
  // Connects anew. Raises DatabaseRefusal (notConnected); then it is down.
  void connect();
  // Connects anew if it is down, also when the server has closed it in the meantime.
  void requireUp();

  // Sends all commands and reads what becomes of them. Hands on the results of those that have a
  // number, row by row. Behind a command that fails the others are not run.
  std::optional<PostgresFailure> run(std::span<const PostgresCommand> commands,
                                     const OnResult& onResult);
  // Runs statements parted by semicolons, and returns the rows of the last one, as texts. A failure
  // raises DatabaseRefusal (statement).
  PostgresResult query(const std::string& statements);
  std::string quoted(const std::string& text) const;

  // Whether the server is within a transaction, also within one that has failed.
  bool inTransaction() const noexcept;
  bool hasFailedTransaction() const noexcept;

  // The process that serves this connection: its number, and since when.
  struct Backend {
    std::string number, start;
  };
  const Backend& backend() const noexcept { return backend_; }
  // Whether the database has a table of the stations (see ServerNames.h).
  bool hasDesks() const noexcept { return hasDesks_; }
  // Hands on what others have told since the last call, without a trip.
  void takeNews(const std::function<void(std::string_view)>& onNews);
  // Counts the connections that there were.
  int session() const noexcept { return session_; }

 private:
  [[noreturn]] void lose();
  void setUp();
  static void hear(void* link, const PGresult* notice) noexcept;
  bool isClosedByServer();
  bool send(const PostgresCommand& command);
  PostgresResult nextResult();
  void giveUp() noexcept;
  void receive(std::span<const PostgresCommand> commands, std::size_t place,
               const OnResult& onResult, std::optional<PostgresFailure>& failure);

  std::string address_;
  PostgresOptions options_;
  PostgresConnection connection_;
  Backend backend_;
  bool hasDesks_ = false;
  bool isClosing_ = false;  // the server has said so
  int session_ = 0;
  std::chrono::steady_clock::time_point nextAsked_;  // see nextResult
};

}  // namespace bw
