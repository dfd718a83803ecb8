#pragma once

#include <QLineEdit>
#include <functional>
#include <optional>

#include "controls/TypedInput.h"
#include "text/Moment.h"
#include "text/TypedDate.h"

class QCalendarWidget;
class QToolButton;

namespace bw {

class Hint;

// A day without a time, shown month first whatever the locale; today when nothing else is set.
// What is typed stands as it was typed until the field is left, Enter is pressed or settle() is
// called, and is then read as a whole (readTypedDate). A text that is no date stays, marked and
// with a hint that says why; the value is then the one before.
// Up and Down change the part at the mark (the day when all is marked), Page Up and Page Down the
// month; Alt+Down, F4 and the button open the calendar.
class DatePicker : public QLineEdit, public TypedInput {
 public:
  // A date of birth can be missing: the field is empty then.
  enum class Kind { day, birth };
  explicit DatePicker(QWidget* parent = nullptr, Kind kind = Kind::day);

  // The last day taken, whatever stands in the field. Not for a date of birth that is missing.
  Date value() const { return value_.value(); }
  std::optional<Date> valueIfAny() const { return value_; }
  void setValue(std::optional<Date> date);

  std::function<void()> onEnter;  // the text is for the handler to settle

  bool settle() override;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void changeEvent(QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  struct Part;  // month, day or year
  static const Part kMonth;
  static const Part kDay;
  static const Part kYear;

  TypedDate read() const;
  void mark(const QString& reason);
  void sayReason();
  bool takeKey(int key, Qt::KeyboardModifiers modifiers);
  const Part& partAtMark() const;
  void step(const Part& part, int by, const Part& marked);
  void openCalendar();
  void makeCalendar();

  Kind kind_;
  std::optional<Date> value_;
  QString reason_;  // why the text is refused
  QToolButton* button_;
  QCalendarWidget* calendar_ = nullptr;  // made when it is first opened, as is the hint
  Hint* hint_ = nullptr;
};

}  // namespace bw
