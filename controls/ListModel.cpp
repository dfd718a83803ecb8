#include "controls/ListModel.h"

#include <algorithm>
#include <numeric>

#include "controls/QtText.h"
#include "records/RowMark.h"
#include "text/RuntimeError.h"

namespace bw {
namespace {

// The field of each column.
std::vector<std::ptrdiff_t> fieldsOf(const std::vector<ListColumn>& columns,
                                     const RowStore& store) {
  std::vector<std::ptrdiff_t> fields;
  fields.reserve(columns.size());
  for (const ListColumn& column : columns)
    fields.push_back(column.key.empty() ? -1
                                        : static_cast<std::ptrdiff_t>(store.indexOf(column.key)));
  return fields;
}

std::vector<bool> ticks(const RowStore& store, const std::vector<std::uint32_t>& rows) {
  std::vector<bool> ticked(rows.size());
  const auto field = store.find("checked");
  if (!field) return ticked;
  const Column& column = store.columns[*field];
  for (std::size_t i = 0; i < rows.size(); ++i) ticked[i] = column.raw(rows[i]) == 1;
  return ticked;
}

}  // namespace

ListModel::ListModel(std::vector<ListColumn> columns, bool checkBoxes)
    : columns_(std::move(columns)), checkBoxes_(checkBoxes), fields_(columns_.size(), -1) {}

void ListModel::fill(std::shared_ptr<const RowStore> store,
                     const std::vector<std::uint32_t>& rows) {
  std::vector<std::ptrdiff_t> fields = fieldsOf(columns_, *store);
  if (fields.front() >= 0) {
    const Column& first = store->columns[static_cast<std::size_t>(fields.front())];
    if (first.mayHoldNull() &&
        std::any_of(rows.begin(), rows.end(), [&](std::uint32_t row) { return first.isNull(row); }))
      throw RuntimeError(ErrorNumber::invalidNull);
  }
  beginResetModel();
  fields_ = std::move(fields);
  rows_ = rows;
  checked_ = checkBoxes_ ? ticks(*store, rows) : std::vector<bool>();
  positions_.clear();
  firstTexts_.clear();
  store_ = std::move(store);
  endResetModel();
}

void ListModel::remove(int row) {
  if (positions_.empty()) {
    positions_.resize(rows_.size());
    std::iota(positions_.begin(), positions_.end(), 1U);
  }
  beginRemoveRows({}, row, row);
  rows_.erase(rows_.begin() + row);
  positions_.erase(positions_.begin() + row);
  if (checkBoxes_) checked_.erase(checked_.begin() + row);
  endRemoveRows();
}

std::ptrdiff_t ListModel::position(int row) const {
  return positions_.empty() ? row + 1 : std::ptrdiff_t{positions_[static_cast<std::size_t>(row)]};
}

int ListModel::rowAt(std::ptrdiff_t position) const {
  if (positions_.empty())
    return position >= 1 && position <= count() ? static_cast<int>(position) - 1 : -1;
  const auto found = std::find(positions_.begin(), positions_.end(), position);
  return found == positions_.end() ? -1 : static_cast<int>(found - positions_.begin());
}

QString ListModel::text(int row, int column) const {
  const std::uint32_t stored = rows_[static_cast<std::size_t>(row)];
  if (const QString* own = column == 0 ? ownText(stored) : nullptr) return *own;
  const Column* values = source(column);
  if (values == nullptr) return {};
  const std::int64_t raw = values->raw(stored);
  if (raw == Column::kNull) return {};
  return values->isText() ? toQt(values->textOfRaw(raw)) : toQt(textOf(values->value(stored)));
}

const Column* ListModel::source(int column) const {
  const std::ptrdiff_t field = fields_[static_cast<std::size_t>(column)];
  return field < 0 ? nullptr : &store_->columns[static_cast<std::size_t>(field)];
}

bool ListModel::looksLike(std::uint32_t one, std::uint32_t other) const {
  return std::all_of(fields_.begin(), fields_.end(), [&](std::ptrdiff_t field) {
    if (field < 0) return true;
    const Column& column = store_->columns[static_cast<std::size_t>(field)];
    return column.raw(one) == column.raw(other);
  });
}

QString ListModel::mark(int row) const {
  if (marks_.empty() || row < 0) return {};
  const std::uint32_t stored = rows_[static_cast<std::size_t>(row)];
  const auto alike = [&](std::uint32_t other) {
    return other != stored && looksLike(stored, other);
  };
  if (std::none_of(rows_.begin(), rows_.end(), alike)) return {};
  return toQt(markOf(*store_, stored, marks_));
}

const QString* ListModel::ownText(std::uint32_t stored) const {
  if (firstTexts_.empty()) return nullptr;
  const auto own = firstTexts_.find(stored);
  return own == firstTexts_.end() ? nullptr : &own->second;
}

void ListModel::setFirstText(int row, const QString& text) {
  firstTexts_[rows_[static_cast<std::size_t>(row)]] = text;
  emit dataChanged(index(row, 0), index(row, 0));
}

void ListModel::setChecked(int row, bool checked) {
  checked_[static_cast<std::size_t>(row)] = checked;
  emit dataChanged(index(row, 0), index(row, 0), {Qt::CheckStateRole});
}

int ListModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : count(); }

int ListModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
  if (role == Qt::DisplayRole || role == Qt::AccessibleTextRole)
    return text(index.row(), index.column());
  if (role == Qt::ToolTipRole) return mark(index.row());
  if (role == Qt::CheckStateRole && checkBoxes_ && index.column() == 0)
    return checked(index.row()) ? Qt::Checked : Qt::Unchecked;
  return {};
}

bool ListModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::CheckStateRole || !checkBoxes_) return false;
  const bool ticked = value.toInt() == Qt::Checked;
  setChecked(index.row(), ticked);
  if (onUserCheck) onUserCheck(index.row(), ticked);
  return true;
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) return {};
  if (role == Qt::DisplayRole) return toQt(columns_[static_cast<std::size_t>(section)].text);
  if (role == Qt::TextAlignmentRole) return QVariant(Qt::AlignLeft | Qt::AlignVCenter);
  return {};
}

Qt::ItemFlags ListModel::flags(const QModelIndex& index) const {
  Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
  if (checkBoxes_ && index.column() == 0) flags |= Qt::ItemIsUserCheckable;
  return flags;
}

}  // namespace bw
