// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/text/date_texts.h"

#include "ui_kit/text/figures.h"
#include "ui_kit/text/icu_text.h"

#include <unicode/datefmt.h>
#include <unicode/timezone.h>

#include <memory>

namespace veltrix
{

namespace
{

QString formatted(std::unique_ptr<icu::DateFormat> format, Date date, const QTimeZone &zone)
{
    if (!isCalendarDate(date))
        return QStringLiteral("—");
    if (!format)
        return formatInternetDateTime(date);
    const QByteArray id = zone.id();
    format->adoptTimeZone(icu::TimeZone::createTimeZone(
        icu::UnicodeString(id.constData(), int32_t(id.size()), US_INV)));
    icu::UnicodeString text;
    format->format(unixSeconds(date) * 1000, text);
    // Many fonts lack the narrow space that some locales put before AM and PM.
    return withPlainDigits(fromIcu(text)).replace(QChar(0x202F), QChar(0x00A0));
}

} // namespace

QString dateTimeText(Date date, const QLocale &locale, const QTimeZone &zone)
{
    return formatted(std::unique_ptr<icu::DateFormat>(icu::DateFormat::createDateTimeInstance(
                         icu::DateFormat::kMedium, icu::DateFormat::kShort, icuLocale(locale))),
                     date, zone);
}

QString dateText(Date date, const QLocale &locale, const QTimeZone &zone)
{
    return formatted(std::unique_ptr<icu::DateFormat>(icu::DateFormat::createDateInstance(
                         icu::DateFormat::kMedium, icuLocale(locale))),
                     date, zone);
}

QDate calendarDay(Date day)
{
    return QDateTime::fromMSecsSinceEpoch(qint64(unixSeconds(day) * 1000), Qt::UTC).date();
}

QString dayText(Date day, DayFormat format, const QLocale &locale)
{
    const auto pattern = [&] {
        switch (format) {
        case DayFormat::Day:
            return QStringLiteral("MMM d");
        case DayFormat::DayAndYear:
            return QStringLiteral("MMM d, yyyy");
        case DayFormat::Year:
            return QStringLiteral("yyyy");
        }
        Q_UNREACHABLE();
    };
    return withPlainDigits(locale.toString(calendarDay(day), pattern()));
}

} // namespace veltrix
