// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/text/relative_time.h"

#include "ui_kit/text/figures.h"
#include "ui_kit/text/icu_text.h"

#include <QCoreApplication>
#include <QDateTime>

#include <unicode/numfmt.h>
#include <unicode/reldatefmt.h>

#include <array>
#include <cmath>

namespace veltrix
{

namespace
{

struct Unit {
    double seconds;
    URelativeDateTimeUnit unit;
};

constexpr std::array units{
    Unit{365.25 * secondsPerDay, UDAT_REL_UNIT_YEAR},
    Unit{30.4375 * secondsPerDay, UDAT_REL_UNIT_MONTH},
    Unit{7 * secondsPerDay, UDAT_REL_UNIT_WEEK},
    Unit{secondsPerDay, UDAT_REL_UNIT_DAY},
    Unit{3600, UDAT_REL_UNIT_HOUR},
    Unit{60, UDAT_REL_UNIT_MINUTE},
    Unit{1, UDAT_REL_UNIT_SECOND},
};

} // namespace

struct RelativeTime::Formatter {
    std::unique_ptr<icu::RelativeDateTimeFormatter> icu;
    QLocale locale;
};

RelativeTime::RelativeTime(const QLocale &locale) : m_formatter(std::make_unique<Formatter>())
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::Locale converted = icuLocale(locale);
    std::unique_ptr<icu::NumberFormat> numbers(
        icu::NumberFormat::createInstance(converted, status));
    auto formatter = std::make_unique<icu::RelativeDateTimeFormatter>(
        converted, numbers.release(), UDAT_STYLE_SHORT, UDISPCTX_CAPITALIZATION_NONE, status);
    if (U_SUCCESS(status))
        m_formatter->icu = std::move(formatter);
    m_formatter->locale = locale;
}

RelativeTime::~RelativeTime() = default;

QString RelativeTime::phrase(Date then, Date now) const
{
    if (!isCalendarDate(then))
        return QStringLiteral("—");
    const double distance = (then - now).count();
    const double length = std::abs(distance);
    const Unit *chosen = &units.back();
    for (const Unit &unit : units) {
        if (length >= unit.seconds) {
            chosen = &unit;
            break;
        }
    }
    const double count = std::trunc(distance / chosen->seconds);
    if (m_formatter->icu) {
        icu::UnicodeString text;
        UErrorCode status = U_ZERO_ERROR;
        // Zero keeps its sign: it is the past that rounds to it.
        m_formatter->icu->formatNumeric(count == 0 ? -0.0 : count, chosen->unit, text, status);
        if (U_SUCCESS(status))
            return withPlainDigits(fromIcu(text));
    }
    // ICU without data for the locale: a date says as much.
    const auto moment = QDateTime::fromMSecsSinceEpoch(qint64(unixSeconds(then) * 1000));
    return withPlainDigits(m_formatter->locale.toString(moment, QLocale::ShortFormat));
}

QString RelativeTime::sinceUpdate(Date then, Date now) const
{
    if (std::abs((then - now).count()) < 60)
        return QCoreApplication::translate("RelativeTime", "just now");
    return phrase(then, now);
}

} // namespace veltrix
