#pragma once

#include <initializer_list>
#include <string>
#include <utility>

#include "controls/ListView.h"
#include "records/RecordSet.h"

namespace bw {

// The detail rows of a record while a dialog is open, and the list that shows them. The field
// `checked` of a row is what is to become of it when the dialog is confirmed.
namespace pending {
inline constexpr int kStored = 0;   // stays as it is
inline constexpr int kAdded = 1;    // not stored yet
inline constexpr int kRemoved = 2;  // stored, to be removed; shown with "*" in front
inline constexpr int kChanged = 3;  // stored, to be rewritten
}  // namespace pending

class WorkingList {
 public:
  explicit WorkingList(ListView& list) : list_(list) {}

  RecordSetRef rows;

  // Fills the list, with no row selected. Stars of rows to be removed are not shown again: the
  // texts are those of the record set.
  void fill();

  // Adds a row that is not stored yet. The list is not filled.
  void add(std::initializer_list<std::pair<const char*, Value>> fields);

  // The button "del": takes an added row out, marks a stored one to be removed, or takes its mark
  // back. Without a selected row nothing happens.
  // After a row was taken out the keys of the rows behind it keep their numbers, so that the next
  // "del" can meet another record than the row shows, or none (error 3021).
  void toggleSelected();

  // Calls f(state) at every row from the first to the last, the record set standing on it.
  template <class F>
  void forEach(F f) const {
    for (std::ptrdiff_t position = 1; position <= rows->RecordCount(); ++position) {
      rows->setAbsolutePosition(position);
      f(state());
    }
  }

  ListView& list() const { return list_; }

 private:
  int state() const;

  ListView& list_;
};

}  // namespace bw
