#include "controls/TypedAhead.h"

#include <QApplication>
#include <QMessageBox>
#include <algorithm>
#include <utility>

namespace bw {
namespace {

constexpr int kSentByAClient = 0x80;

int kindOf(const xcb_generic_event_t& event) { return event.response_type & ~kSentByAClient; }

QWindow* windowOf(xcb_window_t id) {
  const QWindowList windows = QGuiApplication::allWindows();
  const auto found = std::ranges::find_if(windows, [id](const QWindow* window) {
    return window->handle() != nullptr && window->winId() == id;
  });
  return found == windows.end() ? nullptr : *found;
}

bool takesKeys(const QWindow* window) {
  if (window == nullptr || !window->isVisible()) return false;
  const QWindow* modal = QGuiApplication::modalWindow();
  return modal == nullptr || modal == window || window->type() == Qt::Popup ||
         modal->isAncestorOf(window, QWindow::IncludeTransients);
}

// It comes unexpected: what was typed before it was seen is no answer to it.
bool isMessage(const QWindow& window) {
  return qobject_cast<QMessageBox*>(QWidget::find(window.winId())) != nullptr;
}

void sendByServer(const TypedAhead::Keys& keys) {
  xcb_connection_t* server =
      qApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
  for (const xcb_key_press_event_t& key : keys)
    xcb_send_event(server, 0, key.event, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&key));
  xcb_flush(server);
}

}  // namespace

TypedAhead::TypedAhead(std::function<void(const Keys&)> send, std::chrono::milliseconds passing)
    : send_(std::move(send)) {
  connect(qApp, &QGuiApplication::focusWindowChanged, this, [this] { sendOn(); });
  passing_.setSingleShot(true);
  passing_.setInterval(passing);
  connect(&passing_, &QTimer::timeout, this, [this] { sendOn(); });
}

bool TypedAhead::nativeEventFilter(const QByteArray& type, void* message, qintptr*) {
  if (type != "xcb_generic_event_t") return false;
  const int kind = kindOf(*static_cast<const xcb_generic_event_t*>(message));
  if (kind != XCB_KEY_PRESS && kind != XCB_KEY_RELEASE) return false;
  return keeps(*static_cast<const xcb_key_press_event_t*>(message));
}

// The toolkit takes many events from the display before it begins with the first, whose window may
// open another one: so one press goes after the other.
bool TypedAhead::eventFilter(QObject*, QEvent* event) {
  const bool isBegun = event->type() == QEvent::ShortcutOverride ||
                       event->type() == QEvent::KeyPress || event->type() == QEvent::InputMethod;
  if (isBegun && passing_.isActive()) {
    passing_.stop();
    sendOn();
  }
  return false;
}

bool TypedAhead::isBack(const xcb_key_press_event_t& key) {
  constexpr qint64 kLongest = 10000;  // ms; then their window has gone
  if (onTheirWay_ > 0 && sentSince_.hasExpired(kLongest)) onTheirWay_ = 0;
  if (onTheirWay_ == 0 || (key.response_type & kSentByAClient) == 0) return false;
  --onTheirWay_;
  return true;
}

// What comes back goes before what was typed since.
bool TypedAhead::keeps(const xcb_key_press_event_t& key) {
  const bool back = isBack(key);
  const bool isNext = back ? returned_ == 0 : onTheirWay_ == 0 && kept_.empty();
  if (isNext && !passing_.isActive() && takesKeys(windowOf(key.event))) {
    if ((key.response_type & ~kSentByAClient) == XCB_KEY_PRESS) passing_.start();
    return false;
  }
  if (kept_.empty()) keptSince_.start();
  const std::size_t place = back ? returned_++ : kept_.size();
  kept_.insert(kept_.begin() + static_cast<std::ptrdiff_t>(place), key);
  sendOn();
  return true;
}

void TypedAhead::sendOn() {
  constexpr qint64 kLongest = 3000;  // ms; nobody remembers then what he typed
  if (onTheirWay_ > 0 || kept_.empty() || passing_.isActive()) return;
  const QWindow* next = QGuiApplication::focusWindow();
  if (!takesKeys(next)) return;
  returned_ = 0;
  Keys keys = std::exchange(kept_, {});
  if (isMessage(*next) || keptSince_.hasExpired(kLongest)) return;
  for (xcb_key_press_event_t& key : keys) key.event = static_cast<xcb_window_t>(next->winId());
  onTheirWay_ = keys.size();
  sentSince_.start();
  send_(keys);
}

void keepTypedAhead() {
  if (qApp->nativeInterface<QNativeInterface::QX11Application>() == nullptr) return;
  static TypedAhead keys(sendByServer);
  qApp->installNativeEventFilter(&keys);
  qApp->installEventFilter(&keys);
}

}  // namespace bw
