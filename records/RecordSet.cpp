#include "records/RecordSet.h"

#include <algorithm>
#include <numeric>

#include "text/Conversions.h"

namespace bw {

std::size_t FieldRef::in(const RowStore& store) const {
  if (!byIndex_) return store.indexOf(name_);
  if (index_ >= store.columns.size()) throw RuntimeError(ErrorNumber::noSuchItem);
  return index_;
}

RecordSet::RecordSet(std::shared_ptr<RowStore> store, LockType lock)
    : store_(std::move(store)), lock_(lock) {
  view_.resize(store_->rowCount());
  std::iota(view_.begin(), view_.end(), 0U);
  standAt(0);
}

void RecordSet::Close() noexcept {
  edit_.reset();
  store_.reset();
  view_ = {};
}

const RowStore& RecordSet::store() const {
  if (!store_) throw RuntimeError(ErrorNumber::closed);
  return *store_;
}

RowStore& RecordSet::store() {
  if (!store_) throw RuntimeError(ErrorNumber::closed);
  return *store_;
}

bool RecordSet::BOF() const { return (void)store(), place_.at == At::bof || view_.empty(); }

bool RecordSet::EOF_() const {
  (void)store();
  if (place_.at == At::eof) return true;
  return view_.empty() && place_.at != At::outside && !edit_;
}

std::ptrdiff_t RecordSet::RecordCount() const { return (void)store(), std::ssize(view_); }

std::ptrdiff_t RecordSet::AbsolutePosition() const {
  (void)store();
  if (edit_ && edit_->isNew) return -1;
  switch (place_.at) {
    case At::row:
      return static_cast<std::ptrdiff_t>(place_.index) + 1;
    case At::bof:
      return -2;
    case At::eof:
      return view_.empty() ? -1 : -3;
    default:
      return -1;
  }
}

void RecordSet::setAbsolutePosition(std::ptrdiff_t position) {
  completeEdit();
  if (position < 1) throw RuntimeError(ErrorNumber::badArguments);
  standAt(static_cast<std::size_t>(position) - 1);
}

void RecordSet::MoveFirst() {
  completeEdit();
  if (view_.empty()) throw RuntimeError(ErrorNumber::noCurrentRecord);
  standAt(0);
}

void RecordSet::MoveNext() {
  completeEdit();
  switch (place_.at) {
    case At::eof:
      throw RuntimeError(ErrorNumber::noCurrentRecord);
    case At::bof:
      return standAt(0);
    case At::row:
      return standAt(place_.index + 1);
    default:
      return standAt(place_.index);  // the row that followed has moved up
  }
}

// The row at that index of the view, or EOF behind the last one.
void RecordSet::standAt(std::size_t index) {
  if (index < view_.size())
    place_ = {At::row, index, view_[index]};
  else
    place_ = {At::eof, view_.size(), 0};
}

void RecordSet::requireCurrent() const {
  (void)store();
  if (edit_ && edit_->isNew) return;
  if (place_.at != At::row && place_.at != At::outside)
    throw RuntimeError(ErrorNumber::noCurrentRecord);
}

void RecordSet::requireWritable() const {
  (void)store();
  if (lock_ == LockType::readOnly) throw RuntimeError(ErrorNumber::readOnly);
}

Value RecordSet::stored(std::size_t column) const {
  if (edit_) {
    const auto pending = std::find_if(edit_->values.begin(), edit_->values.end(),
                                      [&](const auto& entry) { return entry.first == column; });
    if (pending != edit_->values.end()) return pending->second;
    if (edit_->isNew) return {};
  }
  return store().columns[column].value(place_.row);
}

Value RecordSet::value(FieldRef field) const {
  const std::size_t column = field.in(store());
  requireCurrent();
  return stored(column);
}

bool RecordSet::isNull(FieldRef field) const { return bw::isNull(value(field)); }
std::string RecordSet::text(FieldRef field) const { return textOf(value(field)); }
std::string RecordSet::textOrEmpty(FieldRef field) const { return bw::textOrEmpty(value(field)); }

std::int32_t RecordSet::integer(FieldRef field) const {
  const Value found = value(field);
  if (const auto* number = std::get_if<std::int64_t>(&found)) return toInt32(*number);
  return toInt32(textOf(found));
}

std::int16_t RecordSet::code(FieldRef field) const {
  return toInt16(static_cast<std::int64_t>(integer(field)));
}

Date RecordSet::date(FieldRef field) const {
  const Value found = value(field);
  if (bw::isNull(found)) throw RuntimeError(ErrorNumber::invalidNull);
  if (const auto* date = std::get_if<Date>(&found)) return *date;
  if (const auto* moment = std::get_if<DateTime>(&found)) return moment->date;
  throw RuntimeError(ErrorNumber::typeMismatch);
}

TimeOfDay RecordSet::time(FieldRef field) const {
  const Value found = value(field);
  if (bw::isNull(found)) throw RuntimeError(ErrorNumber::invalidNull);
  if (const auto* time = std::get_if<TimeOfDay>(&found)) return *time;
  if (const auto* moment = std::get_if<DateTime>(&found)) return moment->time;
  throw RuntimeError(ErrorNumber::typeMismatch);
}

void RecordSet::set(FieldRef field, const Value& value) {
  requireWritable();
  const std::size_t column = field.in(store());
  requireCurrent();
  Value converted = convertedTo(store().columns[column].type(), value);
  if (!edit_) edit_.emplace(false);
  for (auto& [edited, pending] : edit_->values) {
    if (edited != column) continue;
    pending = std::move(converted);
    return;
  }
  edit_->values.emplace_back(column, std::move(converted));
}

void RecordSet::AddNew() {
  requireWritable();
  completeEdit();
  edit_.emplace(true);
}

void RecordSet::Update() {
  (void)store();
  if (!edit_) return;
  requireWritable();
  const Edit edit = std::move(*edit_);
  edit_.reset();
  std::uint32_t row = place_.row;
  if (edit.isNew) {
    row = static_cast<std::uint32_t>(store().rowCount());
    for (Column& column : store().columns) column.appendNull();
    if (!gone_.empty()) gone_.push_back(false);
  }
  for (const auto& [column, value] : edit.values) store().set(row, column, value);
  if (edit.isNew) place_ = {At::outside, view_.size(), row};
  settle(row);
}

void RecordSet::completeEdit() {
  (void)store();
  if (edit_) Update();
}

void RecordSet::removeFromView() {
  if (place_.at == At::row) view_.erase(view_.begin() + static_cast<std::ptrdiff_t>(place_.index));
}

// Whether the current row is in order with its neighbours, so that it can stay: moving it costs
// as much as the view is long.
bool RecordSet::standsRight() const {
  const RowOrder precedes(*store_, sort_);
  const std::size_t at = place_.index;
  return (at == 0 || precedes(view_[at - 1], place_.row)) &&
         (at + 1 == view_.size() || precedes(place_.row, view_[at + 1]));
}

// Puts the current row where Filter and Sort want it after a change.
void RecordSet::settle(std::uint32_t row) {
  if (place_.at == At::row && (!filter_ || filter_->passes(row)) && standsRight()) return;
  removeFromView();
  if (filter_ && !filter_->passes(row)) {
    place_ = {At::outside, place_.index, row};
    return;
  }
  const auto at = std::upper_bound(view_.begin(), view_.end(), row, RowOrder(*store_, sort_));
  place_ = {At::row, static_cast<std::size_t>(at - view_.begin()), row};
  // By a little: an insertion costs as much as growing, and half of a view of a million is memory.
  if (view_.size() == view_.capacity()) view_.reserve(view_.size() + view_.size() / 16 + 16);
  view_.insert(view_.begin() + static_cast<std::ptrdiff_t>(place_.index), row);
}

void RecordSet::Delete() {
  requireWritable();
  requireCurrent();
  if (edit_ && edit_->isNew) {  // it never was
    edit_.reset();
    return;
  }
  edit_.reset();
  if (gone_.empty()) gone_.resize(store().rowCount());
  gone_[place_.row] = true;
  removeFromView();
  place_.at = At::deleted;
}

void RecordSet::Find(std::string_view criterion) {
  completeEdit();
  const Clause clause = parseClause(criterion);
  const RowFilter wanted(store(), clause);
  if (place_.at == At::eof) return;
  const std::size_t from = place_.at == At::bof ? 0 : place_.index;
  const auto found = std::find_if(view_.begin() + static_cast<std::ptrdiff_t>(from), view_.end(),
                                  [&](std::uint32_t row) { return wanted.passes(row); });
  standAt(static_cast<std::size_t>(found - view_.begin()));
}

void RecordSet::setFilter(std::string_view filter) {
  completeEdit();
  const Criteria criteria = parseCriteria(filter);
  std::optional<RowFilter> bound;
  if (!criteria.empty()) bound.emplace(store(), criteria);
  filter_ = std::move(bound);
  filterText_ = filter;
  view_.clear();
  for (std::uint32_t row = 0; row < store().rowCount(); ++row)
    if ((gone_.empty() || !gone_[row]) && (!filter_ || filter_->passes(row))) view_.push_back(row);
  order(sort_);
  standAt(0);
}

// Orders a view that stands in load order.
void RecordSet::order(const std::vector<BoundSort>& keys) {
  for (auto key = keys.rbegin(); key != keys.rend(); ++key) sortStably(view_, *store_, *key);
}

void RecordSet::setSort(std::string_view sort) {
  completeEdit();
  std::vector<BoundSort> keys;
  for (const SortKey& key : parseSort(sort))
    keys.push_back({store().indexOf(key.name), key.descending});
  // Without a row of its own in the view, the place is in front of the row that follows.
  const bool marked = place_.index < view_.size();
  const std::uint32_t mark = marked ? view_[place_.index] : 0;
  if (isHeadOf(keys, sort_)) {
    // Rows that are equal in the new first key stand as the others want them already.
    sortStably(view_, store(), keys.front());
  } else {
    std::sort(view_.begin(), view_.end());
    order(keys);
  }
  sort_ = std::move(keys);
  sortText_ = sort;
  const auto at = marked ? std::find(view_.begin(), view_.end(), mark) : view_.end();
  place_.index = static_cast<std::size_t>(at - view_.begin());
}

const std::string& RecordSet::fieldName(std::size_t index) const {
  return store().columns[FieldRef(index).in(store())].name();
}

std::optional<std::uint32_t> RecordSet::currentRow() const {
  requireCurrent();
  return edit_ ? std::nullopt : std::optional(place_.row);
}

const std::vector<std::uint32_t>& RecordSet::view() const { return (void)store(), view_; }

}  // namespace bw
