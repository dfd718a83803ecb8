#pragma once

#include <functional>
#include <string>

#include "controls/ListView.h"
#include "records/RecordSet.h"

namespace bw {

// What binds lists to record sets. A column shows the field that its key names.

// OpenRecordset for the list on show, under a busy pointer: many rows take seconds.
int openForList(RecordSetRef& recordset, const std::string& statement, std::string& message);

// Shows the record set in its present order and selects the first row; a list that can be sorted
// also shows by which column it is. The set stands at EOF afterwards. A column key that names no
// field raises 3265, no value in the first column 94.
void ListFill(ListView& list, const RecordSetRef& recordset);

void ListClearSelection(ListView& list);

// Moves a record set to the record of a row.
void moveToRow(const RecordSetRef& recordset, const ListView& list, int row);

// Brings one record that was stored into a list and selects it, without reading the list again:
// `statement` ends in WHERE, `criterion` is a condition fit for Find ("FacilityCode=7"). A record
// that the database does not deliver changes nothing; a failing statement is told in a message.
void ListRefreshRecord(const RecordSetRef& recordset, const std::string& statement,
                       const std::string& criterion, ListView& list);

// The second half of it: the record that `fresh` stands on goes over the record set's current
// row, or behind the last row when the set is at EOF; the list is filled and that row selected.
void mergeRecord(const RecordSetRef& recordset, const RecordSetRef& fresh, ListView& list);

// Takes the selected rows' records away and fills the list again: `remove` deletes the record of a
// row from the database and returns 0, or tells in `message` why it cannot. While that message
// stands the list shows the row, and the row stays.
using RemoveRow = std::function<int(int row, std::string& message)>;
void deleteSelected(const RecordSetRef& recordset, ListView& list, const RemoveRow& remove);

// Column positions and widths, kept under <key>Position and <key>Width of a settings section.
void ColumnLayoutRestore(ListView& list, const std::string& section);
void ColumnLayoutSave(const ListView& list, const std::string& section);

// A click on a column head: puts the column in front of the record set's sort keys, ascending, and
// fills the list again. `token` is how the column's key stands in the sort text.
void sortByColumn(const RecordSetRef& recordset, ListView& list, const std::string& token);

}  // namespace bw
