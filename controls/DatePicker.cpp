#include "controls/DatePicker.h"

#include <QCalendarWidget>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <QStyle>
#include <QTextCharFormat>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

#include "controls/DarkPalette.h"
#include "controls/EventGuard.h"
#include "controls/Hint.h"
#include "controls/QtText.h"
#include "core/Services.h"
#include "text/Formats.h"

namespace bw {
namespace {

const Date kFirst = makeDate(1800, 1, 1).value_or(Date{});
const Date kLast = makeDate(9999, 12, 31).value_or(Date{});

QString shownText(std::optional<Date> date) {
  return date ? toQt(Format(*date, "mm/dd/yyyy")) : QString();
}

bool isEnter(int key) { return key == Qt::Key_Return || key == Qt::Key_Enter; }

}  // namespace

// Where it stands in a date that is shown in full.
struct DatePicker::Part {
  int from;
  int length;
  QDate (*moved)(QDate date, int by);
};
const DatePicker::Part DatePicker::kMonth{0, 2,
                                          [](QDate date, int by) { return date.addMonths(by); }};
const DatePicker::Part DatePicker::kDay{3, 2, [](QDate date, int by) { return date.addDays(by); }};
const DatePicker::Part DatePicker::kYear{6, 4,
                                         [](QDate date, int by) { return date.addYears(by); }};

DatePicker::DatePicker(QWidget* parent, Kind kind)
    : QLineEdit(parent), kind_(kind), button_(new QToolButton(this)) {
  QSizePolicy policy = sizePolicy();
  policy.setHorizontalPolicy(QSizePolicy::Minimum);
  setSizePolicy(policy);
  setToolTip("Month, day, year; t is today, F4 opens the calendar");
  button_->setArrowType(Qt::DownArrow);
  button_->setAutoRaise(true);
  button_->setFocusPolicy(Qt::NoFocus);
  button_->setCursor(Qt::ArrowCursor);
  button_->setObjectName("calendarButton");
  button_->setAccessibleName("Open the calendar");
  onEvent(button_, &QToolButton::clicked, this, [this] { openCalendar(); });
  onEvent(this, &QLineEdit::textEdited, this, [this] { mark({}); });
  setValue(today());
}

void DatePicker::setValue(std::optional<Date> date) {
  value_ = date;
  setText(shownText(date));
  mark({});
  if (hasFocus()) selectAll();
}

TypedDate DatePicker::read() const {
  return readTypedDate(
      fromQt(text()),
      {.today = today(), .first = kFirst, .last = kLast, .birth = kind_ == Kind::birth});
}

bool DatePicker::settle() {
  if (text() == shownText(value_)) return true;
  if (kind_ == Kind::birth && text().trimmed().isEmpty()) return setValue({}), true;
  const TypedDate typed = read();
  if (typed.date)
    setValue(typed.date);
  else
    mark(toQt(typed.reason));
  return typed.date.has_value();
}

// Marks the text as refused; without a reason takes the mark away.
void DatePicker::mark(const QString& reason) {
  if (reason_.isEmpty() && reason.isEmpty()) return;
  reason_ = reason;
  setAccessibleDescription(reason);
  update();
  sayReason();
  if (!reason.isEmpty() && hasFocus()) selectAll();
}

void DatePicker::sayReason() {
  const bool told = !reason_.isEmpty() && isEnabled() && isVisible();
  if (told && hint_ == nullptr) hint_ = new Hint(this, Hint::Place::below);
  if (hint_ != nullptr) hint_->say(told ? reason_ : QString());
}

void DatePicker::keyPressEvent(QKeyEvent* event) {
  if (isEnter(event->key()) && onEnter) return guarded([this] { onEnter(); });
  if (!takeKey(event->key(), event->modifiers() & ~Qt::KeypadModifier))
    QLineEdit::keyPressEvent(event);
}

bool DatePicker::takeKey(int key, Qt::KeyboardModifiers modifiers) {
  const bool altDown = key == Qt::Key_Down && modifiers == Qt::AltModifier;
  if (altDown || (key == Qt::Key_F4 && modifiers == Qt::NoModifier)) return openCalendar(), true;
  if (modifiers != Qt::NoModifier) return false;
  const Part& part = partAtMark();
  switch (key) {
    case Qt::Key_Up:
      return step(part, 1, part), true;
    case Qt::Key_Down:
      return step(part, -1, part), true;
    case Qt::Key_PageUp:
      return step(kMonth, 1, part), true;
    case Qt::Key_PageDown:
      return step(kMonth, -1, part), true;
    default:
      return false;
  }
}

const DatePicker::Part& DatePicker::partAtMark() const {
  const bool unread = text() != shownText(value_);
  if (unread || selectedText() == text()) return kDay;
  const int at = hasSelectedText() ? selectionStart() : cursorPosition();
  if (at < kDay.from) return kMonth;
  return at < kYear.from ? kDay : kYear;
}

void DatePicker::step(const Part& part, int by, const Part& marked) {
  if (!settle() || !value_) return;
  const QDate date = part.moved(toQt(*value_), by);
  if (date < toQt(kFirst) || date > toQt(kLast)) return;
  setValue(fromQt(date));
  setSelection(marked.from, marked.length);
}

// In the midst of typing the mark stays where it is when the window comes back.
void DatePicker::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  const Qt::FocusReason reason = event->reason();
  if (reason == Qt::MouseFocusReason || reason == Qt::PopupFocusReason) return;
  if (reason != Qt::ActiveWindowFocusReason || !isModified()) selectAll();
}

