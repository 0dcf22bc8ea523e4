// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/date.h"

#include <QString>

#include <cmath>
#include <limits>

namespace veltrix
{

namespace
{

/// Reads exactly `count` ASCII digits at `position` and moves past them.
std::optional<int> readDigits(QStringView text, qsizetype &position, int count)
{
    if (position + count > text.size())
        return std::nullopt;
    int value = 0;
    for (int i = 0; i < count; ++i) {
        const char16_t c = text[position + i].unicode();
        if (c < u'0' || c > u'9')
            return std::nullopt;
        value = value * 10 + (c - u'0');
    }
    position += count;
    return value;
}

bool readChar(QStringView text, qsizetype &position, char16_t expected)
{
    if (position >= text.size() || text[position].unicode() != expected)
        return false;
    ++position;
    return true;
}

/// ".123" as 0.123; the caller has seen the dot.
std::optional<double> readFraction(QStringView text, qsizetype &position)
{
    const qsizetype start = position;
    double value = 0;
    double scale = 1;
    while (position < text.size() && text[position].unicode() >= u'0' &&
           text[position].unicode() <= u'9') {
        // Digits past the fifteenth are below the resolution of a double.
        if (position - start < 15) {
            value = value * 10 + (text[position].unicode() - u'0');
            scale *= 10;
        }
        ++position;
    }
    if (position == start)
        return std::nullopt;
    return value / scale;
}

/// Offset from UTC in seconds: "Z" or "±hh:mm".
std::optional<int> readZone(QStringView text, qsizetype &position)
{
    if (readChar(text, position, u'Z'))
        return 0;
    int sign = 1;
    if (readChar(text, position, u'-'))
        sign = -1;
    else if (!readChar(text, position, u'+'))
        return std::nullopt;
    const auto hours = readDigits(text, position, 2);
    if (!hours || !readChar(text, position, u':'))
        return std::nullopt;
    const auto minutes = readDigits(text, position, 2);
    if (!minutes || *hours > 23 || *minutes > 59)
        return std::nullopt;
    return sign * (*hours * 3600 + *minutes * 60);
}

} // namespace

std::int64_t utcDay(Date date)
{
    const double day = std::floor(referenceSeconds(date) / secondsPerDay);
    if (std::isnan(day))
        return 0;
    // 2^63 is the first double above the range.
    if (day >= 9223372036854775808.0)
        return std::numeric_limits<std::int64_t>::max();
    if (day < -9223372036854775808.0)
        return std::numeric_limits<std::int64_t>::min();
    return static_cast<std::int64_t>(day);
}

std::optional<Date> parseInternetDateTime(QStringView text, FractionalSeconds fraction)
{
    qsizetype position = 0;
    const auto year = readDigits(text, position, 4);
    if (!year || !readChar(text, position, u'-'))
        return std::nullopt;
    const auto month = readDigits(text, position, 2);
    if (!month || !readChar(text, position, u'-'))
        return std::nullopt;
    const auto day = readDigits(text, position, 2);
    if (!day || !readChar(text, position, u'T'))
        return std::nullopt;
    const auto hour = readDigits(text, position, 2);
    if (!hour || !readChar(text, position, u':'))
        return std::nullopt;
    const auto minute = readDigits(text, position, 2);
    if (!minute || !readChar(text, position, u':'))
        return std::nullopt;
    const auto second = readDigits(text, position, 2);
    if (!second || *hour > 23 || *minute > 59 || *second > 59)
        return std::nullopt;

    double fractionOfSecond = 0;
    if (fraction == FractionalSeconds::Required) {
        if (!readChar(text, position, u'.'))
            return std::nullopt;
        const auto value = readFraction(text, position);
        if (!value)
            return std::nullopt;
        fractionOfSecond = *value;
    }
    const auto zone = readZone(text, position);
    if (!zone || position != text.size())
        return std::nullopt;

    const std::chrono::year_month_day calendarDay{std::chrono::year(*year),
                                                  std::chrono::month(static_cast<unsigned>(*month)),
                                                  std::chrono::day(static_cast<unsigned>(*day))};
    if (!calendarDay.ok())
        return std::nullopt;
    const auto unixDays = std::chrono::sys_days(calendarDay).time_since_epoch().count();
    const double wholeSeconds = static_cast<double>(unixDays) * secondsPerDay + *hour * 3600.0 +
                                *minute * 60.0 + *second - *zone;
    return dateFromReferenceSeconds(wholeSeconds - unixSecondsAtReferenceEpoch + fractionOfSecond);
}

std::optional<Date> parseInternetDateTime(QStringView text)
{
    if (const auto date = parseInternetDateTime(text, FractionalSeconds::Rejected))
        return date;
    return parseInternetDateTime(text, FractionalSeconds::Required);
}

bool isCalendarDate(Date date)
{
    using std::chrono::year;
    constexpr auto dayOf = [](int number) {
        const std::chrono::sys_days start{year(number) / std::chrono::January / 1};
        return double(start.time_since_epoch().count()) * secondsPerDay;
    };
    const double seconds = unixSeconds(date);
    return seconds >= dayOf(1) && seconds < dayOf(10'000);
}

QString formatInternetDateTime(Date date)
{
    if (!isCalendarDate(date))
        return {};
    const double milliseconds = std::floor(unixSeconds(date) * 1000.0);
    const auto total = std::chrono::milliseconds(static_cast<std::int64_t>(milliseconds));
    const auto days = std::chrono::floor<std::chrono::days>(total);
    const std::chrono::year_month_day calendarDay{std::chrono::sys_days(days)};
    const std::chrono::hh_mm_ss time{total - days};
    return QString::asprintf("%04d-%02u-%02uT%02d:%02d:%02d.%03dZ", int(calendarDay.year()),
                             unsigned(calendarDay.month()), unsigned(calendarDay.day()),
                             int(time.hours().count()), int(time.minutes().count()),
                             int(time.seconds().count()), int(time.subseconds().count()));
}

} // namespace veltrix
