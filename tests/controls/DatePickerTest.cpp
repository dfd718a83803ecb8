#include "controls/DatePicker.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <QVBoxLayout>
#include <QWindow>

#include "controls/Dialog.h"
#include "controls/Hint.h"
#include "controls/QtText.h"
#include "core/Services.h"

namespace bw {
namespace {

Date day(int year, int month, int dayOfMonth) { return *makeDate(year, month, dayOfMonth); }

// A form with a date between two text boxes.
class Trial : public Dialog {
 public:
  explicit Trial(DatePicker::Kind kind)
      : Dialog("Trial", "Trial", nullptr), before(new QLineEdit), date(new DatePicker(this, kind)),
        after(new QLineEdit) {
    auto* column = new QVBoxLayout(this);
    for (QWidget* field : {before, static_cast<QLineEdit*>(date), after}) column->addWidget(field);
    column->addWidget(makeFoot(
        {}, [this] { ++stored; }, [this] { unload(); }));
    setTabs({before, date, after});
    before->setFocus();
    resize(500, 300);
  }

  QLineEdit* before;
  DatePicker* date;
  QLineEdit* after;
  int stored = 0;
};

class DatePickerTest : public testing::Test {
 protected:
  DatePickerTest() {
    services().now = [] { return DateTime{day(2026, 11, 25), {}}; };
    make(DatePicker::Kind::day);
  }
  ~DatePickerTest() override { services() = saved_; }

  void make(DatePicker::Kind kind) {
    form = std::make_unique<Trial>(kind);
    form->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
    press(Qt::Key_Tab);
    ASSERT_TRUE(form->date->hasFocus());
  }

  // To the window, as the display does.
  void press(int key, Qt::KeyboardModifiers with = {}) const {
    QWidget* popup = QApplication::activePopupWidget();
    QTest::keyClick((popup == nullptr ? form.get() : popup)->windowHandle(),
                    static_cast<Qt::Key>(key), with);
  }
  void type(const char* text) const {
    for (; *text != '\0'; ++text) QTest::keyClick(form->windowHandle(), *text);
  }
  std::string shown() const { return fromQt(form->date->text()); }
  std::string hint() const {
    const auto* found = form->findChild<Hint*>();
    return found == nullptr || found->isHidden() ? std::string() : fromQt(found->text());
  }

  std::unique_ptr<Trial> form;

