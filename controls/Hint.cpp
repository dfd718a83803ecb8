#include "controls/Hint.h"

#include <QAbstractScrollArea>
#include <QAccessible>
#include <QEvent>
#include <algorithm>

namespace bw {
namespace {

QRect insideOf(QWidget* widget) {
  auto* area = qobject_cast<QAbstractScrollArea*>(widget);
  return area == nullptr ? widget->rect() : area->viewport()->geometry();
}

}  // namespace

Hint::Hint(QWidget* anchor, Place place)
    : QLabel(place == Place::insideBelow ? anchor : anchor->window()), anchor_(anchor),
      place_(place) {
  setTextFormat(Qt::PlainText);
  setFrameStyle(QFrame::Box | QFrame::Plain);
  setAutoFillBackground(true);
  setForegroundRole(QPalette::ToolTipText);
  setBackgroundRole(QPalette::ToolTipBase);
  setMargin(2);
  hide();
  anchor_->installEventFilter(this);
}

void Hint::say(const QString& text) {
  setVisible(!text.isEmpty());
  if (text.isEmpty()) return;
  // A control is made before it is put into its window.
  if (place_ == Place::below && parentWidget() != anchor_->window()) {
    setParent(anchor_->window());
    show();
  }
  setText(text);
  setAccessibleName(text);
  put();
  raise();
  QAccessibleEvent told(this, QAccessible::NameChanged);
  QAccessible::updateAccessibility(&told);
}

void Hint::leaveFree(const QRect& place) {
  free_ = place;
  put();
}

// Words that are too long for one line go on in the next.
void Hint::fit(int most) {
  setWordWrap(false);
  adjustSize();
  if (width() <= most) return;
  setWordWrap(true);
  resize(most, heightForWidth(most));
}

void Hint::putInside() {
  const QRect within = insideOf(anchor_);
  fit(within.width());
  move(within.right() - width() + 1, within.bottom() - height() + 1);
  if (geometry().intersects(free_)) move(x(), within.top());
}

void Hint::put() {
  if (place_ == Place::insideBelow) return putInside();
  const QRect within = parentWidget()->rect();
  fit(within.width());
  const QPoint corner = anchor_->mapTo(parentWidget(), QPoint(0, anchor_->height()));
  const int above = corner.y() - anchor_->height() - height();
  const bool lowerHalf = corner.y() > within.height() / 2;
  const bool fits = corner.y() + height() <= within.height();
  move(std::clamp(corner.x(), 0, within.width() - width()),
       fits && !(lowerHalf && above >= 0) ? corner.y() : std::max(0, above));
}

bool Hint::eventFilter(QObject* watched, QEvent* event) {
  const bool moved = event->type() == QEvent::Resize || event->type() == QEvent::Move;
  if (moved && isVisible()) put();
  if (event->type() == QEvent::Hide) hide();
  return QLabel::eventFilter(watched, event);
}

}  // namespace bw
