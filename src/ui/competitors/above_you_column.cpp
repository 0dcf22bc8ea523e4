// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/above_you_column.h"

#include "ui_kit/table/cell_parts.h"
#include "ui_kit/text/shown_text.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/position_badge.h"

#include <QCoreApplication>

#include <array>

namespace veltrix
{

namespace
{

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(AboveYou)
};

using Entry = AboveEntry;
using Info = Column<AboveEntry, AboveColumn>;

ColumnSortKey weekAgoKey(const Entry &entry)
{
    const auto &weekAgo = entry.app.weekAgo;
    if (!weekAgo)
        return {.group = 3};
    switch (weekAgo->kind) {
    case CheckedRank::Kind::Ranked:
        return {.number = double(weekAgo->rank)};
    case CheckedRank::Kind::BelowTen:
        return {.group = 1};
    case CheckedRank::Kind::NotRanked:
        return {.group = 2};
    }
    Q_UNREACHABLE();
}

/// Places gained; an entry into the results is more than any.
ColumnSortKey changeKey(const Entry &entry)
{
    const auto &movement = entry.app.movement;
    if (!movement)
        return {.group = 1};
    switch (movement->kind()) {
    case RankMovement::Kind::Entered:
        return {.number = 1e6};
    case RankMovement::Kind::Declined:
        return {.number = -double(movement->places())};
    default:
        return {.number = double(movement->places())};
    }
}

QString weekAgoSentence(const Entry &entry)
{
    const auto &weekAgo = entry.app.weekAgo;
    if (!weekAgo)
        return Texts::tr("7 days ago not known");
    if (weekAgo->kind == CheckedRank::Kind::Ranked)
        return Texts::tr("7 days ago rank %1").arg(weekAgo->rank);
    return weekAgo->kind == CheckedRank::Kind::BelowTen ? Texts::tr("7 days ago below rank 10")
                                                        : Texts::tr("7 days ago not ranked");
}

QString sinceText(const Entry &entry)
{
    return entry.app.sinceText(entry.now);
}

QString trackedText(const Entry &entry)
{
    return entry.app.isTracked ? Texts::tr("Tracked") : QString();
}

void paintText(const CellPainting &cell, const QString &text, Token token)
{
    paintCellText(cell, cell.content, text, fontFor(TextStyle::Body, cell.base()),
                  cell.tokens[token]);
}

constexpr std::array columns{
    Info{
        .column = AboveColumn::Rank,
        .title = [] { return Texts::tr("Rank"); },
        .defaultWidth = 84,
        .minimumWidth = 76,
        .sortKey =
            [](const Entry &entry) { return ColumnSortKey{.number = double(entry.app.rank)}; },
        .text = [](const Entry &entry) { return PositionBadge{entry.app.rank}.text(); },
        .accessibleText =
            [](const Entry &entry) { return PositionBadge{entry.app.rank}.accessibleText(); },
        .paint =
            [](const CellPainting &cell, const Entry &entry) {
                paintPosition(cell.painter, cell.content, {entry.app.rank}, std::nullopt,
                              cell.tokens, cell.base());
            },
    },
    Info{
        .column = AboveColumn::App,
        .title = [] { return Texts::tr("App"); },
        .defaultWidth = 200,
        .minimumWidth = 110,
        .sortKey = [](const Entry &entry) { return ColumnSortKey{.text = entry.collation.get()}; },
        .text = [](const Entry &entry) { return entry.app.shownName(); },
        .accessibleText = [](const Entry &entry) { return inSentence(entry.app.shownName()); },
        .toolTip = [](const Entry &entry) { return entry.app.shownName(); },
        .paint =
            [](const CellPainting &cell, const Entry &entry) {
                paintIconWithText(cell, entry.app.icon, entry.app.shownName(), Token::Text);
            },
    },
    Info{
        .column = AboveColumn::WeekAgo,
        .title = [] { return Texts::tr("7 days ago"); },
        .help =
            [] { return Texts::tr("The check of that day, or the last of the week before it"); },
        .defaultWidth = 100,
        .minimumWidth = 88,
        .sortKey = weekAgoKey,
        .text = [](const Entry &entry) { return entry.app.weekAgoText(); },
        .accessibleText = weekAgoSentence,
        .paint =
            [](const CellPainting &cell, const Entry &entry) {
                paintText(cell, entry.app.weekAgoText(), Token::Secondary);
            },
    },
    Info{
        .column = AboveColumn::Change,
        .title = [] { return Texts::tr("Change"); },
        .defaultWidth = 116,
        .minimumWidth = 80,
        .sortKey = changeKey,
        .text = [](const Entry &entry) { return entry.app.movementText(); },
        .accessibleText =
            [](const Entry &entry) {
                return entry.app.movement ? movementSentence(*entry.app.movement)
                                          : Texts::tr("change not known");
            },
        .toolTip = [](const Entry &entry) { return entry.app.movementText(); },
        .paint =
            [](const CellPainting &cell, const Entry &entry) {
                const auto &movement = entry.app.movement;
                paintCellText(cell, cell.content, entry.app.movementText(),
                              fontFor(TextStyle::SecondaryMedium, cell.base()),
                              cell.tokens[movement ? movementToken(*movement) : Token::Secondary]);
            },
    },
    Info{
        .column = AboveColumn::Since,
        .title = [] { return Texts::tr("Above you since"); },
        .help = [] { return Texts::tr("The first of all checks up to now at which it was above"); },
        .defaultWidth = 144,
        .minimumWidth = 120,
        .sortKey =
            [](const Entry &entry) {
                return entry.app.trackId == 0 ? ColumnSortKey{.group = 1}
                                              : ColumnSortKey{.number = double(entry.app.sinceDay)};
            },
        .text = sinceText,
        .accessibleText =
            [](const Entry &entry) {
                return entry.app.trackId == 0
                           ? Texts::tr("above you, since when is not known")
                           : Texts::tr("above you since %1").arg(sinceText(entry));
            },
        .toolTip = sinceText,
        .paint = [](const CellPainting &cell,
                    const Entry &entry) { paintText(cell, sinceText(entry), Token::Text); },
    },
    Info{
        .column = AboveColumn::Tracked,
        .title = [] { return Texts::tr("Competitor"); },
        .defaultWidth = 100,
        .minimumWidth = 92,
        .sortKey =
            [](const Entry &entry) {
                return ColumnSortKey{.number = entry.app.isTracked ? 0. : 1.};
            },
        .text = trackedText,
        .accessibleText =
            [](const Entry &entry) {
                return entry.app.isTracked ? Texts::tr("tracked as competitor")
                                           : Texts::tr("not tracked");
            },
        .paint = [](const CellPainting &cell,
                    const Entry &entry) { paintText(cell, trackedText(entry), Token::Secondary); },
    },
};

} // namespace

std::span<const Column<AboveEntry, AboveColumn>> aboveColumns()
{
    return columns;
}

} // namespace veltrix
