// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/keyword_export.h"

#include "ui/dashboard/keyword_table_model.h"

#include <QCoreApplication>

#include <algorithm>

namespace veltrix
{

namespace
{

QString translated(const char *text)
{
    return QCoreApplication::translate("KeywordExport", text);
}

QString optionalNumber(const std::optional<std::int64_t> &value)
{
    return value ? QString::number(*value) : QString();
}

QStringList historyHeader()
{
    return {translated(QT_TRANSLATE_NOOP("KeywordExport", "Keyword")),
            translated(QT_TRANSLATE_NOOP("KeywordExport", "Storefront")),
            translated(QT_TRANSLATE_NOOP("KeywordExport", "Measured at")),
            translated(QT_TRANSLATE_NOOP("KeywordExport", "Position")),
            translated(QT_TRANSLATE_NOOP("KeywordExport", "Popularity (est.)")),
            translated(QT_TRANSLATE_NOOP("KeywordExport", "Difficulty (est.)")),
            translated(QT_TRANSLATE_NOOP("KeywordExport", "Competition")),
            translated(QT_TRANSLATE_NOOP("KeywordExport", "Opportunity")),
            translated(QT_TRANSLATE_NOOP("KeywordExport", "Target")),
            translated(QT_TRANSLATE_NOOP("KeywordExport", "Popularity model")),
            translated(QT_TRANSLATE_NOOP("KeywordExport", "Scoring model"))};
}

QStringList historyLine(const TrackedKeyword &keyword, const KeywordSnapshot &snapshot)
{
    std::optional<std::int64_t> popularity;
    if (snapshot.popularityMeasurement && isSearchPopularity(*snapshot.popularityMeasurement))
        popularity = snapshot.popularityMeasurement->score;
    const auto competition = snapshot.competition ? std::optional(snapshot.competition->score)
                                                  : std::optional<std::int64_t>();
    const auto opportunity = snapshot.opportunity ? std::optional(snapshot.opportunity->score)
                                                  : std::optional<std::int64_t>();
    const bool sampled = snapshot.difficultyComponents.sampledAppCount != 0;
    return {keyword.keyword,
            keyword.country,
            formatInternetDateTime(snapshot.fetchedAt),
            optionalNumber(snapshot.position),
            optionalNumber(popularity),
            sampled ? QString::number(snapshot.difficultyScore) : QString(),
            optionalNumber(competition),
            optionalNumber(opportunity),
            snapshot.opportunity ? snapshot.opportunity->label : QString(),
            snapshot.popularityModelVersion.value_or(QString()),
            snapshot.scoringModelVersion.value_or(QString())};
}

} // namespace

QList<QStringList> keywordTable(const KeywordTableModel &model, const std::vector<int> &rows,
                                const std::vector<KeywordColumn> &columns)
{
    QStringList header;
    for (const KeywordColumn column : columns) {
        header.append(keywordColumnInfo(column).headerText());
        if (column == KeywordColumn::Keyword)
            header.append(translated(QT_TRANSLATE_NOOP("KeywordExport", "Storefront")));
    }
    QList<QStringList> table{header};
    for (const int row : rows) {
        const KeywordEntry &entry = model.entryAt(row);
        QStringList line;
        for (const KeywordColumn column : columns) {
            line.append(keywordColumnInfo(column).text(entry));
            if (column == KeywordColumn::Keyword)
                line.append(entry.row.country);
        }
        table.append(line);
    }
    return table;
}

QList<QStringList> keywordHistory(const ASOStore &store, QUuid appId)
{
    QList<TrackedKeyword> keywords = store.keywordsOfApp(appId);
    std::stable_sort(keywords.begin(), keywords.end(), [](const auto &left, const auto &right) {
        return QString::localeAwareCompare(left.keyword, right.keyword) < 0;
    });
    QList<QStringList> table{historyHeader()};
    for (const TrackedKeyword &keyword : std::as_const(keywords)) {
        for (const SharedSnapshot &snapshot : store.keywordSnapshots(keyword.id))
            table.append(historyLine(keyword, *snapshot));
    }
    return table;
}

} // namespace veltrix
