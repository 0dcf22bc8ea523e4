// SPDX-License-Identifier: GPL-3.0-or-later
// Dates and times in the user's language.
#pragma once

#include "model/date.h"
#include "ui_kit/text/figures.h"

#include <QDate>
#include <QLocale>
#include <QString>
#include <QTimeZone>

namespace veltrix
{

/// An abbreviated date and a short time: "Nov 21, 2026, 9:41 AM". A date outside the years 1 to
/// 9999 is "—", here and below; digits are 0 to 9.
QString dateTimeText(Date date, const QLocale &locale = wordLocale(),
                     const QTimeZone &zone = QTimeZone::systemTimeZone());

/// An abbreviated date: "Nov 21, 2026".
QString dateText(Date date, const QLocale &locale = wordLocale(),
                 const QTimeZone &zone = QTimeZone::systemTimeZone());

/// The calendar day of a UTC day; invalid for a date of no calendar.
QDate calendarDay(Date day);

enum class DayFormat {
    /// "Nov 21"
    Day,
    /// "Nov 21, 2026"
    DayAndYear,
    /// "2026"
    Year,
};

/// A UTC day in the language of the locale.
QString dayText(Date day, DayFormat format, const QLocale &locale = wordLocale());

} // namespace veltrix
