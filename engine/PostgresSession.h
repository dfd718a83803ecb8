#pragma once

#include <chrono>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "engine/Engine.h"
#include "engine/PostgresCommit.h"
#include "engine/PostgresLink.h"
#include "engine/PostgresNews.h"
#include "engine/PostgresShapes.h"

namespace bw {

// The transactions of a connection to a server, and the trips in which their statements go. What
// begins and ends transactions and levels waits for the next statement and goes with it. Raises
// DatabaseRefusal.
class PostgresSession {
 public:
  using OnResult = PostgresLink::OnResult;

  PostgresSession(const std::string& address, const PostgresOptions& options)
      : options_(options), link_(address, options) {}

  PostgresLink& link() noexcept { return link_; }
  // For what asks the link by itself: a loss ends the transaction as one that a statement meets.
  template <class Ask>
  auto asking(Ask ask) {
    try {
      return ask(link_);
    } catch (const DatabaseRefusal& refusal) {
      if (refusal.why() == Refusal::lost) tellLoss(refusal);
      throw;
    }
  }
  PostgresNews& news() noexcept { return news_; }
  // Connects anew if need be, outside of a transaction.
  void requireUp();

  // Runs statements in one trip and hands on the results of each under its place. Raises the
  // refusal of the first that fails.
  void run(std::span<const EngineStatement> statements, const OnResult& onResult);
  // The same for statements that write within a transaction; see EngineTrips.
  WrittenTogether write(std::span<const EngineStatement> statements, Then then);
  // Puts a statement of which nothing is expected among those that wait, within a transaction.
  void queue(const EngineStatement& statement);

  void begin(TransactionKind kind);
  CommitResult commit();
  void rollback();
  void wait(std::string text) { waiting_.push_back({.text = std::move(text)}); }
  // Also one that the server has not heard of yet.
  bool isOpen() const noexcept { return open_; }

  void relaxSync();
  void restoreSync();

 private:
  struct Failed {
    PostgresFailure why;
    std::size_t statement;  // its place; behind the last one: the commit
  };

  void sendWaiting();
  std::vector<PostgresCommand> takeWaiting() { return std::exchange(waiting_, {}); }
  std::optional<Failed> runAll(std::span<const EngineStatement> statements, Then then,
                               const OnResult& onResult);
  std::optional<Failed> tryAll(std::span<const EngineStatement> statements, Then then,
                               const OnResult& onResult);
  void addCommit(std::vector<PostgresCommand>& commands, int number);
  void recover(bool isAtBegin);
  void close() noexcept;
  WrittenTogether writeOnly(std::span<const EngineStatement> statements);
  WrittenTogether writeAndCommit(std::span<const EngineStatement> statements);
  template <class Send>
  std::optional<CommitResult> ending(Send send);
  CommitResult resultOf(const std::optional<Failed>& failed, bool isCommitted);
  CommitResult outcomeOf(const PostgresLink::Backend& backend);
  [[noreturn]] void tellLoss(const DatabaseRefusal& loss);
  void heedLock(const DatabaseRefusal& refusal);

  PostgresOptions options_;
  PostgresLink link_;
  PostgresShapes shapes_;
  PostgresCommits commits_;
  PostgresNews news_;
  std::vector<PostgresCommand> waiting_;
  bool open_ = false;
  TransactionKind kind_ = TransactionKind::ordinary;
  bool writes_ = false;  // the transaction
  bool relaxed_ = false;
  int relaxedSession_ = 0;                // the latest that was told
  bool hasRelaxed_ = false;               // something was committed since
  std::chrono::milliseconds lockWait_{};  // for each lock, while relaxed
};

}  // namespace bw
