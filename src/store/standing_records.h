// SPDX-License-Identifier: GPL-3.0-or-later
// Where others stood, as the history keeps it.
#pragma once

#include "model/itunes_app_result.h"
#include "model/keyword_snapshot.h"
#include "model/keyword_standings.h"
#include "model/tracked_competitor.h"
#include "store/history_days.h"
#include "store/record_numbers.h"

#include <QHash>

#include <optional>
#include <span>
#include <vector>

namespace veltrix
{

/// What the results of a measurement say of the leaders and of the competitors of the keyword's
/// app. Of several records of one app the first counts.
KeywordStandings standingsOf(const KeywordSnapshot &snapshot, const QList<ITunesAppResult> &results,
                             const QList<TrackedCompetitor> &competitors);

/// The tables "leader" (a row a measurement), "place" (a row a competitor) and "app_name". A
/// keyword has one measurement a UTC day here. Every function throws DatabaseError, or
/// DecodingError for a row that is damaged; what changes something belongs into a transaction.
class StandingRecords
{
public:
    explicit StandingRecords(SqliteDatabase &database);

    /// In the place of what the keyword has of the same UTC day.
    void put(const KeywordStandings &standings);
    /// All there are of a keyword, oldest first.
    [[nodiscard]] std::vector<KeywordStandings> ofKeyword(const QUuid &keywordId);
    /// The newest of each keyword that is not later than `latest`; none of those that have none.
    [[nodiscard]] std::vector<KeywordStandings> newest(std::span<const QUuid> keywordIds,
                                                       Date latest);

    void removeKeyword(std::int64_t keyword) { m_days.removeAll(keyword); }
    void joinKeyword(std::int64_t from, std::int64_t to) { m_days.join(from, to); }
    void removeRival(std::int64_t app);
    /// Where both stand in one measurement, the second counts.
    void joinRival(std::int64_t from, std::int64_t to);

private:
    [[nodiscard]] std::vector<LeadingApp> leadersFrom(const QByteArray &json);
    QString nameOf(std::int64_t trackId);

    SqliteDatabase &m_database;
    RecordNumbers m_keywords;
    RecordNumbers m_apps;
    HistoryDays m_days;
    SqliteStatement m_findName;
    QHash<std::int64_t, QString> m_names;
};

} // namespace veltrix
