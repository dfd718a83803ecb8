#pragma once

#include <QStyledItemDelegate>

class QTableView;

namespace bw {

// Paints whole rows: the row with the focus is framed, not one cell of it. A text that its column
// cuts short is shown in full under the pointer, with what tells the row from one that looks alike.
class RowDelegate : public QStyledItemDelegate {
 public:
  explicit RowDelegate(QTableView* view);

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;
  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override;

 private:
  QTableView* view_;
};

}  // namespace bw
