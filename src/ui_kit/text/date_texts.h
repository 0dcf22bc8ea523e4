// SPDX-License-Identifier: GPL-3.0-or-later
// Dates and times in the user's language.
#pragma once

#include "model/date.h"
#include "ui_kit/text/figures.h"

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

} // namespace veltrix
