#include "controls/ElidedLine.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace bw {

ElidedLine::ElidedLine(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

bool ElidedLine::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QLabel::event(event);
  QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), text().toHtmlEscaped(), this);
  return true;
}

void ElidedLine::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter,
                   fontMetrics().elidedText(text(), Qt::ElideRight, width()));
}

}  // namespace bw
