#include "lists/EditedRecord.h"

#include "core/AsisRutinasRecordsets.h"
#include "core/Services.h"

namespace bw {

bool openRows(RecordSetRef& rows, const std::string& statement, const char* emptyMessage) {
  std::string message;
  if (OpenRecordset(rows, statement, message) != 0) return MsgBox(message), false;
  if (emptyMessage == nullptr || rows->RecordCount() > 0) return true;
  return MsgBox(emptyMessage), false;
}

bool foundRecord(const RecordSetRef& record) {
  if (record && record->RecordCount() > 0) return true;
  MsgBox("Record not found.  Please report this error!");
  return false;
}

}  // namespace bw