 private:
  Services saved_ = services();
};

TEST_F(DatePickerTest, ReadsWhatIsTypedOnceTheFieldIsLeft) {
  type("12/30/25");
  QFocusEvent otherWindow(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
  QApplication::sendEvent(form->date, &otherWindow);
  EXPECT_EQ(shown(), "12/30/25") << "kept while the user looks at another window";
  EXPECT_EQ(form->date->value(), day(2026, 11, 25));
  press(Qt::Key_Tab);
  EXPECT_TRUE(form->after->hasFocus()) << "one stop";
  EXPECT_EQ(shown(), "12/30/2025");
  press(Qt::Key_Backtab, Qt::ShiftModifier);
  type("1 5 2026");  // over the date, which is all marked
  press(Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_TRUE(form->before->hasFocus());
  EXPECT_EQ(form->date->value(), day(2026, 1, 5));
  press(Qt::Key_Tab);
  type("+3");
  press(Qt::Key_Return, Qt::ControlModifier);
  EXPECT_EQ(form->date->value(), day(2026, 11, 28));
  EXPECT_EQ(form->stored, 1);
}

TEST_F(DatePickerTest, NoDateStaysAndStopsOkUntilItIsPutRight) {
  for (const char* wrong : {"13012026", "31/12/2026", "02302026", "1230", "Jan 5", ""}) {
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_Delete);
    type(wrong);
    EXPECT_EQ(hint(), "") << "not before it is read";
    press(Qt::Key_Tab);
    EXPECT_TRUE(form->after->hasFocus()) << "leaving is free";
    EXPECT_NE(hint(), "") << wrong;
    EXPECT_EQ(hint(), fromQt(form->date->accessibleDescription()));
    press(Qt::Key_Return);
    EXPECT_TRUE(form->date->hasFocus()) << wrong;
    EXPECT_EQ(shown(), wrong);
    EXPECT_EQ(form->date->value(), day(2026, 11, 25));
  }
  EXPECT_EQ(form->stored, 0);
  type("99");
  press(Qt::Key_Return);
  EXPECT_EQ(shown(), "99");
  press(Qt::Key_A, Qt::ControlModifier);
  type("12302025");
  EXPECT_EQ(hint(), "");
  press(Qt::Key_Return);
  EXPECT_EQ(form->date->value(), day(2025, 12, 30));
  EXPECT_EQ(form->stored, 1);
  EXPECT_EQ(form->date->accessibleDescription(), "");
  form->date->clear();
  EXPECT_FALSE(form->date->settle());
  form->date->setEnabled(false);
  EXPECT_EQ(hint(), "") << "nobody asks for it now";
}

TEST_F(DatePickerTest, KeysMoveThePartAtTheMark) {
  struct Step {
    int key;
    const char* shown;
    const char* marked;
  };
  const Step steps[] = {
      {Qt::Key_Up, "11/26/2026", "26"},     {Qt::Key_Down, "11/25/2026", "25"},
      {Qt::Key_PageUp, "12/25/2026", "25"}, {Qt::Key_PageDown, "11/25/2026", "25"},
      {Qt::Key_Home, "11/25/2026", ""},     {Qt::Key_Up, "12/25/2026", "12"},
      {Qt::Key_Up, "01/25/2027", "01"},     {Qt::Key_End, "01/25/2027", ""},
      {Qt::Key_Down, "01/25/2026", "2026"},
  };
  for (const auto& [key, text, marked] : steps) {
    press(key);
    EXPECT_EQ(shown(), text);
    EXPECT_EQ(fromQt(form->date->selectedText()), marked);
  }
  form->date->setValue(day(2026, 1, 31));
  press(Qt::Key_PageUp);
  EXPECT_EQ(shown(), "02/28/2026");
  form->date->setValue(day(1800, 1, 1));
  press(Qt::Key_Down);
  EXPECT_EQ(shown(), "01/01/1800");
  press(Qt::Key_A, Qt::ControlModifier);
  type("31/1");
  press(Qt::Key_Up);
  EXPECT_EQ(shown(), "31/1");
  EXPECT_NE(hint(), "");
}

TEST_F(DatePickerTest, TheCalendarIsUsedByKeysAndEscClosesNothingElse) {
  const auto isOpen = [] { return QApplication::activePopupWidget() != nullptr; };
  type("31/1/26");
  press(Qt::Key_Down, Qt::AltModifier);
  EXPECT_TRUE(isOpen());
  press(Qt::Key_Right);
  press(Qt::Key_Escape);
  EXPECT_FALSE(isOpen());
  EXPECT_TRUE(form->isVisible());
  EXPECT_EQ(shown(), "31/1/26");
  press(Qt::Key_A, Qt::ControlModifier);
  type("1/31/26");
  press(Qt::Key_F4);
  press(Qt::Key_Right);
  press(Qt::Key_Down);
  press(Qt::Key_Return);
  EXPECT_FALSE(isOpen());
  EXPECT_EQ(form->date->value(), day(2026, 2, 8));
  EXPECT_TRUE(form->date->hasFocus());
  press(Qt::Key_Up);
  EXPECT_EQ(shown(), "02/09/2026") << "all is marked behind the calendar";
  press(Qt::Key_F4);
  press(Qt::Key_Escape);
  press(Qt::Key_Down);
  EXPECT_EQ(shown(), "02/08/2026");
  QTest::mouseClick(form->date->findChild<QWidget*>("calendarButton"), Qt::LeftButton);
  EXPECT_TRUE(isOpen());
  press(Qt::Key_Escape);
  press(Qt::Key_Escape);
  EXPECT_FALSE(form->isVisible());
  EXPECT_EQ(form->stored, 0);
}

TEST_F(DatePickerTest, ADateOfBirthCanBeMissingAndIsNotGuessedAhead) {
  make(DatePicker::Kind::birth);
  press(Qt::Key_Delete);
  press(Qt::Key_Return);
  EXPECT_EQ(form->stored, 1);
  EXPECT_EQ(form->date->valueIfAny(), std::nullopt);
  press(Qt::Key_Up);
  EXPECT_EQ(shown(), "");
  type("11/26/26");
  press(Qt::Key_Return);
  EXPECT_EQ(form->date->value(), day(1926, 11, 26));
}

}  // namespace
}  // namespace bw
