#pragma once

#include <cstdint>
#include <functional>
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

// An insert in a transaction of its own: 0, 1, or what `details` sets its argument to, which it is
// called with once the statement ran. `stored` is called before the commit: what it hands to the
// caller is there also when the commit fails.
int insertInTransaction(const std::string& statement, const std::function<void(int&)>& details,
                        const std::function<void()>& stored, std::string& message);

inline void noDetails(int&) {}

// An insert that allocates a code and hands it out in `codeOut`. `code` 0 means that none could be
// allocated: 1, and the message is left as it was.
template <class Code>
int insertRecord(Code code, Code& codeOut, const std::string& statement, std::string& message,
                 const std::function<void(int&)>& details = noDetails) {
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

// Inserts the details of a new record. The first that fails ends the list and sets `result` to 2; a
// list that cannot be read sets it to 1.
void insertDetails(const std::string& codes, const std::function<int(std::int16_t)>& insert,
                   int& result, std::string& message);

// Makes the stored details of a record agree with the wanted ones (see reconcileDetails), unless
// `result` tells of a failure before. A detail that fails sets it to 3; no `stored` at all, or a
// list that cannot be read, sets it to 1.
void updateDetails(const RecordSetRef& stored, const char* column, const std::string& wanted,
                   const DetailCalls& calls, int& result, std::string& message);

}  // namespace bw
