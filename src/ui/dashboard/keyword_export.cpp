// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/keyword_export.h"

#include "ui/dashboard/keyword_column.h"
#include "ui/dashboard/rank_change.h"
#include "ui_kit/widgets/position_badge.h"

#include <QCoreApplication>

#include <algorithm>

namespace veltrix
{

namespace
{

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(KeywordExport)
};

/// A keyword and one of its snapshots; null where there is none.
struct Entry {
    TrackedKeyword keyword;
    SharedSnapshot snapshot;
    /// Of the newest snapshot; empty in a history.
    QString appName = {};
    std::optional<RankMovement> movement = std::nullopt;
    RankChanges changes = {};
    QStringList tags = {};
};

using EntryColumn = TextColumn<Entry>;

template <class Assessment>
QString scoreText(const std::optional<Assessment> &assessment)
{
    return assessment ? QString::number(assessment->score) : QString();
}

QString keywordText(const Entry &entry)
{
    return entry.keyword.keyword;
}

QString storefrontText(const Entry &entry)
{
    return entry.keyword.country;
}

/// "2026-11-22 10:03:05": spreadsheets take it for a date and a time.
QString measuredAtText(const Entry &entry)
{
    return entry.snapshot
               ? formatInternetDateTime(entry.snapshot->fetchedAt).left(19).replace(u'T', u' ')
               : QString();
}

QString rankText(const Entry &entry)
{
    if (!entry.snapshot)
        return {};
    const auto &position = entry.snapshot->position;
    return position ? QString::number(*position) : PositionBadge{position}.text();
}

QString changeText(const Entry &entry)
{
    using Kind = RankMovement::Kind;
    if (!entry.movement || entry.movement->kind() == Kind::First)
        return {};
    switch (entry.movement->kind()) {
    case Kind::Improved:
        return QString::number(entry.movement->places());
    case Kind::Declined:
        return QString::number(-entry.movement->places());
    case Kind::Unchanged:
        return QStringLiteral("0");
    default:
        return entry.movement->label();
    }
}

QString popularityText(const Entry &entry)
{
    if (!entry.snapshot)
        return {};
    const auto &measured = entry.snapshot->popularityMeasurement;
    return measured && isSearchPopularity(*measured) ? scoreText(measured) : QString();
}

QString difficultyText(const Entry &entry)
{
    return entry.snapshot && entry.snapshot->difficultyComponents.sampledAppCount != 0
               ? QString::number(entry.snapshot->difficultyScore)
               : QString();
}

QString competitionText(const Entry &entry)
{
    return entry.snapshot ? scoreText(entry.snapshot->competition) : QString();
}

QString opportunityText(const Entry &entry)
{
    return entry.snapshot ? scoreText(entry.snapshot->opportunity) : QString();
}

QString targetText(const Entry &entry)
{
    return entry.snapshot && entry.snapshot->opportunity ? entry.snapshot->opportunity->label
                                                         : QString();
}

/// The column of a table on screen, by its title there.
EntryColumn columnOf(KeywordColumn column, QString (*text)(const Entry &entry))
{
    return {keywordColumnInfo(column).title, text};
}

std::vector<EntryColumn> keywordTableColumns()
{
    return {
        columnOf(KeywordColumn::Keyword, keywordText),
        {keywordColumnInfo(KeywordColumn::Keyword).exportedAlong.title, storefrontText},
        {[] { return Texts::tr("App"); },
         [](const Entry &entry) {
             return entry.appName;
         }},
        {[] { return Texts::tr("Measured at (UTC)"); }, measuredAtText},
        columnOf(KeywordColumn::Position, rankText),
        {[] { return Texts::tr("Change"); }, changeText},
        columnOf(KeywordColumn::Popularity, popularityText),
        columnOf(KeywordColumn::Difficulty, difficultyText),
        {[] { return Texts::tr("Competition"); }, competitionText},
        {[] { return Texts::tr("Opportunity"); }, opportunityText},
        columnOf(KeywordColumn::Target, targetText),
        // At the end: who reads the columns by their places goes on finding them.
        columnOf(KeywordColumn::In7Days,
                 [](const Entry &entry) { return changeValue(entry.changes.in7Days); }),
        columnOf(KeywordColumn::In30Days,
                 [](const Entry &entry) { return changeValue(entry.changes.in30Days); }),
        columnOf(KeywordColumn::Best, [](const Entry &entry) { return bestValue(entry.changes); }),
        {keywordColumnInfo(KeywordColumn::Best).exportedAlong.title,
         [](const Entry &entry) {
             return bestDateValue(entry.changes);
         }},
        columnOf(KeywordColumn::Tags,
                 [](const Entry &entry) { return entry.tags.join(QStringLiteral("; ")); }),
    };
}

std::vector<EntryColumn> historyColumns()
{
    return {
        columnOf(KeywordColumn::Keyword, keywordText),
        {keywordColumnInfo(KeywordColumn::Keyword).exportedAlong.title, storefrontText},
        {[] { return Texts::tr("Measured at (UTC)"); }, measuredAtText},
        {[] { return Texts::tr("Position"); },
         [](const Entry &entry) {
             const auto &position = entry.snapshot->position;
             return position ? QString::number(*position) : QString();
         }},
        columnOf(KeywordColumn::Popularity, popularityText),
        columnOf(KeywordColumn::Difficulty, difficultyText),
        {[] { return Texts::tr("Competition"); }, competitionText},
        {[] { return Texts::tr("Opportunity"); }, opportunityText},
        columnOf(KeywordColumn::Target, targetText),
        {[] { return Texts::tr("Popularity model"); },
         [](const Entry &entry) {
             return entry.snapshot->popularityModelVersion.value_or(QString());
         }},
        {[] { return Texts::tr("Scoring model"); },
         [](const Entry &entry) {
             return entry.snapshot->scoringModelVersion.value_or(QString());
         }},
    };
}

} // namespace

QList<TrackedKeyword> sortedKeywords(const ASOStore &store, QUuid appId)
{
    QList<TrackedKeyword> keywords = store.keywordsOfApp(appId);
    std::stable_sort(keywords.begin(), keywords.end(), [](const auto &left, const auto &right) {
        return QString::localeAwareCompare(left.keyword, right.keyword) < 0;
    });
    return keywords;
}

QList<QStringList> keywordTable(const ASOStore &store, const QList<QUuid> &ids)
{
    std::vector<Entry> entries;
    for (const QUuid &id : ids) {
        const auto keyword = store.trackedKeyword(id);
        if (!keyword)
            continue;
        const auto app = store.app(keyword->appId);
        entries.push_back({*keyword, store.newestSnapshot(id), app ? app->appName : QString(),
                           store.latestMovement(id), RankChanges::of(store.rankDays(id)),
                           store.tags(id)});
    }
    return tableOfText(keywordTableColumns(), entries);
}

QList<QStringList> keywordTableOfAllApps(const ASOStore &store)
{
    QList<QUuid> ids;
    for (const AppProfile &app : store.apps()) {
        for (const TrackedKeyword &keyword : sortedKeywords(store, app.id))
            ids.append(keyword.id);
    }
    return keywordTable(store, ids);
}

QList<QStringList> keywordHistoryHeader()
{
    return tableOfText(historyColumns(), std::vector<Entry>());
}

QList<QStringList> keywordHistory(const TrackedKeyword &keyword,
                                  const std::vector<SharedSnapshot> &measurements)
{
    std::vector<Entry> entries;
    for (const SharedSnapshot &snapshot : measurements)
        entries.push_back({keyword, snapshot});
    return tableOfText(historyColumns(), entries).mid(1);
}

} // namespace veltrix
