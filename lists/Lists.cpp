#include "lists/Lists.h"

#include "controls/BusyCursor.h"
#include "controls/EscapeKey.h"
#include "core/AsisRutinasRecordsets.h"
#include "core/Principal.h"
#include "core/Services.h"
#include "engine/BreakableReading.h"
#include "lists/MainFrame.h"
#include "lists/Settings.h"
#include "text/BrokenOff.h"
#include "text/Conversions.h"
#include "text/Text.h"

namespace bw {
namespace {

// Of the first key of a sort text, which may stand between blanks; -1 for none.
int sortedColumn(const ListView& list, const std::string& sort) {
  const std::string key(Trim(std::string_view(sort).substr(0, sort.find(','))));
  for (int column = 0; column < list.columns(); ++column)
    if (!key.empty() && sameName(list.column(column).key, key)) return column;
  return -1;
}

}  // namespace

int openForList(RecordSetRef& recordset, const std::string& statement, std::string& message) {
  const BusyCursor busy;
  return OpenRecordset(recordset, statement, message);
}

// While the program starts there is nothing yet that could be put back.
int readAgain(RecordSetRef& recordset, const std::string& statement, std::string& message) {
  const bool wasShown = MainWindow != nullptr && MainWindow->isVisible();
  const BreakableReading breakable(wasShown ? watchEscape()() : nullptr);
  const std::function<void()> isNotRead =
      MainWindow != nullptr ? MainWindow->readsList(statement) : [] {};
  RecordSetRef fresh;
  const int failed = orPutBack([&] { return openForList(fresh, statement, message); }, isNotRead);
  if (recordset) recordset->Close();
  if (failed == 0) recordset = fresh;
  return failed;
}

void ListFill(ListView& list, const RecordSetRef& recordset) {
  const BusyCursor busy;
  const std::ptrdiff_t count = recordset->RecordCount();  // completes nothing, but tells if closed
  if (count > 0) recordset->setAbsolutePosition(count + 1);
  list.setUpdatesEnabled(false);
  try {
    list.fill(recordset->rows(), recordset->view());
  } catch (...) {
    list.setUpdatesEnabled(true);
    throw;
  }
  if (list.count() > 0) list.setSelected(0, true);
  if (list.onColumnClick) list.showSorted(sortedColumn(list, recordset->Sort()));
  list.setUpdatesEnabled(true);
}

void ListClearSelection(ListView& list) { list.clearSelected(); }

void moveToRow(const RecordSetRef& recordset, const ListView& list, int row) {
  recordset->setAbsolutePosition(list.position(row));
}

void ListRefreshRecord(const RecordSetRef& recordset, const std::string& statement,
                       const std::string& criterion, ListView& list) {
  RecordSetRef fresh;
  std::string message;
  if (OpenRecordset(fresh, statement + " " + criterion, message) != 0) return MsgBox(message);
  if (fresh->RecordCount() == 0) return;
  if (recordset->RecordCount() > 0) {
    recordset->MoveFirst();
    recordset->Find(criterion);
  }
  mergeRecord(recordset, fresh, list);
}

void mergeRecord(const RecordSetRef& recordset, const RecordSetRef& fresh, ListView& list) {
  if (recordset->EOF_())
    RecordsetAppendFirst(recordset, fresh);
  else
    RecordsetUpdateCurrent(recordset, fresh);
  const std::ptrdiff_t position = recordset->AbsolutePosition();
  ListFill(list, recordset);
  recordset->setAbsolutePosition(position);
  ListClearSelection(list);
  const int row = list.rowAt(recordset->AbsolutePosition());
  list.setSelected(row, true);
  list.ensureVisible(row);
}

// From the last row on: the positions of those that are yet to come stay true.
void deleteSelected(const RecordSetRef& recordset, ListView& list, const RemoveRow& remove) {
  for (const int row : list.selectedFromLast()) {
    std::string message;
    if (remove(row, message) == 0) {
      recordset->Delete();
      continue;
    }
    list.clearSelected();
    list.setSelected(row, true);
    list.ensureVisible(row);
    MsgBox(message);
    if (DatabaseConnection.isLost()) break;
  }
  ListFill(list, recordset);
}

// Positions are set one after another, each moving the other columns along. That does not give
// back every order; the users' stored layouts are read so.
void ColumnLayoutRestore(ListView& list, const std::string& section) {
  for (int i = 0; i < list.columns(); ++i) {
    const std::string& key = list.column(i).key;
    list.setPosition(i, toInt16(GetSetting(kApplicationTitle, section, key + "Position",
                                           concat(list.Position(i)))));
    list.setWidth(
        i, toSingle(GetSetting(kApplicationTitle, section, key + "Width", textOf(list.Width(i)))));
  }
}

void ColumnLayoutSave(const ListView& list, const std::string& section) {
  for (int i = 0; i < list.columns(); ++i) {
    const std::string& key = list.column(i).key;
    SaveSetting(kApplicationTitle, section, key + "Position", concat(list.Position(i)));
    SaveSetting(kApplicationTitle, section, key + "Width", textOf(list.Width(i)));
  }
}

void sortByColumn(const RecordSetRef& recordset, ListView& list, const std::string& token) {
  const std::string sort = recordset->Sort();
  const auto at = static_cast<std::ptrdiff_t>(InStr(sort, token));
  std::string next = sort;
  if (at > 1) {
    // The comma in front of the token goes with it.
    next = token + "," + Left(sort, at - 2) +
           Mid(sort, at + static_cast<std::ptrdiff_t>(length(token)));
  } else if (at == 0) {
    next = sort.empty() ? token : token + "," + sort;
  }
  const BusyCursor busy;
  recordset->setSort(next);
  ListFill(list, recordset);
}

}  // namespace bw
