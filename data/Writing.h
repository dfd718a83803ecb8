#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>

#include "core/Advice.h"
#include "core/Principal.h"
#include "data/CodeList.h"

namespace bw {

// Results of a writing routine. Nothing throws out of one: the caller shows the message.
inline constexpr int kDone = 0;
inline constexpr int kDatabaseError = 1;
inline constexpr int kNothingTouched = 2;  // in inserts: a detail row failed
inline constexpr int kDetailFailed = 3;    // in updates

// The error trap of a writing routine: a step that fails sets the result to 1 and the message to
// the error's text, the last one standing; the routine runs on to its own test of the result, so
// that its transaction is always ended.
class Trap {
 public:
  Trap(int& result, std::string& message) : result_(result), message_(message) {}

  template <class Step>
  void operator()(Step step) {
    try {
      step();
    } catch (const RuntimeError& error) {
      result_ = kDatabaseError;
      message_ = error.text();
    }
  }

  void begin() {
    (*this)([] { DatabaseConnection.BeginTrans(); });
  }
  void commit() {
    (*this)([] { DatabaseConnection.CommitTrans(); });
  }
  void rollback() {
    (*this)([] { DatabaseConnection.RollbackTrans(); });
  }
  // Rows matched; 0 after an error.
  std::int64_t execute(const std::string& statement) {
    std::int64_t records = 0;
    (*this)([&] { records = DatabaseConnection.Write(statement); });
    return records;
  }

 private:
  int& result_;
  std::string& message_;
};

// A list of details that goes with a record.
struct WantedDetails {
  const std::string& codes;
  std::function<std::string(std::int16_t code)> insert;  // the statement
};

// An insert with its details in a transaction of its own, in one trip to a server: 0, 1, or 2 when
// a detail failed. The first that fails ends its list; the lists behind it are tried all the same.
// A list that cannot be read is 1. `stored` is called when all ran: what it hands to the caller is
// there also when the commit fails.
int insertInTransaction(const std::string& statement, std::span<const WantedDetails> details,
                        const std::function<void()>& stored, std::string& message);

// An insert that allocates a code and hands it out in `codeOut`. `code` 0 means that none could be
// allocated: 1, and the message is left as it was.
template <class Code>
int insertRecord(Code code, Code& codeOut, const std::string& statement, std::string& message,
                 std::span<const WantedDetails> details = {}) {
  if (code == 0) return kDatabaseError;
  return insertInTransaction(
      statement, details, [&] { codeOut = code; }, message);
}

// An insert without a code of its own, in a transaction: 0 or 1.
int insertRow(const std::string& statement, std::string& message);

// An update or delete in a transaction of its own: 0, 1, or 2 with that text when no row matched.
int changeRecord(const std::string& statement, const char* touchedNothing, std::string& message);

// The end of an update whose transaction is open: runs the statement unless `result` tells of a
// failure before it, and commits or rolls back.
void finishChange(const std::string& statement, const char* touchedNothing, int& result,
                  std::string& message);

// Detail rows, inside the caller's transaction: 0, 1, or 2 with that text when no row matched.
int insertDetail(const std::string& statement, std::string& message);
int deleteDetail(const std::string& statement, const char* touchedNothing, std::string& message);

// Makes the stored details of a record agree with the wanted ones (see reconcileDetails), unless
// `result` tells of a failure before. A detail that fails sets it to 3; no `stored` at all, or a
// list that cannot be read, sets it to 1.
void updateDetails(const RecordSetRef& stored, const char* column, const std::string& wanted,
                   const DetailCalls& calls, int& result, std::string& message);

// An update of a record in a transaction of its own, with the changes of its details in the same
// trip to a server: `details` hands each statement on, with the text that tells that it matched no
// row (nullptr: it always does). The record's own goes last. 0, 1, 2 when that matched none, 3 when
// a detail failed; 1 also when `details` raises, for a list that cannot be read.
using AddStatement = std::function<void(const std::string& statement, const char* touchedNothing)>;
int updateWithDetails(const std::function<void(const AddStatement& add)>& details,
                      const std::string& statement, const char* touchedNothing,
                      std::string& message);

}  // namespace bw
