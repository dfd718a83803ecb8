#include "controls/DatePicker.h"

#include <QCalendarWidget>

#include "controls/QtText.h"
#include "core/Services.h"

namespace bw {

DatePicker::DatePicker(QWidget* parent) : QDateEdit(parent) {
  setLocale(QLocale(QLocale::English, QLocale::UnitedStates));
  setDisplayFormat("MM/dd/yyyy");
  setDateRange(toQt(makeDate(1800, 1, 1).value_or(Date{})),
               toQt(makeDate(9999, 12, 31).value_or(Date{})));
  setCalendarPopup(true);
  setValue(today());
}

Date DatePicker::value() const { return fromQt(date()); }
void DatePicker::setValue(Date date) { setDate(toQt(date)); }

}  // namespace bw
