#pragma once

#include <QDateEdit>
#include <functional>

#include "platform/Moment.h"

namespace bw {

// A day without a time, shown month first whatever the locale; today when nothing else is set.
// It can be typed as digits alone (10012025) or with / - . between them.
class DatePicker : public QDateEdit {
 public:
  explicit DatePicker(QWidget* parent = nullptr);

  Date value() const;
  void setValue(Date date);

  std::function<void()> onEnter;

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void makeRoomForDigit();
  void rememberDay(QChar digit);
  void restoreLeapDay();

  QString typedDay_;  // digits
};

}  // namespace bw
