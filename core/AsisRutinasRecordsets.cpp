#include "core/AsisRutinasRecordsets.h"

#include "core/PassOver.h"
#include "core/Principal.h"

namespace bw {
namespace {

void copyFields(RecordSet& target, RecordSet& source) {
  for (std::size_t i = 0; i < target.fieldCount(); ++i)
    passOver([&] { target.set(i, source.value(target.fieldName(i))); });
}

bool hasRows(const RecordSetRef& source) {
  bool rows = false;
  passOver([&] { rows = source->RecordCount() > 0; });
  return rows;
}

}  // namespace

int OpenRecordset(RecordSetRef& recordset, const std::string& statement, std::string& message) {
  try {
    recordset = DatabaseConnection.Read(statement);
    return 0;
  } catch (const RuntimeError& error) {
    message = statement + " " + error.text();
    return 1;
  }
}

void RecordsetCopyAll(const RecordSetRef& target, const RecordSetRef& source) {
  if (!hasRows(source)) return;
  passOver([&] {
    for (source->MoveFirst(); !source->EOF_(); source->MoveNext())
      RecordsetAppendFirst(target, source);
  });
}

void RecordsetAppendFirst(const RecordSetRef& target, const RecordSetRef& source) {
  if (!hasRows(source)) return;
  passOver([&] { target->AddNew(); });
  passOver([&] { copyFields(*target, *source); });
  passOver([&] { target->Update(); });
}

void RecordsetUpdateCurrent(const RecordSetRef& target, const RecordSetRef& source) {
  if (!hasRows(source)) return;
  passOver([&] { copyFields(*target, *source); });
  passOver([&] { target->Update(); });
}

}  // namespace bw
