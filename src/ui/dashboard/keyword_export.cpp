// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/keyword_export.h"

#include "ui/dashboard/keyword_column.h"

#include <QCoreApplication>

#include <algorithm>

namespace veltrix
{

namespace
{

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(KeywordExport)
};

struct Measurement {
    TrackedKeyword keyword;
    SharedSnapshot snapshot;
};

using Entry = Measurement;

template <class Assessment>
QString scoreText(const std::optional<Assessment> &assessment)
{
    return assessment ? QString::number(assessment->score) : QString();
}

QString popularityText(const Entry &entry)
{
    const auto &measured = entry.snapshot->popularityMeasurement;
    return measured && isSearchPopularity(*measured) ? scoreText(measured) : QString();
}

QString difficultyText(const Entry &entry)
{
    const KeywordSnapshot &snapshot = *entry.snapshot;
    return snapshot.difficultyComponents.sampledAppCount != 0
               ? QString::number(snapshot.difficultyScore)
               : QString();
}

std::vector<TextColumn<Entry>> historyColumns()
{
    const auto titleOf = [](KeywordColumn column) {
        return keywordColumnInfo(column).title;
    };
    return {
        {titleOf(KeywordColumn::Keyword),
         [](const Entry &entry) {
             return entry.keyword.keyword;
         }},
        {keywordColumnInfo(KeywordColumn::Keyword).exportedAlong.title,
         [](const Entry &entry) {
             return entry.keyword.country;
         }},
        {[] { return Texts::tr("Measured at"); },
         [](const Entry &entry) {
             return formatInternetDateTime(entry.snapshot->fetchedAt);
         }},
        {[] { return Texts::tr("Position"); },
         [](const Entry &entry) {
             const auto &position = entry.snapshot->position;
             return position ? QString::number(*position) : QString();
         }},
        {titleOf(KeywordColumn::Popularity), popularityText},
        {titleOf(KeywordColumn::Difficulty), difficultyText},
        {[] { return Texts::tr("Competition"); },
         [](const Entry &entry) {
             return scoreText(entry.snapshot->competition);
         }},
        {[] { return Texts::tr("Opportunity"); },
         [](const Entry &entry) {
             return scoreText(entry.snapshot->opportunity);
         }},
        {titleOf(KeywordColumn::Target),
         [](const Entry &entry) {
             const auto &opportunity = entry.snapshot->opportunity;
             return opportunity ? opportunity->label : QString();
         }},
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

QList<QStringList> keywordHistory(const ASOStore &store, QUuid appId)
{
    QList<TrackedKeyword> keywords = store.keywordsOfApp(appId);
    std::stable_sort(keywords.begin(), keywords.end(), [](const auto &left, const auto &right) {
        return QString::localeAwareCompare(left.keyword, right.keyword) < 0;
    });
    std::vector<Measurement> measurements;
    for (const TrackedKeyword &keyword : std::as_const(keywords)) {
        for (const SharedSnapshot &snapshot : store.keywordSnapshots(keyword.id))
            measurements.push_back({keyword, snapshot});
    }
    return tableOfText(historyColumns(), measurements);
}

} // namespace veltrix
