// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/keyword_check_column.h"

#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/position_badge.h"
#include "ui_kit/widgets/score_ring.h"

#include <QApplication>
#include <QCoreApplication>
#include <QPainter>

#include <array>

namespace veltrix
{

namespace
{

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(KeywordChecks)
};

using Entry = CheckEntry;
using Info = Column<CheckEntry, CheckColumn>;

QString chosenSentence(const Entry &entry)
{
    if (entry.isTracked)
        return Texts::tr("Already tracking");
    return entry.isChosen ? Texts::tr("Chosen") : Texts::tr("Not chosen");
}

/// Every cell of a phrase that is tracked says so.
QString trackedTip(const Entry &entry)
{
    return entry.isTracked ? chosenSentence(entry) : QString();
}

/// The keyword itself first: its column is narrow.
QString keywordTip(const Entry &entry)
{
    return entry.isTracked ? entry.check.keyword + u'\n' + chosenSentence(entry)
                           : entry.check.keyword;
}

void paintChosen(const CellPainting &cell, const Entry &entry)
{
    QStyleOption check;
    check.palette = cell.option.palette;
    check.state = entry.isTracked ? QStyle::State_None : QStyle::State_Enabled;
    check.state |= entry.isChecked() ? QStyle::State_On : QStyle::State_Off;
    const QStyle *style = QApplication::style();
    const int side = style->pixelMetric(QStyle::PM_IndicatorWidth, &check, cell.option.widget);
    check.rect = QRect(0, 0, side, side);
    check.rect.moveCenter(cell.option.rect.center());
    if (entry.isTracked)
        cell.painter.setOpacity(0.5);
    style->drawPrimitive(QStyle::PE_IndicatorCheckBox, &check, &cell.painter, cell.option.widget);
}

void paintRank(const CellPainting &cell, const std::optional<std::int64_t> &position)
{
    paintPosition(cell.painter, cell.content, {position}, std::nullopt, cell.tokens, cell.base());
}

QString ownRankSentence(const Entry &entry)
{
    const auto &position = entry.check.ownPosition;
    return position ? Texts::tr("your app ranks %1").arg(*position)
                    : Texts::tr("your app is not ranked");
}

ScoreRing difficultyOf(const Entry &entry)
{
    return {entry.check.difficulty, ScoreRing::Mode::Difficulty};
}

constexpr std::array columns{
    Info{
        .column = CheckColumn::Chosen,
        .title = [] { return Texts::tr("Chosen"); },
        .isTitleShown = false,
        .defaultWidth = 40,
        .sortKey =
            [](const Entry &entry) { return ColumnSortKey{.number = entry.isChosen ? 0. : 1.}; },
        .accessibleText = chosenSentence,
        .toolTip = trackedTip,
        .paint = paintChosen,
    },
    Info{
        .column = CheckColumn::Keyword,
        .title = [] { return Texts::tr("Keyword"); },
        .defaultWidth = 90,
        .minimumWidth = 90,
        .sortKey = [](const Entry &entry) { return ColumnSortKey{.text = entry.collation.get()}; },
        .text = [](const Entry &entry) { return entry.check.keyword; },
        .accessibleText = [](const Entry &entry) { return entry.check.keyword; },
        .toolTip = keywordTip,
        .paint =
            [](const CellPainting &cell, const Entry &entry) {
                paintCellText(cell, cell.content, entry.check.keyword,
                              fontFor(TextStyle::Body, cell.base()), cell.tokens[Token::Text]);
            },
    },
    Info{
        .column = CheckColumn::Rank,
        .title = [] { return Texts::tr("Rank"); },
        .defaultWidth = 92,
        .sortKey = [](const Entry &entry) { return ColumnSortKey::of(entry.check.position); },
        .text = [](const Entry &entry) { return PositionBadge{entry.check.position}.text(); },
        .accessibleText =
            [](const Entry &entry) { return PositionBadge{entry.check.position}.accessibleText(); },
        .toolTip = trackedTip,
        .paint = [](const CellPainting &cell,
                    const Entry &entry) { paintRank(cell, entry.check.position); },
    },
    Info{
        .column = CheckColumn::OwnRank,
        .title = [] { return Texts::tr("Your rank"); },
        .help = [] { return Texts::tr("The rank of your selected app"); },
        .defaultWidth = 92,
        .sortKey = [](const Entry &entry) { return ColumnSortKey::of(entry.check.ownPosition); },
        .text = [](const Entry &entry) { return PositionBadge{entry.check.ownPosition}.text(); },
        .accessibleText = ownRankSentence,
        .toolTip = trackedTip,
        .paint = [](const CellPainting &cell,
                    const Entry &entry) { paintRank(cell, entry.check.ownPosition); },
    },
    Info{
        .column = CheckColumn::Difficulty,
        .title = [] { return Texts::tr("Diff"); },
        .help = [] { return Texts::tr("Difficulty (est.)"); },
        .defaultWidth = 72,
        .sortKey = [](const Entry &entry) { return ColumnSortKey::of(entry.check.difficulty); },
        .text =
            [](const Entry &entry) {
                const auto &difficulty = entry.check.difficulty;
                return difficulty ? QString::number(*difficulty) : QString();
            },
        .accessibleText = [](const Entry &entry) { return difficultyOf(entry).accessibleText(); },
        .toolTip = trackedTip,
        .paint =
            [](const CellPainting &cell, const Entry &entry) {
                paintScoreRing(cell.painter, cell.content, difficultyOf(entry), cell.tokens,
                               cell.base());
            },
    },
};

} // namespace

std::span<const Column<CheckEntry, CheckColumn>> checkColumns()
{
    return columns;
}

} // namespace veltrix
