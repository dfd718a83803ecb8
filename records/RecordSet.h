#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "records/Criteria.h"
#include "records/RowFilter.h"
#include "records/RowSort.h"
#include "records/RowStore.h"
#include "text/RuntimeError.h"

namespace bw {

enum class LockType { readOnly, optimistic };

// A field by name, without regard to case, or by index from 0. Unknown: 3265.
class FieldRef {
 public:
  FieldRef(std::string_view name) : name_(name) {}
  FieldRef(const char* name) : name_(name) {}
  FieldRef(const std::string& name) : name_(name) {}
  FieldRef(std::size_t index) : index_(index), byIndex_(true) {}

  std::size_t in(const RowStore& store) const;

 private:
  std::string_view name_;
  std::size_t index_ = 0;
  bool byIndex_ = false;
};

// A copy in memory of what a statement delivered, cut off from the database. It can be sorted,
// filtered, searched and written to; nothing written reaches the database.
//
// The view is the rows that pass Filter, in the order of Sort, ties in load order. One row of it
// is current, or the set stands before the first (BOF) or behind the last (EOF). A written row
// keeps its place in the view until Update. Every other operation that moves or rearranges
// completes a pending edit first. Field access, Delete and writes without a current row raise
// 3021; on a closed set everything raises 3704.
class RecordSet {
 public:
  RecordSet(std::shared_ptr<RowStore> store, LockType lock);

  void Close() noexcept;
  bool isOpen() const noexcept { return store_ != nullptr; }

  bool BOF() const;
  bool EOF_() const;  // EOF is a macro of the standard library
  std::ptrdiff_t RecordCount() const;

  // 1 to RecordCount; -1 when empty or unknown, -2 at BOF, -3 at EOF.
  std::ptrdiff_t AbsolutePosition() const;
  // Below 1 raises 3001; above the count stands at EOF.
  void setAbsolutePosition(std::ptrdiff_t position);

  void MoveFirst();  // on an empty set: 3021
  void MoveNext();   // at EOF: 3021

  Value value(FieldRef field) const;
  bool isNull(FieldRef field) const;
  std::string text(FieldRef field) const;         // default text; Null raises 94
  std::string textOrEmpty(FieldRef field) const;  // default text; "" for Null
  std::int32_t integer(FieldRef field) const;     // Null raises 94, text is converted
  std::int16_t code(FieldRef field) const;        // the same in 16 bits
  Date date(FieldRef field) const;                // Null raises 94
  TimeOfDay time(FieldRef field) const;

  // Opens an edit on the current row, or goes on with it. Read-only: 3251.
  void set(FieldRef field, const Value& value);
  void set(FieldRef field, const std::string& text) { set(field, Value(text)); }
  void set(FieldRef field, std::string_view text) { set(field, Value(std::string(text))); }
  void set(FieldRef field, const char* text) { set(field, Value(std::string(text))); }
  void set(FieldRef field, std::int32_t number) {
    set(field, Value(static_cast<std::int64_t>(number)));
  }

  void AddNew();
  void Update();
  void Delete();

  // Searches from the current row on, forward, in the view. Not found: EOF. At EOF nothing happens.
  void Find(std::string_view criterion);

  void setFilter(std::string_view filter);
  const std::string& Filter() const noexcept { return filterText_; }
  void setSort(std::string_view sort);
  const std::string& Sort() const noexcept { return sortText_; }  // exactly as it was set

  std::size_t fieldCount() const { return store().columns.size(); }
  const std::string& fieldName(std::size_t index) const;

  // The current row's number in rows(), for readers of many fields; nothing while an edit is
  // pending on it. Without a current row: 3021.
  std::optional<std::uint32_t> currentRow() const;

  // For lists, which read what they paint: the rows, and the view as row numbers of the store.
  // The view's reference is good until the next change.
  std::shared_ptr<const RowStore> rows() const { return (void)store(), store_; }
  const std::vector<std::uint32_t>& view() const;

 private:
  enum class At : std::uint8_t { row, bof, eof, deleted, outside };
  struct Place {
    At at = At::eof;
    std::size_t index = 0;  // in the view: of the row, or of the row that followed it
    std::uint32_t row = 0;  // of the store; for `row` and `outside`
  };
  struct Edit {
    explicit Edit(bool isNewRow) : isNew(isNewRow) {}
    bool isNew;
    std::vector<std::pair<std::size_t, Value>> values;
  };
  const RowStore& store() const;
  RowStore& store();
  void requireCurrent() const;
  void requireWritable() const;
  void standAt(std::size_t index);
  void completeEdit();
  void settle(std::uint32_t row);
  bool standsRight() const;
  void removeFromView();
  void order(const std::vector<BoundSort>& keys);
  Value stored(std::size_t column) const;

  std::shared_ptr<RowStore> store_;
  LockType lock_;
  std::vector<std::uint32_t> view_;
  std::vector<bool> gone_;  // deleted rows; empty as long as there are none
  Place place_;
  std::optional<Edit> edit_;
  std::string filterText_;
  std::string sortText_;
  std::optional<RowFilter> filter_;  // unset: every row passes
  std::vector<BoundSort> sort_;
};

// A reference to a record set, unset at first. Use of an unset one raises 91.
class RecordSetRef {
 public:
  RecordSetRef() = default;
  explicit RecordSetRef(std::shared_ptr<RecordSet> recordset) : recordset_(std::move(recordset)) {}

  explicit operator bool() const noexcept { return recordset_ != nullptr; }
  RecordSet* operator->() const { return &**this; }
  RecordSet& operator*() const {
    if (!recordset_) throw RuntimeError(ErrorNumber::objectNotSet);
    return *recordset_;
  }
  void reset() noexcept { recordset_.reset(); }
  // Closes the set, if there is one, and forgets it.
  void close() noexcept {
    if (recordset_) recordset_->Close();
    reset();
  }

 private:
  std::shared_ptr<RecordSet> recordset_;
};

}  // namespace bw
