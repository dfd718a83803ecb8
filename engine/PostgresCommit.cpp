#include "engine/PostgresCommit.h"

#include <array>
#include <random>
#include <thread>

#include "engine/ServerNames.h"
#include "text/Text.h"

namespace bw {
namespace {

using Clock = std::chrono::steady_clock;
using Outcome = CommitResult::Outcome;

std::string anyToken() {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::random_device random;
  std::string token(32, '0');
  for (char& digit : token) digit = kDigits[random() % kDigits.size()];
  return token;
}

// Ends the process that served the lost connection: as long as it lives it may store yet.
bool hasEnded(PostgresLink& link, const PostgresLink::Backend& backend) {
  const PostgresResult still = link.query(
      concat("SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE pid = ", backend.number,
             " AND backend_start = ", link.quoted(backend.start)));
  return PQntuples(still.get()) == 0;
}

CommitResult result(Outcome outcome) {
  if (outcome == Outcome::done) return {};
  return {.outcome = outcome,
          .why = DatabaseRefusal(outcome == Outcome::refused ? Refusal::lost : Refusal::unknown)};
}

}  // namespace

PostgresCommits::PostgresCommits() : token_(anyToken()) {}

EngineStatement PostgresCommits::nextStep(const std::string& news) {
  EngineStatement statement(
      "INSERT INTO bw_desks AS d VALUES ($1, $2, now()) ON CONFLICT (token)"
      " DO UPDATE SET step = excluded.step, used = excluded.used");
  statement.values = {token_, ++step_};
  if (!news.empty()) {
    statement.text += " RETURNING pg_notify($3, $4)";
    statement.values.insert(statement.values.end(), {std::string(kNewsChannel), news});
  }
  statement.shape = statement.text;
  return statement;
}

Outcome PostgresCommits::outcome(PostgresLink& link, const PostgresLink::Backend& backend) const {
  link.connect();
  while (!hasEnded(link, backend)) std::this_thread::sleep_for(std::chrono::milliseconds(20));
  const PostgresResult found =
      link.query(concat("SELECT 1 FROM bw_desks WHERE token = '", token_, "' AND step = ", step_));
  return PQntuples(found.get()) > 0 ? Outcome::done : Outcome::refused;
}

CommitResult PostgresCommits::find(PostgresLink& link, const PostgresLink::Backend& backend,
                                   std::chrono::milliseconds within) {
  for (const auto end = Clock::now() + within;;) {
    try {
      return result(outcome(link, backend));
    } catch (const DatabaseRefusal&) {
      if (Clock::now() >= end) return result(Outcome::unknown);
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
  }
}

}  // namespace bw
