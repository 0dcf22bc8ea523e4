// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/above_you.h"

#include "store/rank_days.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <map>

namespace veltrix
{

namespace
{

constexpr int daysCompared = 7;

using OwnRanks = QHash<std::int64_t, std::optional<std::int64_t>>;

/// Which competitors are which apps.
using AppsById = QHash<QUuid, std::int64_t>;

CheckedRank rankIn(const KeywordStandings &check, std::int64_t trackId, const AppsById &apps)
{
    for (size_t place = 0; place < check.leaders.size(); ++place) {
        if (check.leaders[place].trackId == trackId)
            return {CheckedRank::Kind::Ranked, std::int64_t(place) + 1};
    }
    CheckedRank found{check.leaders.size() < KeywordStandings::mostLeaders
                          ? CheckedRank::Kind::NotRanked
                          : CheckedRank::Kind::BelowTen,
                      0};
    for (const RivalStanding &rival : check.rivals) {
        if (apps.value(rival.competitorId) != trackId)
            continue;
        if (rival.rank)
            return {CheckedRank::Kind::Ranked, *rival.rank};
        found.kind = CheckedRank::Kind::NotRanked;
    }
    return found;
}

/// Whether that check has the app above the user's own, whose rank is null where it is not known;
/// nothing when it can't be told.
std::optional<bool> isAbove(const CheckedRank &theirs, const std::optional<std::int64_t> *own)
{
    if (!own)
        return std::nullopt;
    switch (theirs.kind) {
    case CheckedRank::Kind::Ranked:
        return !*own || theirs.rank < **own;
    case CheckedRank::Kind::NotRanked:
        return false;
    case CheckedRank::Kind::BelowTen:
        if (*own && **own <= std::int64_t(KeywordStandings::mostLeaders))
            return false;
        return std::nullopt;
    }
    Q_UNREACHABLE();
}

/// Looks back over the checks of a keyword.
class Past
{
public:
    Past(const AboveYou::Sources &sources, const OwnRanks &own, const AppsById &apps)
        : m_sources(sources), m_own(own), m_apps(apps)
    {
    }

    void tellWeek(AppAbove &app) const
    {
        const std::int64_t wanted = utcDay(m_sources.now) - daysCompared;
        const auto stood = std::find_if(
            m_sources.standings.rbegin(), m_sources.standings.rend(), [&](const auto &check) {
                const std::int64_t day = utcDay(check.fetchedAt);
                return day <= wanted && day >= wanted - RankDays::mostDaysEarlier;
            });
        if (stood == m_sources.standings.rend())
            return;
        app.weekAgo = rankIn(*stood, app.trackId, m_apps);
        // What was not checked since has not moved.
        if (utcDay(m_sources.standings.back().fetchedAt) <= wanted)
            return;
        if (app.weekAgo->kind == CheckedRank::Kind::Ranked)
            app.movement = RankMovement::between(app.weekAgo->rank, app.rank);
        else if (app.weekAgo->kind == CheckedRank::Kind::NotRanked)
            app.movement = RankMovement::entered();
    }

    void tellSince(AppAbove &app) const
    {
        app.sinceDay = utcDay(m_sources.standings.back().fetchedAt);
        for (auto check = m_sources.standings.rbegin(); check != m_sources.standings.rend();
             ++check) {
            const std::int64_t day = utcDay(check->fetchedAt);
            const auto own = m_own.constFind(day);
            const auto wasAbove =
                isAbove(rankIn(*check, app.trackId, m_apps), own == m_own.cend() ? nullptr : &*own);
            if (wasAbove == false)
                return;
            if (!wasAbove)
                break;
            app.sinceDay = day;
        }
        app.isSinceOrEarlier = true;
    }

private:
    const AboveYou::Sources &m_sources;
    const OwnRanks &m_own;
    const AppsById &m_apps;
};

/// Everyone whose place the check tells, by places.
std::map<std::int64_t, AppAbove> placesOf(const KeywordStandings &check, const AppsById &apps)
{
    std::map<std::int64_t, AppAbove> places;
    QSet<std::int64_t> placed;
    const auto place = [&](std::int64_t rank, std::int64_t trackId, const QString &name) {
        if (trackId != 0 && placed.contains(trackId))
            return;
        placed.insert(trackId);
        AppAbove app;
        app.trackId = trackId;
        app.name = name;
        app.rank = rank;
        places.emplace(rank, app);
    };
    for (size_t i = 0; i < check.leaders.size(); ++i)
        place(std::int64_t(i) + 1, check.leaders[i].trackId, check.leaders[i].name);
    for (const RivalStanding &rival : check.rivals) {
        const auto app = apps.constFind(rival.competitorId);
        if (rival.rank && app != apps.cend())
            place(*rival.rank, *app, QString());
    }
    return places;
}

/// Name, icon, and whether it is tracked. A competitor's record is as old as its tracking.
void describe(AppAbove &app, const AboveYou::Sources &sources)
{
    if (app.trackId == 0)
        return;
    for (const ITunesAppResult &result : sources.results) {
        if (result.trackId != app.trackId)
            continue;
        if (app.name.isEmpty())
            app.name = result.trackName.value_or(QString());
        if (!app.icon)
            app.icon = iconUrl(result);
    }
    for (const TrackedCompetitor &competitor : sources.competitors) {
        if (competitor.trackId != app.trackId)
            continue;
        app.isTracked = true;
        if (app.name.isEmpty())
            app.name = competitor.name;
        if (!app.icon)
            app.icon = competitor.iconURL;
    }
}

} // namespace

AboveYou AboveYou::of(const Sources &sources)
{
    AboveYou above;
    if (sources.standings.empty())
        return above;
    OwnRanks own;
    for (const RankingTimeline::Observation &observation : sources.own)
        own.insert(utcDay(observation.date), observation.position);
    AppsById apps;
    for (const TrackedCompetitor &competitor : sources.competitors)
        apps.insert(competitor.id, competitor.trackId);

    const KeywordStandings &newest = sources.standings.back();
    above.checkedAt = newest.fetchedAt;
    if (const auto known = own.constFind(utcDay(newest.fetchedAt)); known != own.cend()) {
        above.ownRank = *known;
        above.isOwnKnown = true;
    }
    above.isMeasuredSince =
        !sources.own.empty() && utcDay(sources.own.back().date) > utcDay(newest.fetchedAt);
    if (!above.isOwnKnown)
        return above;
    const Past past(sources, own, apps);
    for (auto &[rank, app] : placesOf(newest, apps)) {
        if (app.trackId == sources.ownTrackId || (above.ownRank && rank >= *above.ownRank))
            continue;
        AppAbove told = app;
        describe(told, sources);
        if (told.trackId != 0) {
            past.tellWeek(told);
            past.tellSince(told);
        }
        above.apps.push_back(std::move(told));
    }
    return above;
}

} // namespace veltrix
