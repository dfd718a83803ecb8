#pragma once

#include <QDateEdit>

#include "platform/Moment.h"

namespace bw {

// A day without a time, shown month first whatever the locale; today when nothing else is set.
class DatePicker : public QDateEdit {
 public:
  explicit DatePicker(QWidget* parent = nullptr);

  Date value() const;
  void setValue(Date date);
};

}  // namespace bw
