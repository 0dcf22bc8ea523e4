// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/rank_change.h"

#include "ui_kit/text/date_texts.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/position_badge.h"

#include <QCoreApplication>

#include <cmath>

namespace veltrix
{

namespace
{

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(RankChange)
};

using Kind = RankMovement::Kind;

/// More than any number of places.
constexpr double allPlaces = 1e6;

QString missing()
{
    return QStringLiteral("—");
}

} // namespace

RankChanges RankChanges::of(const RankDays &days)
{
    // The best of what was read so far may be beaten by what was not.
    return {days.movementSince(7), days.movementSince(30),
            days.isWhole() ? days.best() : std::nullopt, days.today(), days.isWhole()};
}

QString changeValue(const std::optional<RankMovement> &change)
{
    if (!change)
        return {};
    switch (change->kind()) {
    case Kind::Improved:
        return QString::number(change->places());
    case Kind::Declined:
        return QString::number(-change->places());
    case Kind::Entered:
        return Texts::tr("Entered");
    case Kind::Left:
        return Texts::tr("Left");
    case Kind::First:
        return {};
    case Kind::Unchanged:
    case Kind::StillUnranked:
        return QStringLiteral("0");
    }
    Q_UNREACHABLE();
}

QString changeText(const std::optional<RankMovement> &change)
{
    if (!change || change->kind() == Kind::First)
        return missing();
    return change->places() > 0 ? change->label() : changeValue(change);
}

ColumnSortKey changeKey(const std::optional<RankMovement> &change)
{
    if (!change || change->kind() == Kind::First)
        return {.group = 1};
    switch (change->kind()) {
    case Kind::Improved:
        return {.number = double(change->places())};
    case Kind::Declined:
        return {.number = -double(change->places())};
    case Kind::Entered:
        return {.number = allPlaces};
    case Kind::Left:
        return {.number = -allPlaces};
    default:
        return {};
    }
}

QString changeSentence(const std::optional<RankMovement> &change, int days)
{
    const QString count = QString::number(days);
    if (!change || change->kind() == Kind::First)
        return Texts::tr("no check %1 days ago").arg(count);
    switch (change->kind()) {
    case Kind::Entered:
        return Texts::tr("entered the results in %1 days").arg(count);
    case Kind::Left:
        return Texts::tr("left the results in %1 days").arg(count);
    case Kind::Unchanged:
        return Texts::tr("no change in %1 days").arg(count);
    case Kind::StillUnranked:
        return Texts::tr("not ranked %1 days ago either").arg(count);
    default:
        return Texts::tr("%1 in %2 days").arg(movementSentence(*change), count);
    }
}

QString bestDayText(const RankCheck &best, std::int64_t today)
{
    const Date day = startOfUtcDay(best.day);
    const bool isThisYear = calendarDay(day).year() == calendarDay(startOfUtcDay(today)).year();
    return dayText(day, isThisYear ? DayFormat::Day : DayFormat::DayAndYear);
}

QString bestSentence(const RankChanges &changes)
{
    if (!changes.best)
        return Texts::tr("no best rank yet");
    return Texts::tr("best rank %1 on %2")
        .arg(QString::number(*changes.best->rank), bestDayText(*changes.best, changes.today));
}

QString bestValue(const RankChanges &changes)
{
    return changes.best ? QString::number(*changes.best->rank) : QString();
}

QString bestDateValue(const RankChanges &changes)
{
    return changes.best ? formatInternetDateTime(startOfUtcDay(changes.best->day)).left(10)
                        : QString();
}

QStringList changeSentences(const RankChanges &changes)
{
    QStringList sentences;
    if (changes.in7Days)
        sentences << changeSentence(changes.in7Days, 7);
    if (changes.in30Days)
        sentences << changeSentence(changes.in30Days, 30);
    if (changes.best)
        sentences << bestSentence(changes);
    return sentences;
}

QString changeHint(const RankChanges &changes)
{
    return changes.isWhole ? QString() : Texts::tr("Older measurements have not been read yet.");
}

void paintChangeCell(const CellPainting &cell, const std::optional<RankMovement> &change)
{
    const Token token = change ? movementToken(*change) : Token::Secondary;
    paintCellText(cell, cell.content, changeText(change),
                  fontFor(TextStyle::SecondaryMedium, cell.base()), cell.tokens[token]);
}

void paintBestCell(const CellPainting &cell, const RankChanges &changes)
{
    const QFont below = fontFor(TextStyle::Secondary, cell.base());
    if (!changes.best) {
        paintCellText(cell, cell.content, missing(), below, cell.tokens[Token::Secondary]);
        return;
    }
    const qreal rank =
        std::ceil(QFontMetricsF(fontFor(TextStyle::BodySemibold, cell.base())).height());
    const qreal day = std::ceil(QFontMetricsF(below).height());
    const qreal top = std::round(cell.content.center().y() - (rank + day) / 2);
    const QRectF upper(cell.content.x(), top, cell.content.width(), rank);
    paintPosition(cell.painter, upper, {changes.best->rank}, std::nullopt, cell.tokens,
                  cell.base());
    paintCellText(cell, QRectF(upper.x(), upper.bottom(), upper.width(), day),
                  bestDayText(*changes.best, changes.today), below, cell.tokens[Token::Secondary]);
}

} // namespace veltrix
