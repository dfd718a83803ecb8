#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "engine/Engine.h"
#include "engine/PostgresLink.h"

namespace bw {

// Commits of one station, and what became of one whose answer was lost. The transaction itself
// writes which step of the station it is (see ServerNames.h): where that stands it was stored, and
// where it doesn't it was not, once the process that served it has ended. The state that the server
// tells of a transaction's number is not enough: a crash may give the number to another one.
class PostgresCommits {
 public:
  PostgresCommits();

  // The statement that writes the next step and tells the other stations `news`.
  EngineStatement nextStep(const std::string& news);
  // The latest that was made; 0: none.
  std::int64_t step() const noexcept { return step_; }
  // Whether it is the first one of all: that of a station that clears away what others left.
  bool isFirst() const noexcept { return step_ == 0; }
  // Connects anew and tells what became of the latest step that `backend` was to commit, within the
  // time that the server may take to come back.
  CommitResult find(PostgresLink& link, const PostgresLink::Backend& backend,
                    std::chrono::milliseconds within);

 private:
  CommitResult::Outcome outcome(PostgresLink& link, const PostgresLink::Backend& backend) const;

  std::string token_;  // of this station, by chance
  std::int64_t step_ = 0;
};

}  // namespace bw
