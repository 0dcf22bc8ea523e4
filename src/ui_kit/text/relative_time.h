// SPDX-License-Identifier: GPL-3.0-or-later
// "4 min. ago" in the user's language.
#pragma once

#include "model/date.h"
#include "ui_kit/text/figures.h"

#include <QLocale>
#include <QString>

#include <memory>

namespace veltrix
{

/// Words for a distance in time, in the short style of the locale. Making one is slow, asking it is
/// fast.
class RelativeTime
{
public:
    explicit RelativeTime(const QLocale &locale = wordLocale());
    ~RelativeTime();
    RelativeTime(const RelativeTime &) = delete;
    RelativeTime &operator=(const RelativeTime &) = delete;

    /// `then` against `now` in the largest unit that fits, rounded toward zero: minutes below an
    /// hour, hours below a day, days below a week, weeks below a month (30.4375 days), months below
    /// a year (365.25 days). Less than a minute counts in seconds. "—" for a date outside the years
    /// 1 to 9999; digits are 0 to 9.
    [[nodiscard]] QString phrase(Date then, Date now) const;

    /// "just now" when less than 60 seconds lie between the two in either direction, else phrase().
    [[nodiscard]] QString sinceUpdate(Date then, Date now) const;

private:
    struct Formatter;
    std::unique_ptr<Formatter> m_formatter;
};

} // namespace veltrix
