#include "review/OfficeSnapshot.h"

#include "core/PassOver.h"
#include "core/Principal.h"

namespace bw {

OfficeSnapshot::OfficeSnapshot(int statements) : work_("Reading the office...", statements) {
  DatabaseConnection.BeginTrans(TransactionKind::snapshot);
}

// Nothing was written, so that an end that fails loses nothing.
OfficeSnapshot::~OfficeSnapshot() {
  passOver([] { DatabaseConnection.RollbackTrans(); });
}

Rows OfficeSnapshot::read(std::string_view statement) {
  Rows rows = DatabaseConnection.Read(statement, LockType::readOnly)->rows();
  work_.step();
  return rows;
}

}  // namespace bw
