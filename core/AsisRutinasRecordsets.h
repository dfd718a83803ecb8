#pragma once

#include <string>

#include "records/RecordSet.h"

namespace bw {

// Opens a statement as a record set of its own, cut off from the database, that can be written to.
// 0 on success. 1 on failure: `message` is the statement, a blank and the error's text, and
// `recordset` is left as it was.
int OpenRecordset(RecordSetRef& recordset, const std::string& statement, std::string& message);

// Copies between record sets, field by field of the same name. Whatever cannot be copied is passed
// over and the rest goes on.
// All rows of `source`, each as a new row of `target`; `source` ends at EOF.
void RecordsetCopyAll(const RecordSetRef& target, const RecordSetRef& source);
// The current row of `source` as a new row of `target`.
void RecordsetAppendFirst(const RecordSetRef& target, const RecordSetRef& source);
// The current row of `source` over the current row of `target`.
void RecordsetUpdateCurrent(const RecordSetRef& target, const RecordSetRef& source);

}  // namespace bw
