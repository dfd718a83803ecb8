#include "controls/RowDelegate.h"

#include <QHelpEvent>
#include <QPainter>
#include <QTableView>
#include <QToolTip>

namespace bw {

RowDelegate::RowDelegate(QTableView* view) : QStyledItemDelegate(view), view_(view) {}

void RowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const {
  QStyleOptionViewItem plain = option;
  plain.state &= ~QStyle::State_HasFocus;
  QStyledItemDelegate::paint(painter, plain, index);
  if (!view_->hasFocus() || view_->currentIndex().row() != index.row()) return;
  const bool lit = (option.state & QStyle::State_Selected) != 0;
  painter->setPen(
      QPen(lit ? option.palette.highlightedText().color() : option.palette.highlight().color(), 1,
           Qt::DotLine));
  painter->drawLine(option.rect.topLeft(), option.rect.topRight());
  painter->drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
}

bool RowDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                            const QStyleOptionViewItem& option, const QModelIndex& index) {
  if (event->type() != QEvent::ToolTip || !index.isValid())
    return QStyledItemDelegate::helpEvent(event, view, option, index);
  const bool cut = sizeHint(option, index).width() > option.rect.width();
  const QString mark = index.data(Qt::ToolTipRole).toString();
  QStringList words;
  if (cut || !mark.isEmpty()) words << index.data().toString();
  if (!mark.isEmpty()) words << mark;
  QToolTip::showText(event->globalPos(), words.join(", ").toHtmlEscaped(), view, option.rect);
  return true;
}

}  // namespace bw
