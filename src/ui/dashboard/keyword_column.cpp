// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/keyword_column.h"

#include "store/keyword_admission.h"
#include "ui/dashboard/keyword_cells.h"
#include "ui_kit/text/shown_text.h"
#include "ui_kit/text/storefronts.h"
#include "ui_kit/text/tool_tip_text.h"
#include "ui_kit/widgets/badge.h"
#include "ui_kit/widgets/position_badge.h"
#include "ui_kit/widgets/score_ring.h"

#include <QCoreApplication>

#include <array>

namespace veltrix
{

namespace
{

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(KeywordTable)
};

using Entry = KeywordEntry;

QString numberText(const std::optional<std::int64_t> &value)
{
    return value ? QString::number(*value) : QString();
}

QString whyUnmeasurable(const Entry &entry)
{
    return entry.unmeasurable.isEmpty()
               ? QString()
               : unmeasurableSentence(entry.row.keyword, entry.unmeasurable);
}

QString notMeasurable()
{
    return Texts::tr("Not measurable");
}

QString tagsSentence(const Entry &entry)
{
    QStringList names;
    for (const QString &tag : entry.tags)
        names.append(inSentence(tag));
    return names.isEmpty() ? Texts::tr("No tags")
                           : Texts::tr("Tags: %1").arg(names.join(QStringLiteral(", ")));
}

/// The row as one sentence.
QString rowSentence(const Entry &entry)
{
    QStringList parts{entry.row.keyword, storefrontName(entry.row.country)};
    if (!entry.tags.isEmpty())
        parts << tagsSentence(entry);
    parts << timeText(entry);
    for (const KeywordColumnInfo &info : keywordColumns()) {
        if (info.isInSentence && !entry.row.awaitingMetrics)
            parts << info.accessibleText(entry);
    }
    parts << changeSentences(entry.changes);
    return parts.join(QStringLiteral(", "));
}

QString keywordToolTip(const Entry &entry)
{
    QStringList lines{inSentence(entry.row.keyword) + QStringLiteral(" · ") +
                      storefrontName(entry.row.country)};
    if (!entry.unmeasurable.isEmpty())
        lines << timeText(entry);
    if (!entry.popularityStatus.isEmpty())
        lines << entry.popularityStatus;
    return toolTipText(lines.join(u'\n'));
}

Badge targetOf(const Entry &entry)
{
    // No refresh helps what can never be measured.
    if (!entry.row.opportunity && !entry.unmeasurable.isEmpty())
        return {notMeasurable(), Token::Gray};
    return targetBadge(entry.row.opportunity);
}

QString targetText(const Entry &entry)
{
    return Texts::tr("Target: %1").arg(targetOf(entry).text);
}

QString targetHint(const Entry &entry)
{
    if (!entry.row.opportunity && !entry.unmeasurable.isEmpty())
        return whyUnmeasurable(entry);
    return targetBadgeHelp(entry.row.opportunity);
}

ColumnSortKey targetKey(const Entry &entry)
{
    const auto &opportunity = entry.row.opportunity;
    return ColumnSortKey::of(opportunity ? std::optional(opportunity->score) : std::nullopt);
}

ScoreRing popularityOf(const Entry &entry)
{
    return {entry.row.popularity, ScoreRing::Mode::Popularity};
}

ScoreRing difficultyOf(const Entry &entry)
{
    return {entry.row.difficulty, ScoreRing::Mode::Difficulty};
}

void paintRing(const CellPainting &cell, const ScoreRing &ring)
{
    paintScoreRing(cell.painter, cell.content, ring, cell.tokens, cell.base());
}

QString positionText(const Entry &entry)
{
    if (entry.row.awaitingMetrics)
        return entry.unmeasurable.isEmpty() ? Texts::tr("Pending") : notMeasurable();
    return entry.row.position ? QString::number(*entry.row.position)
                              : PositionBadge{entry.row.position}.text();
}

QString positionSentence(const Entry &entry)
{
    if (entry.row.awaitingMetrics)
        return positionText(entry);
    QString sentence = PositionBadge{entry.row.position}.accessibleText();
    if (entry.movement)
        sentence += QStringLiteral(", ") + movementSentence(*entry.movement);
    return sentence;
}

ColumnSortKey appsKey(const Entry &entry)
{
    const qsizetype count = entry.row.appsInRanking.size();
    return ColumnSortKey::of(count > 0 ? std::optional(count) : std::nullopt);
}

QString appsText(const Entry &entry)
{
    QStringList addresses;
    for (const Url &url : entry.row.appsInRanking)
        addresses.append(url.text());
    return addresses.join(u' ');
}

QString changeHelp(int days)
{
    return Texts::tr("Places won or lost since the check %1 days ago, or else the last one of the "
                     "week before it.")
        .arg(days);
}

QString changeToolTip(const Entry &entry, const QString &sentence)
{
    return toolTipText((sentence + u'\n' + changeHint(entry.changes)).trimmed());
}

ColumnSortKey bestKey(const Entry &entry)
{
    const auto &best = entry.changes.best;
    return ColumnSortKey::of(best ? best->rank : std::nullopt);
}

constexpr TextColumn<Entry> bestOn{[] { return Texts::tr("Best on"); },
                                   [](const Entry &entry) {
                                       return bestDateValue(entry.changes);
                                   }};

constexpr TextColumn<Entry> storefront{[] { return Texts::tr("Storefront"); },
                                       [](const Entry &entry) {
                                           return entry.row.country;
                                       }};

constexpr std::array columns{
    KeywordColumnInfo{
        .column = KeywordColumn::Keyword,
        .id = "keyword",
        .title = [] { return Texts::tr("Keyword"); },
        .defaultWidth = 279,
        .minimumWidth = 160,
        .sortKey = [](const Entry &entry) { return ColumnSortKey{.text = entry.order.get()}; },
        .text = [](const Entry &entry) { return entry.row.keyword; },
        .exportedAlong = storefront,
        .accessibleText = rowSentence,
        .accessibleHint = [](const Entry &entry) { return entry.popularityStatus; },
        .toolTip = keywordToolTip,
        .isInSentence = false,
        .paint = paintKeywordCell,
    },
    KeywordColumnInfo{
        .column = KeywordColumn::Tags,
        .id = "tags",
        .title = [] { return Texts::tr("Tags"); },
        .defaultWidth = 116,
        .minimumWidth = 96,
        .sortKey =
            [](const Entry &entry) {
                return entry.tagOrder ? ColumnSortKey{.text = entry.tagOrder.get()}
                                      : ColumnSortKey{.group = 1};
            },
        .text = [](const Entry &entry) { return entry.tags.join(QStringLiteral("; ")); },
        .accessibleText = tagsSentence,
        .toolTip =
            [](const Entry &entry) {
                return entry.tags.isEmpty() ? QString() : toolTipText(tagsSentence(entry));
            },
        .isInSentence = false,
        .paint =
            [](const CellPainting &cell, const Entry &entry) {
                paintTagRow(cell.painter, cell.content, entry.tagChips, cell.tokens, cell.base());
            },
    },
    KeywordColumnInfo{
        .column = KeywordColumn::Target,
        .id = "target",
        .title = [] { return Texts::tr("Target"); },
        .defaultWidth = 175,
        .minimumWidth = 110,
        .sortKey = targetKey,
        .text = [](const Entry &entry) { return targetOf(entry).text; },
        .accessibleText = targetText,
        .accessibleHint = targetHint,
        .toolTip =
            [](const Entry &entry) {
                const QString hint = targetHint(entry);
                return hint.isEmpty() ? targetText(entry) : hint;
            },
        .paint =
            [](const CellPainting &cell, const Entry &entry) {
                paintBadge(cell.painter, cell.content, targetOf(entry), cell.tokens, cell.base());
            },
    },
    KeywordColumnInfo{
        .column = KeywordColumn::Popularity,
        .id = "popularity",
        .title = [] { return Texts::tr("Popularity (est.)"); },
        .help =
            [] {
                return Texts::tr("Estimated search popularity from the Quorvin model, not official "
                                 "Apple data. Its calibration used US data; unavailable does not "
                                 "mean low demand.");
            },
        .defaultWidth = 134,
        .minimumWidth = 80,
        .sortKey = [](const Entry &entry) { return ColumnSortKey::of(entry.row.popularity); },
        .text = [](const Entry &entry) { return numberText(entry.row.popularity); },
        .accessibleText = [](const Entry &entry) { return popularityOf(entry).accessibleText(); },
        .accessibleHint = [](const Entry &entry) { return popularityOf(entry).accessibleHint(); },
        .toolTip =
            [](const Entry &entry) {
                const QString hint = popularityOf(entry).accessibleHint();
                return toolTipText((hint + u'\n' + entry.popularityStatus).trimmed());
            },
        .paint = [](const CellPainting &cell,
                    const Entry &entry) { paintRing(cell, popularityOf(entry)); },
    },
    KeywordColumnInfo{
        .column = KeywordColumn::Difficulty,
        .id = "difficulty",
        .title = [] { return Texts::tr("Difficulty (est.)"); },
        .defaultWidth = 134,
        .minimumWidth = 80,
        .sortKey = [](const Entry &entry) { return ColumnSortKey::of(entry.row.difficulty); },
        .text = [](const Entry &entry) { return numberText(entry.row.difficulty); },
        .accessibleText = [](const Entry &entry) { return difficultyOf(entry).accessibleText(); },
        .accessibleHint = [](const Entry &entry) { return difficultyOf(entry).accessibleHint(); },
        .paint = [](const CellPainting &cell,
                    const Entry &entry) { paintRing(cell, difficultyOf(entry)); },
    },
    KeywordColumnInfo{
        .column = KeywordColumn::Position,
        .id = "position",
        .title = [] { return Texts::tr("Ranking"); },
        .defaultWidth = 175,
        .minimumWidth = 90,
        .sortKey =
            [](const Entry &entry) {
                return entry.row.awaitingMetrics ? ColumnSortKey{.group = 2}
                                                 : ColumnSortKey::of(entry.row.position);
            },
        .text = positionText,
        .accessibleText = positionSentence,
        .accessibleHint = whyUnmeasurable,
        .toolTip =
            [](const Entry &entry) {
                return entry.row.awaitingMetrics ? whyUnmeasurable(entry) : positionSentence(entry);
            },
        .paint = [](const CellPainting &cell,
                    const Entry &entry) { paintRankingCell(cell, entry, positionText(entry)); },
    },
    KeywordColumnInfo{
        .column = KeywordColumn::In7Days,
        .id = "change7",
        .title = [] { return Texts::tr("7 days"); },
        .help = [] { return changeHelp(7); },
        .defaultWidth = 72,
        .minimumWidth = 64,
        .isShownAtFirst = false,
        .sortKey = [](const Entry &entry) { return changeKey(entry.changes.in7Days); },
        .text = [](const Entry &entry) { return changeValue(entry.changes.in7Days); },
        .accessibleText =
            [](const Entry &entry) { return changeSentence(entry.changes.in7Days, 7); },
        .accessibleHint = [](const Entry &entry) { return changeHint(entry.changes); },
        .toolTip =
            [](const Entry &entry) {
                return changeToolTip(entry, changeSentence(entry.changes.in7Days, 7));
            },
        .isInSentence = false,
        .paint = [](const CellPainting &cell,
                    const Entry &entry) { paintChangeCell(cell, entry.changes.in7Days); },
    },
    KeywordColumnInfo{
        .column = KeywordColumn::In30Days,
        .id = "change30",
        .title = [] { return Texts::tr("30 days"); },
        .help = [] { return changeHelp(30); },
        .defaultWidth = 72,
        .minimumWidth = 64,
        .isShownAtFirst = false,
        .sortKey = [](const Entry &entry) { return changeKey(entry.changes.in30Days); },
        .text = [](const Entry &entry) { return changeValue(entry.changes.in30Days); },
        .accessibleText =
            [](const Entry &entry) { return changeSentence(entry.changes.in30Days, 30); },
        .accessibleHint = [](const Entry &entry) { return changeHint(entry.changes); },
        .toolTip =
            [](const Entry &entry) {
                return changeToolTip(entry, changeSentence(entry.changes.in30Days, 30));
            },
        .isInSentence = false,
        .paint = [](const CellPainting &cell,
                    const Entry &entry) { paintChangeCell(cell, entry.changes.in30Days); },
    },
    KeywordColumnInfo{
        .column = KeywordColumn::Best,
        .id = "best",
        .title = [] { return Texts::tr("Best"); },
        .help =
            [] { return Texts::tr("The best rank of all checks, and the first day that had it."); },
        .defaultWidth = 96,
        .minimumWidth = 76,
        .isShownAtFirst = false,
        .sortKey = [](const Entry &entry) { return bestKey(entry); },
        .text = [](const Entry &entry) { return bestValue(entry.changes); },
        .exportedAlong = bestOn,
        .accessibleText = [](const Entry &entry) { return bestSentence(entry.changes); },
        .accessibleHint = [](const Entry &entry) { return changeHint(entry.changes); },
        .toolTip =
            [](const Entry &entry) { return changeToolTip(entry, bestSentence(entry.changes)); },
        .isInSentence = false,
        .paint = [](const CellPainting &cell,
                    const Entry &entry) { paintBestCell(cell, entry.changes); },
    },
    KeywordColumnInfo{
        .column = KeywordColumn::Apps,
        .id = "apps",
        .title = [] { return Texts::tr("Apps"); },
        .defaultWidth = 134,
        .minimumWidth = 80,
        .sortKey = appsKey,
        .text = appsText,
        .accessibleText =
            [](const Entry &entry) {
                return Texts::tr("Show ranked apps for %1 in %2")
                    .arg(entry.row.keyword, storefrontName(entry.row.country));
            },
        .accessibleHint = [](const Entry &) { return Texts::tr("View apps"); },
        .isInSentence = false,
        .paint = paintAppsCell,
    },
};

} // namespace

std::span<const KeywordColumnInfo> keywordColumns()
{
    return columns;
}

const KeywordColumnInfo &keywordColumnInfo(KeywordColumn column)
{
    return columns[static_cast<size_t>(column)];
}

std::optional<KeywordColumn> keywordColumnOf(const QString &id)
{
    for (const KeywordColumnInfo &info : columns) {
        if (id == QLatin1String(info.id))
            return info.column;
    }
    return std::nullopt;
}

} // namespace veltrix
