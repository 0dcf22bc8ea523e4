// SPDX-License-Identifier: GPL-3.0-or-later
// Tables that are easy to read, in place of the window's.
#pragma once

#include "headless/export_run.h"

namespace veltrix
{

/// Keywords by their text; a measurement is a line "moon 2".
inline ExportTables exportTables()
{
    return {
        .keywordsOfApp =
            [](const ASOStore &store, QUuid appId) {
                auto keywords = store.keywordsOfApp(appId);
                std::ranges::sort(keywords, {}, &TrackedKeyword::keyword);
                return keywords;
            },
        .table =
            [](const ASOStore &store, const QList<QUuid> &ids) {
                QList<QStringList> rows{{QStringLiteral("keyword")}};
                for (const QUuid &id : ids)
                    rows.append({store.trackedKeyword(id)->keyword});
                return rows;
            },
        .historyHeader =
            [](const ASOStore &, const QList<QUuid> &) {
                return QList<QStringList>{{QStringLiteral("measurement")}};
            },
        .history =
            [](const ASOStore &, const QList<QUuid> &, const TrackedKeyword &keyword,
               const std::vector<SharedSnapshot> &measurements,
               const std::vector<KeywordStandings> &) {
                QList<QStringList> rows;
                for (const SharedSnapshot &snapshot : measurements)
                    rows.append({keyword.keyword, QString::number(snapshot->position.value_or(0))});
                return rows;
            },
        .toCsv =
            [](const QList<QStringList> &rows) {
                QString text;
                for (const QStringList &row : rows)
                    text += row.join(u' ') + u'\n';
                return text.toUtf8();
            },
    };
}

} // namespace veltrix
