#pragma once

#include <QDate>
#include <QString>
#include <string>
#include <string_view>

#include "text/Moment.h"

namespace bw {

// The only two roads between the program's texts and the toolkit's, and between their days.

inline QString toQt(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}
inline std::string fromQt(const QString& text) { return text.toStdString(); }

inline constexpr qint64 kJulianDayZero = 2415019;  // 1899-12-30
inline QDate toQt(Date date) { return QDate::fromJulianDay(date.day + kJulianDayZero); }
inline Date fromQt(QDate date) {
  return Date{static_cast<std::int32_t>(date.toJulianDay() - kJulianDayZero)};
}

}  // namespace bw
