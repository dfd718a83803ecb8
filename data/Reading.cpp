#include "data/Reading.h"

#include "core/Services.h"
#include "text/Conversions.h"
#include "text/Text.h"

namespace bw {
namespace {

void tell(const RuntimeError& error, const std::string& statement, OnError onError) {
  if (onError == OnError::silent) return;
  MsgBox(onError == OnError::message ? error.text() : error.text() + statement);
}

}  // namespace

RecordSetRef readRecords(const std::string& statement, LockType lock, OnError onError) {
  try {
    return DatabaseConnection.Read(statement, lock);
  } catch (const RuntimeError& error) {
    tell(error, statement, onError);
    return {};
  }
}

std::int16_t nextCode(const std::string& statement, const char* column, std::int16_t first,
                      OnError onError) {
  try {
    const RecordSetRef highest = DatabaseConnection.Read(statement);
    return highest->RecordCount() == 0 ? first : add16(highest->code(column), 1);
  } catch (const RuntimeError& error) {
    tell(error, statement, onError);
    return 0;
  }
}

std::string highestBelow1000(const char* table, const char* column) {
  return concat("SELECT * FROM ", table, " WHERE ", column, " < 1000 ORDER BY ", column, " DESC");
}

}  // namespace bw
