#include "data/Writing.h"

namespace bw {

int insertInTransaction(const std::string& statement, const std::function<void(int&)>& details,
                        const std::function<void()>& stored, std::string& message) {
  int result = kDone;
  Trap trap(result, message);
  trap.begin();
  trap.execute(statement);
  if (result == kDone) details(result);
  if (result != kDone) {
    trap.rollback();
    return result;
  }
  stored();
  trap.commit();
  return result;
}

int insertRow(const std::string& statement, std::string& message) {
  return insertInTransaction(
      statement, noDetails, [] {}, message);
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

void insertDetails(const std::string& codes, const std::function<int(std::int16_t)>& insert,
                   int& result, std::string& message) {
  Trap trap(result, message);
  trap([&] {
    const bool all = forEachCode(codes, [&](std::int16_t code) { return insert(code) == kDone; });
    if (!all) result = kNothingTouched;
  });
}

void updateDetails(const RecordSetRef& stored, const char* column, const std::string& wanted,
                   const DetailCalls& calls, int& result, std::string& message) {
  if (result != kDone) return;
  Trap trap(result, message);
  trap([&] {
    if (!reconcileDetails(stored, column, wanted, calls)) result = kDetailFailed;
  });
}

}  // namespace bw
