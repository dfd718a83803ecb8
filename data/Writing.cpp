#include "data/Writing.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace bw {

namespace {

// A statement and its like, in their order: a new record's own, or those of one of its lists.
struct Part {
  std::vector<std::string> statements;
  std::optional<RuntimeError> unreadable;  // a list, behind them
};

Part partOf(const WantedDetails& details) {
  Part part;
  try {
    forEachCode(details.codes, [&](std::int16_t code) {
      part.statements.push_back(details.insert(code));
      return true;
    });
  } catch (const RuntimeError& error) {
    part.unreadable = error;
  }
  return part;
}

using Parts = std::span<const Part>;

// As many as none of which is known to fail.
Parts forOneTrip(Parts parts) {
  const auto unreadable =
      std::ranges::find_if(parts, [](const Part& part) { return part.unreadable.has_value(); });
  const std::ptrdiff_t count = unreadable - parts.begin();
  return unreadable == parts.end() ? parts : parts.first(static_cast<std::size_t>(count) + 1);
}

// Which of them has the statement at that place; the last one for what failed behind them all.
std::size_t partWith(Parts parts, std::size_t place) {
  std::size_t part = 0;
  for (; part + 1 < parts.size() && place >= parts[part].statements.size(); ++part)
    place -= parts[part].statements.size();
  return part;
}

Connection::Written write(Parts parts, Then then) {
  std::vector<std::string> statements;
  for (const Part& part : parts)
    statements.insert(statements.end(), part.statements.begin(), part.statements.end());
  return DatabaseConnection.WriteAll(statements, then);
}

// Writes all parts and commits, or goes on behind a list that failed so that the others are tried.
// Whether the transaction has ended.
bool writeParts(const std::vector<Part>& all, int& result, std::string& message) {
  for (Parts left = all; !left.empty();) {
    const Parts now = forOneTrip(left);
    const auto& unreadable = now.back().unreadable;
    const bool isLast = now.size() == left.size() && !unreadable && result == kDone;
    const Connection::Written written = write(now, isLast ? Then::commit : Then::stay);
    std::size_t done = now.size();
    if (written.refusal && !written.isEnded) done = partWith(now, written.rows.size()) + 1;
    const auto& failure = written.refusal ? written.refusal : unreadable;
    if (failure) message = failure->text();
    if (written.isEnded) {
      if (failure) result = kDatabaseError;
      return true;
    }
    const bool isFirst = left.size() == all.size() && done == 1;
    if (failure) result = written.refusal && !isFirst ? kNothingTouched : kDatabaseError;
    if (failure && isFirst) return false;
    left = left.subspan(done);
  }
  return false;
}

}  // namespace

int insertInTransaction(const std::string& statement, std::span<const WantedDetails> details,
                        const std::function<void()>& stored, std::string& message) {
  int result = kDone;
  Trap trap(result, message);
  trap.begin();
  std::vector<Part> parts{{.statements = {statement}}};
  for (const WantedDetails& list : details) parts.push_back(partOf(list));
  bool isEnded = false;
  trap([&] { isEnded = writeParts(parts, result, message); });
  if (isEnded)
    stored();
  else
    trap.rollback();
  return result;
}

int insertRow(const std::string& statement, std::string& message) {
  return insertInTransaction(
      statement, {}, [] {}, message);
}

namespace {

// Commits when rows were touched, else rolls back and says so.
void endChange(std::int64_t records, const char* touchedNothing, int& result,
               std::string& message) {
  Trap trap(result, message);
  if (result != kDone) return trap.rollback();
  if (records != 0) return trap.commit();
  result = kNothingTouched;
  message = touchedNothing;
  trap.rollback();
}

}  // namespace

void finishChange(const std::string& statement, const char* touchedNothing, int& result,
                  std::string& message) {
  const std::int64_t records = result == kDone ? Trap(result, message).execute(statement) : 0;
  endChange(records, touchedNothing, result, message);
}

int changeRecord(const std::string& statement, const char* touchedNothing, std::string& message) {
  int result = kDone;
  Trap trap(result, message);
  trap.begin();
  const std::int64_t records = trap.execute(statement);
  endChange(records, touchedNothing, result, message);
  return result;
}

int insertDetail(const std::string& statement, std::string& message) {
  int result = kDone;
  Trap(result, message).execute(statement);
  return result;
}

int deleteDetail(const std::string& statement, const char* touchedNothing, std::string& message) {
  int result = kDone;
  const std::int64_t records = Trap(result, message).execute(statement);
  if (result == kDone && records == 0) {
    result = kNothingTouched;
    message = touchedNothing;
  }
  return result;
}

void updateDetails(const RecordSetRef& stored, const char* column, const std::string& wanted,
                   const DetailCalls& calls, int& result, std::string& message) {
  if (result != kDone) return;
  Trap trap(result, message);
  trap([&] {
    if (!reconcileDetails(stored, column, wanted, calls)) result = kDetailFailed;
  });
}

namespace {

// The statements of a change, and what is told when one that matched no row should have.
struct Change {
  std::vector<std::string> statements;
  std::vector<const char*> touchedNothing;
  std::optional<RuntimeError> unreadable;  // a list, behind them: the record's own is not there

  void add(const std::string& statement, const char* told) {
    statements.push_back(statement);
    touchedNothing.push_back(told);
  }
};

// The first that matched nothing or was refused.
void tellFailure(const Change& change, const Connection::Written& written, int& result,
                 std::string& message) {
  std::size_t place = 0;
  while (place < written.rows.size() &&
         (written.rows[place] > 0 || change.touchedNothing[place] == nullptr))
    ++place;
  const bool isRefused = place == written.rows.size();
  if (isRefused && !written.refusal) {
    if (!change.unreadable) return;
    result = kDatabaseError;
    message = change.unreadable->text();
    return;
  }
  const bool isOwn = !change.unreadable && place + 1 == change.statements.size();
  message = isRefused ? written.refusal->text() : change.touchedNothing[place];
  result = !isOwn ? kDetailFailed : isRefused ? kDatabaseError : kNothingTouched;
}

}  // namespace

int updateWithDetails(const std::function<void(const AddStatement& add)>& details,
                      const std::string& statement, const char* touchedNothing,
                      std::string& message) {
  Change change;
  try {
    details([&](const std::string& one, const char* told) { change.add(one, told); });
    change.add(statement, touchedNothing);
  } catch (const RuntimeError& error) {
    change.unreadable = error;
  }
  int result = kDone;
  Trap trap(result, message);
  trap.begin();
  trap([&] {
    tellFailure(change, DatabaseConnection.WriteAll(change.statements), result, message);
  });
  if (result == kDone)
    trap.commit();
  else
    trap.rollback();
  return result;
}

}  // namespace bw
