// SPDX-License-Identifier: GPL-3.0-or-later
#include "headless/export_json.h"

#include "json/json_writer.h"
#include "model/rival_app.h"

#include <algorithm>

namespace veltrix
{

namespace
{

/// A date for people and other programs, who do not count from 2001.
struct CalendarDate {
    QString text;

    static CalendarDate ofTime(Date date) { return {formatInternetDateTime(date)}; }
    static CalendarDate ofDay(std::int64_t day)
    {
        return {formatInternetDateTime(startOfUtcDay(day)).left(10)};
    }
};

/// A movement and its name.
struct Change {
    RankMovement movement;
};

std::string_view nameOf(RankMovement::Kind kind)
{
    using Kind = RankMovement::Kind;
    switch (kind) {
    case Kind::Improved:
        return "up";
    case Kind::Declined:
        return "down";
    case Kind::Unchanged:
        return "none";
    case Kind::Entered:
        return "entered";
    case Kind::Left:
        return "left";
    case Kind::StillUnranked:
        return "unranked";
    case Kind::First:
        break;
    }
    Q_UNREACHABLE();
}

std::optional<std::int64_t> placesOf(const RankMovement &movement)
{
    using Kind = RankMovement::Kind;
    switch (movement.kind()) {
    case Kind::Improved:
        return movement.places();
    case Kind::Declined:
        return -movement.places();
    case Kind::Unchanged:
        return 0;
    default:
        return std::nullopt;
    }
}

std::optional<Change> changeOf(const std::optional<RankMovement> &movement)
{
    // The first check has changed nothing.
    if (!movement || movement->kind() == RankMovement::Kind::First)
        return std::nullopt;
    return Change{*movement};
}

/// Where a competitor stood.
struct Rival {
    RivalApp app;
    std::optional<std::int64_t> rank;
};

std::vector<Rival> rivalsOn(std::int64_t day, const QList<TrackedCompetitor> &competitors,
                            const QString &storefront,
                            const std::vector<KeywordStandings> &standings)
{
    std::vector<Rival> rivals;
    // They are oldest first.
    const auto measured = std::ranges::lower_bound(
        standings, day, {}, [](const KeywordStandings &of) { return utcDay(of.fetchedAt); });
    if (measured == standings.end() || utcDay(measured->fetchedAt) != day)
        return rivals;
    for (const RivalApp &app : rivalApps(competitors, storefront)) {
        if (const auto standing = standingOf(app, *measured))
            rivals.push_back({app, standing->rank});
    }
    return rivals;
}

/// The members of one object.
class Members
{
public:
    explicit Members(JsonWriter &writer) : m_writer(writer) { m_writer.put('{'); }
    ~Members() { m_writer.put('}'); }
    Members(const Members &) = delete;
    Members &operator=(const Members &) = delete;

    template <class T>
    void add(std::string_view key, const T &value)
    {
        if (!m_isFirst)
            m_writer.put(',');
        m_isFirst = false;
        m_writer.key(key);
        write(value);
    }

private:
    template <class T>
    void write(const T &value)
    {
        writeJson(m_writer, value);
    }
    template <class T>
    void write(const std::optional<T> &value)
    {
        if (value)
            write(*value);
        else
            m_writer.raw("null");
    }
    template <class T>
    void write(const std::vector<T> &values)
    {
        m_writer.put('[');
        for (size_t i = 0; i < values.size(); ++i) {
            if (i > 0)
                m_writer.put(',');
            write(values[i]);
        }
        m_writer.put(']');
    }
    void write(const Rival &rival)
    {
        Members members(m_writer);
        members.add("name", rival.app.name);
        members.add("appStoreId", rival.app.trackId);
        members.add("rank", rival.rank);
    }
    void write(Date value) { write(CalendarDate::ofTime(value)); }
    /// What no calendar has is missing.
    void write(const CalendarDate &date)
    {
        if (date.text.isEmpty())
            m_writer.raw("null");
        else
            m_writer.string(date.text);
    }
    void write(const Change &change)
    {
        Members members(m_writer);
        members.add("places", placesOf(change.movement));
        m_writer.put(',');
        m_writer.key("movement");
        m_writer.put('"');
        m_writer.raw(nameOf(change.movement.kind()));
        m_writer.put('"');
    }

    JsonWriter &m_writer;
    bool m_isFirst = true;
};

/// What a measurement says of a keyword.
struct Figures {
    std::optional<Date> measuredAt;
    std::optional<std::int64_t> rank;
    std::optional<std::int64_t> popularity;
    std::optional<std::int64_t> difficulty;
    std::optional<std::int64_t> competition;
    std::optional<std::int64_t> opportunity;
    std::optional<QString> target;

    Figures() = default;
    explicit Figures(const KeywordSnapshot &snapshot)
        : measuredAt(snapshot.fetchedAt), rank(snapshot.position)
    {
        const auto &measured = snapshot.popularityMeasurement;
        if (measured && isSearchPopularity(*measured))
            popularity = measured->score;
        if (snapshot.difficultyComponents.sampledAppCount != 0)
            difficulty = snapshot.difficultyScore;
        if (snapshot.competition)
            competition = snapshot.competition->score;
        if (snapshot.opportunity) {
            opportunity = snapshot.opportunity->score;
            target = snapshot.opportunity->label;
        }
    }
};

} // namespace

QByteArray keywordObject(const ASOStore &store, const AppProfile &app,
                         const TrackedKeyword &keyword)
{
    const SharedSnapshot newest = store.newestSnapshot(keyword.id);
    const Figures figures = newest ? Figures(*newest) : Figures();
    const RankDays &days = store.rankDays(keyword.id);
    const std::optional<RankCheck> best = days.best();
    JsonWriter writer;
    {
        Members members(writer);
        members.add("keyword", keyword.keyword);
        members.add("storefront", keyword.country);
        members.add("app", app.appName);
        members.add("appStoreId", app.trackId);
        members.add("measuredAt", figures.measuredAt);
        members.add("rank", figures.rank);
        members.add("change", changeOf(store.latestMovement(keyword.id)));
        members.add("popularity", figures.popularity);
        members.add("difficulty", figures.difficulty);
        members.add("competition", figures.competition);
        members.add("opportunity", figures.opportunity);
        members.add("target", figures.target);
        members.add("change7Days", changeOf(days.movementSince(7)));
        members.add("change30Days", changeOf(days.movementSince(30)));
        members.add("bestRank", best ? best->rank : std::nullopt);
        members.add("bestRankDay",
                    best ? std::optional(CalendarDate::ofDay(best->day)) : std::nullopt);
        members.add("tags", store.tags(keyword.id).join(QStringLiteral("; ")));
    }
    return writer.take();
}

QByteArray measurementObject(const ASOStore &store, const AppProfile &app,
                             const KeywordSnapshot &snapshot,
                             const std::vector<KeywordStandings> &standings)
{
    const std::int64_t day = utcDay(snapshot.fetchedAt);
    std::vector<QString> notes;
    for (const AppNote &note : store.notes(app.id)) {
        if (note.day == day)
            notes.push_back(note.text);
    }
    JsonWriter writer;
    {
        Members members(writer);
        members.add("app", app.appName);
        members.add("appStoreId", app.trackId);
        forEachField<KeywordSnapshot>(
            [&](const auto &listed) { members.add(listed.key, snapshot.*(listed.member)); });
        members.add("notes", notes);
        members.add("competitors",
                    rivalsOn(day, store.competitorsOfApp(app.id), snapshot.country, standings));
    }
    return writer.take();
}

} // namespace veltrix
