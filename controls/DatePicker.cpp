#include "controls/DatePicker.h"

#include <QCalendarWidget>
#include <QKeyEvent>
#include <QLineEdit>

#include "controls/EventGuard.h"
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

// A digit that finds no place is refused by the field beneath. So it begins the part in which the
// cursor stands, or, when everything is marked, the month.
void DatePicker::makeRoomForDigit() {
  const QString marked = lineEdit()->selectedText();
  if (marked == text()) return setSelectedSection(MonthSection);
  const qsizetype full = currentSection() == YearSection ? 4 : 2;
  if (marked.isEmpty() && sectionText(currentSection()).size() == full)
    setSelectedSection(currentSection());
}

// The field beneath keeps February 29 to the year that stands there, which is typed last.
void DatePicker::rememberDay(QChar digit) {
  if (currentSection() == MonthSection) typedDay_.clear();
  if (currentSection() != DaySection) return;
  if (lineEdit()->hasSelectedText()) typedDay_.clear();
  typedDay_ += digit;
}

void DatePicker::restoreLeapDay() {
  const bool cutShort = typedDay_ == "29" && date().month() == 2 && date().day() == 28;
  if (!cutShort || !QDate::isLeapYear(date().year())) return;
  typedDay_.clear();
  setDate(date().addDays(1));
}

void DatePicker::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enter && onEnter) return guarded([this] { onEnter(); });
  const QString typed = event->text();
  const bool digit = !typed.isEmpty() && typed[0].isDigit();
  if (digit) {
    makeRoomForDigit();
    rememberDay(typed[0]);
  }
  // A part that is complete has gone on to the next by itself.
  const bool atFreshPart = lineEdit()->selectedText() == sectionText(currentSection());
  if (QStringList{"/", "-", "."}.contains(typed) && atFreshPart) return;
  QDateEdit::keyPressEvent(event);
  if (digit) restoreLeapDay();
}

}  // namespace bw
