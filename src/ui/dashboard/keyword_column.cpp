// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/keyword_column.h"

#include "store/keyword_admission.h"
#include "ui_kit/text/storefronts.h"
#include "ui_kit/widgets/badge.h"
#include "ui_kit/widgets/position_badge.h"
#include "ui_kit/widgets/score_ring.h"

#include <QCoreApplication>
#include <QStringList>

namespace veltrix
{

namespace
{

constexpr char context[] = "KeywordTable";

QString translated(const char *text)
{
    return QCoreApplication::translate(context, text);
}

ColumnSortKey numberKey(const std::optional<std::int64_t> &value)
{
    return value ? ColumnSortKey{0, double(*value)} : ColumnSortKey{1, 0};
}

QString numberText(const std::optional<std::int64_t> &value)
{
    return value ? QString::number(*value) : QString();
}

ScoreRing popularityOf(const KeywordEntry &entry)
{
    return {entry.row.popularity, ScoreRing::Mode::Popularity};
}

ScoreRing difficultyOf(const KeywordEntry &entry)
{
    return {entry.row.difficulty, ScoreRing::Mode::Difficulty};
}

// The keyword's own order needs the collation key, which the model compares itself.
ColumnSortKey keywordKey(const KeywordEntry &)
{
    return {};
}

QString keywordText(const KeywordEntry &entry)
{
    return entry.row.keyword;
}

QString keywordHint(const KeywordEntry &entry)
{
    return entry.popularityStatus;
}

ColumnSortKey targetKey(const KeywordEntry &entry)
{
    return entry.row.opportunity ? ColumnSortKey{0, double(entry.row.opportunity->score)}
                                 : ColumnSortKey{1, 0};
}

QString targetText(const KeywordEntry &entry)
{
    return targetBadge(entry.row.opportunity).text;
}

QString targetSentence(const KeywordEntry &entry)
{
    return translated(QT_TRANSLATE_NOOP("KeywordTable", "Target: %1")).arg(targetText(entry));
}

QString targetHint(const KeywordEntry &entry)
{
    return targetBadgeHelp(entry.row.opportunity);
}

ColumnSortKey popularityKey(const KeywordEntry &entry)
{
    return numberKey(entry.row.popularity);
}

QString popularityText(const KeywordEntry &entry)
{
    return numberText(entry.row.popularity);
}

QString popularitySentence(const KeywordEntry &entry)
{
    return popularityOf(entry).accessibleText();
}

QString popularityHint(const KeywordEntry &entry)
{
    return popularityOf(entry).accessibleHint();
}

ColumnSortKey difficultyKey(const KeywordEntry &entry)
{
    return numberKey(entry.row.difficulty);
}

QString difficultyText(const KeywordEntry &entry)
{
    return numberText(entry.row.difficulty);
}

QString difficultySentence(const KeywordEntry &entry)
{
    return difficultyOf(entry).accessibleText();
}

QString difficultyHint(const KeywordEntry &entry)
{
    return difficultyOf(entry).accessibleHint();
}

ColumnSortKey positionKey(const KeywordEntry &entry)
{
    if (entry.row.awaitingMetrics)
        return {2, 0};
    return numberKey(entry.row.position);
}

QString positionText(const KeywordEntry &entry)
{
    if (entry.row.awaitingMetrics && !entry.unmeasurable.isEmpty())
        return translated(QT_TRANSLATE_NOOP("KeywordTable", "Not measurable"));
    if (entry.row.awaitingMetrics)
        return translated(QT_TRANSLATE_NOOP("KeywordTable", "Pending"));
    return entry.row.position ? QString::number(*entry.row.position)
                              : PositionBadge{entry.row.position}.text();
}

QString positionSentence(const KeywordEntry &entry)
{
    if (entry.row.awaitingMetrics)
        return positionText(entry);
    QString sentence = PositionBadge{entry.row.position}.accessibleText();
    if (entry.movement)
        sentence += QStringLiteral(", ") + movementSentence(*entry.movement);
    return sentence;
}

QString positionHint(const KeywordEntry &entry)
{
    return entry.unmeasurable.isEmpty()
               ? QString()
               : unmeasurableSentence(entry.row.keyword, entry.unmeasurable);
}

ColumnSortKey appsKey(const KeywordEntry &entry)
{
    return numberKey(entry.row.appsInRanking.isEmpty()
                         ? std::nullopt
                         : std::optional<std::int64_t>(entry.row.appsInRanking.size()));
}

QString appsText(const KeywordEntry &entry)
{
    QStringList addresses;
    for (const Url &url : entry.row.appsInRanking)
        addresses.append(url.text());
    return addresses.join(u' ');
}

QString appsSentence(const KeywordEntry &entry)
{
    return translated(QT_TRANSLATE_NOOP("KeywordTable", "Show ranked apps for %1 in %2"))
        .arg(entry.row.keyword, storefrontName(entry.row.country));
}

QString appsHint(const KeywordEntry &)
{
    return translated(QT_TRANSLATE_NOOP("KeywordTable", "View apps"));
}

} // namespace

QString KeywordColumnInfo::headerText() const
{
    return translated(title);
}

QString KeywordColumnInfo::helpText() const
{
    return *help ? translated(help) : QString();
}

const std::array<KeywordColumnInfo, keywordColumnCount> &keywordColumns()
{
    static const std::array<KeywordColumnInfo, keywordColumnCount> columns{{
        {KeywordColumn::Keyword, "keyword", QT_TRANSLATE_NOOP("KeywordTable", "Keyword"), "", 279,
         160, keywordKey, keywordText, keywordText, keywordHint},
        {KeywordColumn::Target, "target", QT_TRANSLATE_NOOP("KeywordTable", "Target"), "", 175, 110,
         targetKey, targetText, targetSentence, targetHint},
        {KeywordColumn::Popularity, "popularity",
         QT_TRANSLATE_NOOP("KeywordTable", "Popularity (est.)"),
         QT_TRANSLATE_NOOP(
             "KeywordTable",
             "Estimated search popularity from the Quorvin model, not official Apple data. Its "
             "calibration used US data; unavailable does not mean low demand."),
         134, 80, popularityKey, popularityText, popularitySentence, popularityHint},
        {KeywordColumn::Difficulty, "difficulty",
         QT_TRANSLATE_NOOP("KeywordTable", "Difficulty (est.)"), "", 134, 80, difficultyKey,
         difficultyText, difficultySentence, difficultyHint},
        {KeywordColumn::Position, "position", QT_TRANSLATE_NOOP("KeywordTable", "Ranking"), "", 175,
         90, positionKey, positionText, positionSentence, positionHint},
        {KeywordColumn::Apps, "apps", QT_TRANSLATE_NOOP("KeywordTable", "Apps"), "", 134, 80,
         appsKey, appsText, appsSentence, appsHint},
    }};
    return columns;
}

const KeywordColumnInfo &keywordColumnInfo(KeywordColumn column)
{
    return keywordColumns()[static_cast<size_t>(column)];
}

std::optional<KeywordColumn> keywordColumnOf(const QString &id)
{
    for (const KeywordColumnInfo &info : keywordColumns()) {
        if (id == QLatin1String(info.id))
            return info.column;
    }
    return std::nullopt;
}

QString keywordRowSentence(const KeywordEntry &entry, const QString &updated)
{
    QStringList parts{entry.row.keyword, storefrontName(entry.row.country), updated};
    if (!entry.row.awaitingMetrics)
        parts << targetSentence(entry) << popularitySentence(entry) << difficultySentence(entry)
              << positionSentence(entry);
    return parts.join(QStringLiteral(", "));
}

} // namespace veltrix
