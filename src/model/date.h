// SPDX-License-Identifier: GPL-3.0-or-later
// Instants and UTC days. Files hold seconds since 2001-01-01T00:00:00Z; services send ISO 8601
// text.
#pragma once

#include <QStringView>

#include <chrono>
#include <cstdint>
#include <optional>
#include <ratio>

namespace veltrix
{

/// Durations in seconds, with a fraction.
using Seconds = std::chrono::duration<double>;

/// The epoch and resolution of Date. It has no now(): the time comes from an injected Clock.
struct ReferenceEpoch {
    using rep = double;
    using period = std::ratio<1>;
    using duration = Seconds;
    using time_point = std::chrono::time_point<ReferenceEpoch>;
    static constexpr bool is_steady = false;
};

/// An instant: seconds (with fraction) since 2001-01-01T00:00:00Z, negative before it.
using Date = ReferenceEpoch::time_point;

/// Seconds between 1970-01-01T00:00:00Z and 2001-01-01T00:00:00Z.
inline constexpr double unixSecondsAtReferenceEpoch = 978'307'200.0;
inline constexpr double secondsPerDay = 86'400.0;

constexpr Date dateFromReferenceSeconds(double seconds)
{
    return Date(Seconds(seconds));
}
constexpr double referenceSeconds(Date date)
{
    return date.time_since_epoch().count();
}
constexpr Date dateFromUnixSeconds(double seconds)
{
    return dateFromReferenceSeconds(seconds - unixSecondsAtReferenceEpoch);
}
constexpr double unixSeconds(Date date)
{
    return referenceSeconds(date) + unixSecondsAtReferenceEpoch;
}

/// Number of the UTC day that holds `date`, counted from 2001-01-01 (day 0): floor(t / 86400), so
/// it is right before 2001 too. A date outside the range of 64-bit days, or not a number, gives the
/// nearest representable day, or 0.
std::int64_t utcDay(Date date);

/// The first instant of a UTC day.
constexpr Date startOfUtcDay(std::int64_t day)
{
    return dateFromReferenceSeconds(static_cast<double>(day) * secondsPerDay);
}

/// Whether the seconds of a date-time text have a fraction.
enum class FractionalSeconds {
    /// `YYYY-MM-DDThh:mm:ss` and a zone; a fraction does not parse.
    Rejected,
    /// `YYYY-MM-DDThh:mm:ss.f…` and a zone; a missing fraction does not parse.
    Required,
};

/// Parses an ISO 8601 internet date-time: date, "T", time, and "Z" or an offset "±hh:mm".
/// Anything else, dates without time and impossible calendar days included, gives no value.
std::optional<Date> parseInternetDateTime(QStringView text, FractionalSeconds fraction);

/// The form that the App Store services send, with or without a fraction.
std::optional<Date> parseInternetDateTime(QStringView text);

/// True for a date of the years 1 to 9999. Files made by hand or damaged hold others, which no
/// calendar can write and no distance can say: they are shown as missing.
bool isCalendarDate(Date date);

/// `YYYY-MM-DDThh:mm:ss.mmmZ`, milliseconds rounded toward the past. Empty for what is no
/// isCalendarDate().
QString formatInternetDateTime(Date date);

} // namespace veltrix
