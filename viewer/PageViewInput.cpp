#include <QGestureEvent>
#include <QKeyEvent>
#include <QNativeGestureEvent>
#include <QPinchGesture>
#include <QScrollBar>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "viewer/PageView.h"

// Keys, mouse, wheel and gestures.

namespace bw {
namespace {

constexpr int kDragScrollTime = 30;  // milliseconds between steps of a drag beyond the edge

}  // namespace

bool PageView::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::Gesture) return pinch(*static_cast<QGestureEvent*>(event));
  if (event->type() == QEvent::ToolTip) {
    const auto* help = static_cast<QHelpEvent*>(event);
    QToolTip::showText(help->globalPos(), cutTextAt(help->pos()), viewport());
    return true;
  }
  if (event->type() == QEvent::NativeGesture) {
    const auto* gesture = static_cast<QNativeGestureEvent*>(event);
    if (gesture->gestureType() == Qt::ZoomNativeGesture) {
      fit_ = Fit::none;
      zoomAround(zoom_ * (1 + gesture->value()), gesture->position().toPoint());
      return true;
    }
  }
  return QAbstractScrollArea::viewportEvent(event);
}

bool PageView::pinch(QGestureEvent& event) {
  const auto* gesture = static_cast<QPinchGesture*>(event.gesture(Qt::PinchGesture));
  if (gesture == nullptr) return false;
  if (gesture->changeFlags().testFlag(QPinchGesture::ScaleFactorChanged)) {
    fit_ = Fit::none;
    zoomAround(zoom_ * gesture->scaleFactor(),
               viewport()->mapFromGlobal(gesture->centerPoint().toPoint()));
  }
  return true;
}

void PageView::wheelEvent(QWheelEvent* event) {
  if (!event->modifiers().testFlag(Qt::ControlModifier)) {
    QAbstractScrollArea::wheelEvent(event);
    return;
  }
  constexpr double kNotch = 120;
  fit_ = Fit::none;
  zoomAround(zoom_ * std::pow(1.15, event->angleDelta().y() / kNotch), event->position().toPoint());
  event->accept();
}

void PageView::keyPressEvent(QKeyEvent* event) {
  QScrollBar* bar = verticalScrollBar();
  const bool shift = event->modifiers().testFlag(Qt::ShiftModifier);
  switch (event->key()) {
    case Qt::Key_Home:
      goToPage(1);
      break;
    case Qt::Key_End:
      bar->setValue(bar->maximum());
      setCurrent(layout_.pages);
      break;
    case Qt::Key_Space:
      bar->triggerAction(shift ? QScrollBar::SliderPageStepSub : QScrollBar::SliderPageStepAdd);
      break;
    default:
      QAbstractScrollArea::keyPressEvent(event);
  }
}

void PageView::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || layout_.pages == 0) return;
  match_.reset();
  selection_.clear();
  dragPoint_ = event->pos();
  dragging_ = true;
  changeSelection();
}

void PageView::mouseMoveEvent(QMouseEvent* event) {
  if (!dragging_) return;
  if (!selection_.active()) selection_.start(spotAt(dragPoint_));
  dragTo(event->pos());
  if (viewport()->rect().contains(event->pos())) {
    dragScroll_.stop();
  } else if (!dragScroll_.isActive()) {
    dragScroll_.start(kDragScrollTime, this);
  }
}

void PageView::dragTo(const QPoint& point) {
  dragPoint_ = point;
  selection_.extendTo(spotAt(point));
  viewport()->update();
}

void PageView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !dragging_) return;
  dragging_ = false;
  dragScroll_.stop();
  changeSelection();
}

void PageView::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || layout_.pages == 0) return;
  selection_.start(spotAt(event->pos()));
  changeSelection();
}

// A drag beyond an edge goes on scrolling, faster the farther the pointer is outside.
void PageView::timerEvent(QTimerEvent* event) {
  if (event->timerId() != dragScroll_.timerId()) {
    QAbstractScrollArea::timerEvent(event);
    return;
  }
  const QRect room = viewport()->rect();
  const auto beyond = [](int at, int low, int high) { return at - std::clamp(at, low, high); };
  horizontalScrollBar()->setValue(horizontalScrollBar()->value() +
                                  beyond(dragPoint_.x(), room.left(), room.right()));
  verticalScrollBar()->setValue(verticalScrollBar()->value() +
                                beyond(dragPoint_.y(), room.top(), room.bottom()));
  dragTo(dragPoint_);
}

}  // namespace bw
