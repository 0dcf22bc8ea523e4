// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/history_columns.h"

#include <QCoreApplication>

#include <algorithm>

namespace veltrix
{

namespace
{

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(HistoryColumns)
};

/// The one of that UTC day; they are oldest first.
const KeywordStandings *standingsOf(const std::vector<KeywordStandings> &standings,
                                    std::int64_t day)
{
    const auto found =
        std::ranges::lower_bound(standings, day, {}, [](const KeywordStandings &measured) {
            return utcDay(measured.fetchedAt);
        });
    return found != standings.end() && utcDay(found->fetchedAt) == day ? &*found : nullptr;
}

QString rankCell(const RivalApp &app, const KeywordStandings *measured)
{
    const auto standing = measured ? standingOf(app, *measured) : std::nullopt;
    if (!standing)
        return {};
    return standing->rank ? QString::number(*standing->rank) : Texts::tr("Not ranked");
}

} // namespace

HistoryColumns::HistoryColumns(const ASOStore &store, const QList<QUuid> &appIds)
{
    QList<TrackedCompetitor> competitors;
    for (const QUuid &appId : appIds) {
        m_notes.insert(appId, store.notes(appId));
        competitors += store.competitorsOfApp(appId);
    }
    m_rivals = rivalApps(competitors, QString());
}

QList<QStringList> HistoryColumns::titled(QList<QStringList> header) const
{
    for (QStringList &titles : header) {
        titles << Texts::tr("Notes");
        for (const RivalApp &app : m_rivals)
            titles << Texts::tr("Rank of %1").arg(app.name);
    }
    return header;
}

QString HistoryColumns::notesOf(QUuid appId, std::int64_t day) const
{
    QStringList texts;
    for (const AppNote &note : m_notes.value(appId)) {
        if (note.day == day)
            texts << note.text;
    }
    return texts.join(QStringLiteral("; "));
}

QList<QStringList> HistoryColumns::extended(QList<QStringList> rows, const TrackedKeyword &keyword,
                                            const std::vector<SharedSnapshot> &measurements,
                                            const std::vector<KeywordStandings> &standings) const
{
    for (qsizetype i = 0; i < rows.size(); ++i) {
        const std::int64_t day = utcDay(measurements[size_t(i)]->fetchedAt);
        const KeywordStandings *measured = standingsOf(standings, day);
        rows[i] << notesOf(keyword.appId, day);
        for (const RivalApp &app : m_rivals)
            rows[i] << rankCell(app, measured);
    }
    return rows;
}

} // namespace veltrix
