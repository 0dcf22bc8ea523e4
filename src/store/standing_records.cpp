// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/standing_records.h"

#include "json/json_error.h"
#include "scoring/app_signals.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>

namespace veltrix
{

namespace
{

QByteArray jsonOf(const std::vector<LeadingApp> &leaders)
{
    QByteArray json = "[";
    for (const LeadingApp &leader : leaders) {
        if (json.size() > 1)
            json += ',';
        json += QByteArray::number(qlonglong(leader.trackId));
    }
    return json + ']';
}

RivalStanding rivalFrom(const SqliteStatement &row, int column)
{
    return {QUuid::fromRfc4122(row.bytes(column)), row.optionalInteger(column + 1)};
}

} // namespace

KeywordStandings standingsOf(const KeywordSnapshot &snapshot, const QList<ITunesAppResult> &results,
                             const QList<TrackedCompetitor> &competitors)
{
    KeywordStandings standings{snapshot.trackedKeywordId, snapshot.fetchedAt, {}, {}};
    const qsizetype leaders = std::min(results.size(), qsizetype(KeywordStandings::mostLeaders));
    for (const ITunesAppResult &result : results.first(leaders)) {
        const std::int64_t id = result.trackId.value_or(0);
        standings.leaders.push_back(
            {id, id == 0 ? QString() : result.trackName.value_or(QString())});
    }
    for (const TrackedCompetitor &rival : competitors)
        standings.rivals.push_back({rival.id, rankedPosition(results, rival.trackId)});
    return standings;
}

StandingRecords::StandingRecords(SqliteDatabase &database)
    : m_database(database), m_keywords(database, "keyword"), m_apps(database, "app"),
      m_days(database, {"leader", "place"}),
      m_findName(database.prepare("SELECT name FROM app_name WHERE app = ?1"))
{
}

void StandingRecords::put(const KeywordStandings &standings)
{
    const std::int64_t keyword = m_keywords.of(standings.keywordId);
    m_days.remove(keyword, utcDay(standings.fetchedAt));
    SqliteStatement leaders = m_database.prepare("INSERT INTO leader VALUES (?1, ?2, ?3)");
    leaders.bind(1, keyword);
    leaders.bind(2, referenceSeconds(standings.fetchedAt));
    leaders.bind(3, QString::fromLatin1(jsonOf(standings.leaders)));
    leaders.run();
    SqliteStatement name = m_database.prepare(
        "INSERT INTO app_name VALUES (?1, ?2) ON CONFLICT (app) DO UPDATE SET name = excluded.name "
        "WHERE name <> excluded.name");
    for (const LeadingApp &leader : standings.leaders) {
        if (leader.trackId == 0 || leader.name.isEmpty())
            continue;
        name.bind(1, leader.trackId);
        name.bind(2, leader.name);
        name.run();
    }
    SqliteStatement place =
        m_database.prepare("INSERT OR REPLACE INTO place VALUES (?1, ?2, ?3, ?4)");
    for (const RivalStanding &rival : standings.rivals) {
        place.bind(1, keyword);
        place.bind(2, referenceSeconds(standings.fetchedAt));
        place.bind(3, m_apps.of(rival.competitorId));
        if (rival.rank)
            place.bind(4, *rival.rank);
        else
            place.bindNull(4);
        place.run();
    }
}

std::vector<KeywordStandings> StandingRecords::ofKeyword(const QUuid &keywordId)
{
    std::vector<KeywordStandings> found;
    const auto keyword = m_keywords.known(keywordId);
    if (!keyword)
        return found;
    SqliteStatement leaders = m_database.prepare(
        "SELECT fetchedAt, apps FROM leader WHERE keyword = ?1 ORDER BY fetchedAt");
    leaders.bind(1, *keyword);
    while (leaders.step()) {
        found.push_back({keywordId,
                         dateFromReferenceSeconds(leaders.real(0)),
                         leadersFrom(leaders.bytes(1)),
                         {}});
    }
    SqliteStatement places = m_database.prepare(
        "SELECT place.fetchedAt, app.id, place.position FROM place JOIN app ON app.number = "
        "place.app WHERE place.keyword = ?1 ORDER BY place.fetchedAt, place.app");
    places.bind(1, *keyword);
    auto measurement = found.begin();
    while (places.step()) {
        const Date date = dateFromReferenceSeconds(places.real(0));
        while (measurement != found.end() && measurement->fetchedAt < date)
            ++measurement;
        if (measurement != found.end() && measurement->fetchedAt == date)
            measurement->rivals.push_back(rivalFrom(places, 1));
    }
    return found;
}

std::vector<KeywordStandings> StandingRecords::newest(std::span<const QUuid> keywordIds,
                                                      Date latest)
{
    SqliteStatement leaders =
        m_database.prepare("SELECT fetchedAt, apps FROM leader WHERE keyword = ?1 AND fetchedAt <= "
                           "?2 ORDER BY fetchedAt DESC LIMIT 1");
    SqliteStatement places = m_database.prepare(
        "SELECT app.id, place.position FROM place JOIN app ON app.number = place.app WHERE "
        "place.keyword = ?1 AND place.fetchedAt = ?2 ORDER BY place.app");
    std::vector<KeywordStandings> found;
    for (const QUuid &id : keywordIds) {
        const auto keyword = m_keywords.known(id);
        if (!keyword)
            continue;
        leaders.bind(1, *keyword);
        leaders.bind(2, referenceSeconds(latest));
        if (!leaders.step())
            continue;
        KeywordStandings standings{
            id, dateFromReferenceSeconds(leaders.real(0)), leadersFrom(leaders.bytes(1)), {}};
        leaders.reset();
        places.bind(1, *keyword);
        places.bind(2, referenceSeconds(standings.fetchedAt));
        while (places.step())
            standings.rivals.push_back(rivalFrom(places, 0));
        found.push_back(std::move(standings));
    }
    return found;
}

void StandingRecords::removeRival(std::int64_t app)
{
    SqliteStatement rows = m_database.prepare("DELETE FROM place WHERE app = ?1");
    rows.bind(1, app);
    rows.run();
}

void StandingRecords::joinRival(std::int64_t from, std::int64_t to)
{
    SqliteStatement move = m_database.prepare("UPDATE OR IGNORE place SET app = ?2 WHERE app = ?1");
    move.bind(1, from);
    move.bind(2, to);
    move.run();
    removeRival(from);
}

std::vector<LeadingApp> StandingRecords::leadersFrom(const QByteArray &json)
{
    const QJsonDocument list = QJsonDocument::fromJson(json);
    if (!list.isArray())
        throw DecodingError(QStringLiteral("A record of the history is damaged."));
    std::vector<LeadingApp> leaders;
    for (const QJsonValue &id : list.array()) {
        const std::int64_t trackId = id.toInteger(-1);
        if (trackId < 0 || leaders.size() == KeywordStandings::mostLeaders)
            throw DecodingError(QStringLiteral("A record of the history is damaged."));
        leaders.push_back({trackId, trackId == 0 ? QString() : nameOf(trackId)});
    }
    return leaders;
}

QString StandingRecords::nameOf(std::int64_t trackId)
{
    if (const auto known = m_names.constFind(trackId); known != m_names.cend())
        return *known;
    m_findName.bind(1, trackId);
    const QString name = m_findName.step() ? m_findName.text(0) : QString();
    m_findName.reset();
    m_names.insert(trackId, name);
    return name;
}

} // namespace veltrix