void DatePicker::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  const Qt::FocusReason reason = event->reason();
  if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason) settle();
}

// Behind the calendar a date is marked as it was before it.
bool DatePicker::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Hide && !isModified()) selectAll();
  return QLineEdit::eventFilter(watched, event);
}

void DatePicker::changeEvent(QEvent* event) {
  QLineEdit::changeEvent(event);
  if (event->type() == QEvent::EnabledChange) sayReason();
}

void DatePicker::showEvent(QShowEvent* event) {
  QLineEdit::showEvent(event);
  sayReason();
}

QSize DatePicker::sizeHint() const {
  const QSize line = QLineEdit::sizeHint();
  // The toolkit's own is as wide as seventeen of these.
  const int toolkits = 17 * fontMetrics().horizontalAdvance(u'x') + textMargins().right();
  const int date = fontMetrics().horizontalAdvance("00/00/00000");
  return {line.width() - toolkits + date + line.height(), line.height()};
}

void DatePicker::resizeEvent(QResizeEvent* event) {
  QLineEdit::resizeEvent(event);
  const int frame = style()->pixelMetric(QStyle::PM_DefaultFrameWidth);
  const int side = height() - 2 * frame;
  button_->setGeometry(width() - frame - side, frame, side, side);
  if (textMargins().right() != side) setTextMargins(0, 0, side, 0);
}

void DatePicker::paintEvent(QPaintEvent* event) {
  QLineEdit::paintEvent(event);
  if (reason_.isEmpty() || !isEnabled()) return;
  constexpr QRgb kOnLight = 0xffc62828;
  constexpr QRgb kOnDark = 0xffff8a80;
  constexpr int kThick = 2;
  QPainter painter(this);
  painter.setPen(QPen(QColor(isDark(palette()) ? kOnDark : kOnLight), kThick));
  painter.drawRect(rect().adjusted(kThick / 2, kThick / 2, -kThick / 2, -kThick / 2));
}

void DatePicker::makeCalendar() {
  auto* popup = new QFrame(this, Qt::Popup);
  popup->installEventFilter(this);
  popup->setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
  auto* column = new QVBoxLayout(popup);
  column->setContentsMargins(1, 1, 1, 1);
  calendar_ = new QCalendarWidget(popup);
  column->addWidget(calendar_);
  calendar_->setObjectName("calendar");
  calendar_->setAccessibleName("Calendar");
  calendar_->setLocale(QLocale(QLocale::English, QLocale::UnitedStates));
  calendar_->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
  calendar_->setDateRange(toQt(kFirst), toQt(kLast));
  // The toolkit's red cannot be read on dark.
  for (const Qt::DayOfWeek day : {Qt::Saturday, Qt::Sunday})
    calendar_->setWeekdayTextFormat(day, QTextCharFormat());
  calendar_->setDateEditEnabled(false);  // digits in it would be read in another way than here
  const auto take = [this](QDate date) {
    calendar_->window()->hide();
    setValue(fromQt(date));
  };
  onEvent(calendar_, &QCalendarWidget::activated, this, take);
  onEvent(calendar_, &QCalendarWidget::clicked, this, take);
}

// Under the field, or above it where the screen ends.
void DatePicker::openCalendar() {
  if (calendar_ == nullptr) makeCalendar();
  setFocus(Qt::PopupFocusReason);
  calendar_->setSelectedDate(toQt(read().date.value_or(value_.value_or(today()))));
  QWidget* popup = calendar_->window();
  const QSize size = popup->sizeHint();
  const QRect within = screen()->availableGeometry();
  const QPoint corner = mapToGlobal(QPoint(0, height()));
  const bool fits = corner.y() + size.height() <= within.bottom();
  const int right = std::max(within.left(), within.right() - size.width());
  popup->move(std::clamp(corner.x(), within.left(), right),
              fits ? corner.y() : corner.y() - height() - size.height());
  // The click that closes it does nothing else.
  popup->setAttribute(Qt::WA_NoMouseReplay);
  popup->show();
  calendar_->setFocus();
}

}  // namespace bw
