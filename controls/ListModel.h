#pragma once

#include <QAbstractTableModel>
#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

#include "records/RowStore.h"

namespace bw {

struct ListColumn {
  std::string key;  // the field that feeds it; a column without a key stays empty
  std::string text;
  double width = 1440;  // twips
};

// Rows of a store, in the order of one moment. Texts are read when they are asked for; the rows
// stay readable when the record set that they came from is closed.
class ListModel : public QAbstractTableModel {
 public:
  ListModel(std::vector<ListColumn> columns, bool checkBoxes);

  std::function<void(int row, bool checked)> onUserCheck;

  const std::vector<ListColumn>& columns() const noexcept { return columns_; }
  bool hasCheckBoxes() const noexcept { return checkBoxes_; }

  // A key that names no field raises 3265, no value in the first column 94; then nothing changes.
  void fill(std::shared_ptr<const RowStore> store, const std::vector<std::uint32_t>& rows);
  void remove(int row);
  int count() const noexcept { return static_cast<int>(rows_.size()); }

  // Position in the record set at the moment of filling, from 1; removals do not change it.
  std::ptrdiff_t position(int row) const;
  // The row that had that position, -1 when there is none.
  int rowAt(std::ptrdiff_t position) const;

  QString text(int row, int column) const;
  // For searches in what the list shows: the store's column that feeds that column, null when none
  // does; the rows of the store; and the text that stands by hand in the first column of one of
  // those.
  const Column* source(int column) const;
  const std::vector<std::uint32_t>& rows() const noexcept { return rows_; }
  const QString* ownText(std::uint32_t stored) const;
  bool hasOwnTexts() const noexcept { return !firstTexts_.empty(); }
  // The fields that tell rows apart which look the same, and what they say of a row; "" for one
  // that no other looks like. It looks at every row.
  void setMarks(std::vector<std::string> fields) { marks_ = std::move(fields); }
  QString mark(int row) const;
  void setFirstText(int row, const QString& text);
  void setChecked(int row, bool checked);
  bool checked(int row) const { return checked_[static_cast<std::size_t>(row)]; }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  bool looksLike(std::uint32_t one, std::uint32_t other) const;

  std::vector<ListColumn> columns_;
  std::vector<std::string> marks_;
  bool checkBoxes_;
  std::shared_ptr<const RowStore> store_;
  std::vector<std::ptrdiff_t> fields_;  // of the store, a column each; -1 for none
  std::vector<std::uint32_t> rows_;
  std::vector<std::uint32_t> positions_;                   // empty as long as no row was removed
  std::vector<bool> checked_;                              // of lists with check boxes
  std::unordered_map<std::uint32_t, QString> firstTexts_;  // set by hand, by row of the store
};

}  // namespace bw
