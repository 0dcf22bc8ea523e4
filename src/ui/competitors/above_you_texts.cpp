// SPDX-License-Identifier: GPL-3.0-or-later
// The words for who is above the user's app.
#include "ui/competitors/above_you.h"
#include "ui_kit/text/date_texts.h"
#include "ui_kit/text/shown_text.h"
#include "ui_kit/widgets/position_badge.h"

#include <QCoreApplication>

namespace veltrix
{

namespace
{

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(AboveYou)
};

QString unknown()
{
    return QStringLiteral("—");
}

} // namespace

QString AppAbove::shownName() const
{
    const QString line = shownLine(name);
    if (!line.isEmpty())
        return line;
    return trackId == 0 ? Texts::tr("Unknown app") : Texts::tr("App %1").arg(trackId);
}

QString AppAbove::weekAgoText() const
{
    if (!weekAgo)
        return unknown();
    switch (weekAgo->kind) {
    case CheckedRank::Kind::Ranked:
        return PositionBadge{weekAgo->rank}.text();
    case CheckedRank::Kind::NotRanked:
        return PositionBadge{}.text();
    case CheckedRank::Kind::BelowTen:
        return Texts::tr("Below 10");
    }
    Q_UNREACHABLE();
}

QString AppAbove::movementText() const
{
    return movement ? movement->label() : unknown();
}

QString AppAbove::sinceText(Date now, const QLocale &locale) const
{
    if (trackId == 0)
        return unknown();
    const Date since = startOfUtcDay(sinceDay);
    if (!isCalendarDate(since) || !isCalendarDate(now))
        return unknown();
    const bool isThisYear = calendarDay(since).year() == calendarDay(now).year();
    const QString day = dayText(since, isThisYear ? DayFormat::Day : DayFormat::DayAndYear, locale);
    return isSinceOrEarlier ? Texts::tr("%1 or earlier").arg(day) : day;
}

QString AboveYou::ownText(const QLocale &locale) const
{
    if (!checkedAt || !isOwnKnown)
        return {};
    const QString day = dayText(*checkedAt, DayFormat::Day, locale);
    return ownRank ? Texts::tr("Your rank %1 on %2").arg(*ownRank).arg(day)
                   : Texts::tr("Your app was not ranked on %1").arg(day);
}

QString AboveYou::emptyText() const
{
    if (!apps.empty())
        return {};
    if (!checkedAt)
        return Texts::tr("Ranks of others are kept from the next measurement on.");
    if (!isOwnKnown)
        return Texts::tr("Where your app stood at the last check isn't known any more.");
    return ownRank ? Texts::tr("No app is above yours.")
                   : Texts::tr("The search found no apps at all.");
}

QString AboveYou::noteText() const
{
    QString note = Texts::tr("Ranks below ten are kept of your tracked competitors alone.");
    if (isMeasuredSince)
        note += u' ' + Texts::tr("What the newest check found of others could not be kept, so "
                                 "this is an earlier one.");
    return note;
}

} // namespace veltrix
