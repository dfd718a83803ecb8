#include "controls/EscapeKey.h"

#include <xcb/xcb.h>

#include <QGuiApplication>
#include <QWindow>
#include <cstdlib>
#include <memory>
#include <span>

namespace bw {
namespace {

constexpr xcb_keysym_t kEscape = 0xff1b;

struct Disconnect {
  void operator()(xcb_connection_t* connection) const noexcept { xcb_disconnect(connection); }
};
struct Free {
  void operator()(void* memory) const noexcept { std::free(memory); }
};

// A connection of our own, since the toolkit empties its own in a thread. Key presses are told to
// everybody who asks for them.
class X11Keys {
 public:
  X11Keys() : connection_(xcb_connect(nullptr, nullptr)) {
    if (xcb_connection_has_error(connection_.get()) == 0) escape_ = codeOfEscape();
  }

  // Anew, or not any longer.
  void listen(xcb_event_mask_t events) {
    if (escape_ == 0) return;
    while (next()) {  // of an earlier time
    }
    const std::uint32_t mask = events;
    for (const QWindow* window : QGuiApplication::topLevelWindows())
      if (window->isVisible())
        xcb_change_window_attributes(connection_.get(), static_cast<xcb_window_t>(window->winId()),
                                     XCB_CW_EVENT_MASK, &mask);
    xcb_flush(connection_.get());
  }

  bool takeEscape() {
    while (const Event event = next())
      if (isEscape(*event)) return true;
    return false;
  }

 private:
  using Event = std::unique_ptr<xcb_generic_event_t, Free>;

  Event next() { return Event(escape_ == 0 ? nullptr : xcb_poll_for_event(connection_.get())); }

  // With Alt and the like it means something else, mostly to the desktop.
  bool isEscape(const xcb_generic_event_t& event) const {
    constexpr int kModifiers =
        XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_4;
    constexpr int kSentByAClient = 0x80;
    if ((event.response_type & ~kSentByAClient) != XCB_KEY_PRESS) return false;
    const auto& press = reinterpret_cast<const xcb_key_press_event_t&>(event);
    return press.detail == escape_ && (press.state & kModifiers) == 0;
  }

  xcb_keycode_t codeOfEscape() const {
    const xcb_setup_t& setup = *xcb_get_setup(connection_.get());
    const auto count = static_cast<std::uint8_t>(setup.max_keycode - setup.min_keycode + 1);
    const std::unique_ptr<xcb_get_keyboard_mapping_reply_t, Free> mapping(
        xcb_get_keyboard_mapping_reply(
            connection_.get(),
            xcb_get_keyboard_mapping(connection_.get(), setup.min_keycode, count), nullptr));
    if (!mapping || mapping->keysyms_per_keycode == 0) return 0;
    const std::span symbols(
        xcb_get_keyboard_mapping_keysyms(mapping.get()),
        static_cast<std::size_t>(xcb_get_keyboard_mapping_keysyms_length(mapping.get())));
    for (std::size_t i = 0; i < symbols.size(); i += mapping->keysyms_per_keycode)
      if (symbols[i] == kEscape)
        return static_cast<xcb_keycode_t>(setup.min_keycode + i / mapping->keysyms_per_keycode);
    return 0;
  }

  std::unique_ptr<xcb_connection_t, Disconnect> connection_;
  xcb_keycode_t escape_ = 0;  // 0: there is none, or no display
};

class X11Watch {
 public:
  explicit X11Watch(X11Keys& keys) : keys_(keys) { keys_.listen(XCB_EVENT_MASK_KEY_PRESS); }
  ~X11Watch() { keys_.listen(XCB_EVENT_MASK_NO_EVENT); }
  X11Watch(const X11Watch&) = delete;
  X11Watch& operator=(const X11Watch&) = delete;

  bool isPressed() { return keys_.takeEscape(); }

 private:
  X11Keys& keys_;
};

PressedSince watchDisplay() {
  if (QGuiApplication::platformName() != "xcb") return nullptr;
  static X11Keys keys;
  return [watch = std::make_shared<X11Watch>(keys)] { return watch->isPressed(); };
}

}  // namespace

std::function<PressedSince()>& watchEscape() {
  static std::function<PressedSince()> watch = watchDisplay;
  return watch;
}

}  // namespace bw
