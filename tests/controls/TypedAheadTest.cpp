#include "controls/TypedAhead.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QMessageBox>
#include <QTest>

#include "text/Text.h"

namespace bw {
namespace {

// A main window and what may come up in front of it; keys by their codes.
class TypedAheadTest : public testing::Test {
 protected:
  TypedAheadTest() { show(main_); }

  static void show(QWidget& window) {
    window.show();
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitFor(
        [&window] { return QGuiApplication::focusWindow() == window.windowHandle(); }));
  }
  static xcb_window_t idOf(QWidget& window) { return static_cast<xcb_window_t>(window.winId()); }

  // "passed", or "kept".
  std::string comes(int code, QWidget& window, int mark = 0) {
    xcb_key_press_event_t key{};
    key.response_type = static_cast<std::uint8_t>(XCB_KEY_PRESS | mark);
    key.detail = static_cast<xcb_keycode_t>(code);
    key.event = idOf(window);
    return keys_.nativeEventFilter("xcb_generic_event_t", &key, nullptr) ? "kept" : "passed";
  }
  // The toolkit begins with the key that has passed.
  void begin() {
    QEvent event(QEvent::KeyPress);
    keys_.eventFilter(&main_, &event);
  }
  // One that was sent.
  std::string comesBack(int code, QWidget& window) { return comes(code, window, 0x80); }
  // What was sent since the last call: its codes, and whether to that window.
  std::string sentTo(QWidget& window) {
    std::string codes;
    for (const xcb_key_press_event_t& key : std::exchange(sent_, {}))
      codes += concat(codes.empty() ? "" : " ", int{key.detail},
                      key.event == idOf(window) ? "" : " elsewhere");
    return codes;
  }

  TypedAhead::Keys sent_;
  TypedAhead keys_{[this](const TypedAhead::Keys& keys) { sent_ = keys; }, std::chrono::minutes{1}};
  QWidget main_;
  QDialog dialog_{&main_};
};

TEST_F(TypedAheadTest, KeysWaitForTheWindowThatAnotherOpens) {
  EXPECT_EQ(comes(1, main_), "passed");
  EXPECT_EQ(comes(2, main_), "kept") << "the first may open a window yet";
  EXPECT_EQ(comes(3, main_), "kept");
  dialog_.setModal(true);
  show(dialog_);
  begin();
  EXPECT_EQ(sentTo(dialog_), "2 3");
  EXPECT_EQ(comes(4, dialog_), "kept") << "typed behind those that are on their way";
  EXPECT_EQ(comesBack(2, dialog_), "passed");
  begin();
  EXPECT_EQ(comesBack(3, dialog_), "passed");
  begin();
  EXPECT_EQ(sentTo(dialog_), "4");
  EXPECT_EQ(comesBack(4, dialog_), "passed");
  begin();
  EXPECT_EQ(comes(5, main_), "kept") << "the dialog is in front";
  EXPECT_EQ(sentTo(dialog_), "5");
}

TEST_F(TypedAheadTest, KeysOfAWindowThatHasGoneAreForTheNextInTheirOrder) {
  dialog_.setModal(true);
  show(dialog_);
  dialog_.hide();
  for (const int code : {1, 2}) EXPECT_EQ(comes(code, dialog_), "kept");
  show(main_);
  EXPECT_EQ(sentTo(main_), "1 2");
  EXPECT_EQ(comesBack(1, main_), "passed");
  show(dialog_);  // by that key
  begin();
  EXPECT_EQ(comesBack(2, main_), "kept");
  EXPECT_EQ(sentTo(dialog_), "2");
  dialog_.hide();
  EXPECT_EQ(comes(3, dialog_), "kept");
  EXPECT_EQ(comesBack(2, dialog_), "kept");
  show(main_);
  EXPECT_EQ(sentTo(main_), "2 3") << "as they were typed";
}

TEST_F(TypedAheadTest, NoMessageIsAnsweredByWhatWasTypedBeforeIt) {
  EXPECT_EQ(comes(1, main_), "passed");
  EXPECT_EQ(comes(2, main_), "kept");
  QMessageBox box(&main_);
  box.setModal(true);
  show(box);
  begin();
  EXPECT_EQ(sentTo(box), "");
  EXPECT_EQ(comes(3, box), "passed");
}

}  // namespace
}  // namespace bw
