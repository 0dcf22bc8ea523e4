// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/overview/mover_column.h"

#include "ui_kit/table/cell_parts.h"
#include "ui_kit/text/shown_text.h"
#include "ui_kit/text/storefronts.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/position_badge.h"

#include <QCoreApplication>
#include <QPainter>

#include <array>
#include <cmath>

namespace veltrix
{

namespace
{

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(Overview)
};

using Info = Column<Mover, MoverColumn>;

QString keywordSentence(const Mover &mover)
{
    return Texts::tr("%1, %2").arg(inSentence(mover.keyword), storefrontName(mover.country));
}

/// Entries and departures lead, then who moved furthest.
double extent(const RankMovement &movement)
{
    switch (movement.kind()) {
    case RankMovement::Kind::Entered:
        return 2.0 * RankDays::lowestRank;
    case RankMovement::Kind::Left:
        return 1.5 * RankDays::lowestRank;
    default:
        return double(movement.places());
    }
}

QString lineSentence(const Mover &mover)
{
    const auto ends = smallLineOf(mover.ranks).ends();
    return ends ? Texts::tr("over 30 days from rank %1 to %2")
                      .arg(std::int64_t(ends->first))
                      .arg(std::int64_t(ends->second))
                : QString();
}

constexpr std::array columns{
    Info{
        .column = MoverColumn::Keyword,
        .title = [] { return Texts::tr("Keyword"); },
        .defaultWidth = 200,
        .minimumWidth = 70,
        .sortKey = [](const Mover &mover) { return ColumnSortKey{.text = mover.order.get()}; },
        .text = [](const Mover &mover) { return mover.keyword; },
        .exportedAlong = {[] { return Texts::tr("Storefront"); },
                          [](const Mover &mover) {
                              return mover.country;
                          }},
        .accessibleText = keywordSentence,
        .toolTip = keywordSentence,
        .paint = [](const CellPainting &cell,
                    const Mover &mover) { paintTextWithCode(cell, mover.keyword, mover.country); },
    },
    Info{
        .column = MoverColumn::App,
        .title = [] { return Texts::tr("App"); },
        .defaultWidth = 194,
        .minimumWidth = 44,
        .sortKey = [](const Mover &mover) { return ColumnSortKey{.text = mover.appOrder.get()}; },
        .text = [](const Mover &mover) { return shownLine(mover.appName); },
        .accessibleText = [](const Mover &mover) { return inSentence(mover.appName); },
        .toolTip = [](const Mover &mover) { return shownLine(mover.appName); },
        .paint =
            [](const CellPainting &cell, const Mover &mover) {
                paintIconWithText(cell, mover.icon, shownLine(mover.appName), Token::Text);
            },
    },
    Info{
        .column = MoverColumn::Before,
        // MoversModel says of which day.
        .title = [] { return Texts::tr("Before"); },
        .defaultWidth = 116,
        .minimumWidth = 92,
        .sortKey = [](const Mover &mover) { return ColumnSortKey::of(mover.before); },
        .text = [](const Mover &mover) { return PositionBadge{mover.before}.text(); },
        .accessibleText =
            [](const Mover &mover) {
                return beforeTitle(mover.period) + QStringLiteral(": ") +
                       PositionBadge{mover.before}.accessibleText();
            },
        .paint =
            [](const CellPainting &cell, const Mover &mover) {
                paintCellText(cell, cell.content, PositionBadge{mover.before}.text(),
                              fontFor(TextStyle::Body, cell.base()), cell.tokens[Token::Secondary]);
            },
    },
    Info{
        .column = MoverColumn::Now,
        .title = [] { return Texts::tr("Now"); },
        .defaultWidth = 116,
        .minimumWidth = 92,
        .sortKey = [](const Mover &mover) { return ColumnSortKey::of(mover.now); },
        .text = [](const Mover &mover) { return PositionBadge{mover.now}.text(); },
        .accessibleText =
            [](const Mover &mover) { return PositionBadge{mover.now}.accessibleText(); },
        .paint =
            [](const CellPainting &cell, const Mover &mover) {
                paintPosition(cell.painter, cell.content, {mover.now}, std::nullopt, cell.tokens,
                              cell.base());
            },
    },
    Info{
        .column = MoverColumn::Change,
        .title = [] { return Texts::tr("Change"); },
        .defaultWidth = 142,
        .minimumWidth = 112,
        .sortKey =
            [](const Mover &mover) { return ColumnSortKey{.number = extent(mover.movement)}; },
        .text = [](const Mover &mover) { return mover.movement.label(); },
        .accessibleText = [](const Mover &mover) { return movementSentence(mover.movement); },
        .toolTip = [](const Mover &mover) { return mover.movement.label(); },
        .paint =
            [](const CellPainting &cell, const Mover &mover) {
                paintCellText(cell, cell.content, mover.movement.label(),
                              fontFor(TextStyle::SecondaryMedium, cell.base()),
                              cell.tokens[movementToken(mover.movement)]);
            },
    },
    Info{
        .column = MoverColumn::Line,
        .title = [] { return Texts::tr("30 days"); },
        .help = [] { return Texts::tr("The ranks of the last 30 days, the best on top"); },
        .defaultWidth = 104,
        .minimumWidth = 104,
        .sortKey = [](const Mover &mover) { return ColumnSortKey::of(mover.now); },
        .accessibleText = lineSentence,
        .paint =
            [](const CellPainting &cell, const Mover &mover) {
                const qreal margin = std::round(cell.content.height() / 4.5);
                paintSmallLine(cell.painter, cell.content.adjusted(0, margin, 0, -margin),
                               smallLineOf(mover.ranks), Token::Secondary, cell.tokens);
            },
    },
};

} // namespace

std::span<const Column<Mover, MoverColumn>> moverColumns()
{
    return columns;
}

QString beforeTitle(Period period)
{
    return period == Period::Yesterday ? Texts::tr("Yesterday")
                                       : Texts::tr("%1 days ago").arg(daysOf(period));
}

} // namespace veltrix
