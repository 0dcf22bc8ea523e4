// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/support/rival_world.h"

#include "effects/atomic_file.h"
#include "json/json_writer.h"
#include "support/task_outcome.h"

#include <QDateTime>
#include <QFile>

#include <algorithm>

namespace veltrix
{

namespace
{

Date noon(int month, int day)
{
    return dateFromUnixSeconds(
        double(QDateTime(QDate(2026, month, day), QTime(12, 0), Qt::UTC).toSecsSinceEpoch()));
}

PersistedState unmeasured(const std::vector<RivalRanks> &keywords, Date now)
{
    PersistedState state = sampleState(now, FakePopularity().version);
    state.trackedKeywords.clear();
    state.snapshots.clear();
    state.competitors.clear();
    quint32 number = 0;
    for (const RivalRanks &ranks : keywords) {
        TrackedKeyword keyword;
        keyword.id = QUuid(++number, 0, 0, 0x80, 0, 0, 0, 0, 0, 0, 4);
        keyword.appId = state.apps.first().id;
        keyword.keyword = text(ranks.keyword);
        keyword.country = text(ranks.country);
        keyword.createdAt = now;
        state.trackedKeywords.append(keyword);
    }
    return state;
}

/// Both apps at their places among others.
QList<ITunesAppResult> resultsOf(const RivalRanks &ranks, const ITunesAppResult &rival)
{
    QList<ITunesAppResult> found = rankedApps(std::max({12, ranks.own + 3, ranks.theirs + 3}));
    ITunesAppResult own = appResult(101, "Lumen Photo Editor");
    std::vector<std::pair<int, ITunesAppResult>> placed{{ranks.own, own}, {ranks.theirs, rival}};
    std::ranges::sort(placed, {}, [](const auto &one) { return one.first; });
    for (const auto &[place, app] : placed) {
        if (place > 0)
            found.insert(place - 1, app);
    }
    return found;
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

} // namespace

std::vector<RivalRanks> RivalWorld::shownKeywords()
{
    return {{"analog camera", "US", 11, 3},     {"double exposure", "US", 3, 14},
            {"film camera filter", "US", 2, 5}, {"light leak effect", "US", 1, 9},
            {"photo editor", "CA", 41, 58},     {"photo editor", "US", 37, 24},
            {"photo filter", "DE", 52, 31},     {"retro camera", "CA", 10, 6},
            {"retro photo", "GB", 8, 11},       {"retro photo", "US", 4, 1},
            {"vintage filter", "US", 24, 7}};
}

RivalWorld::RivalWorld(std::vector<RivalRanks> keywords) : m_ranks(std::move(keywords))
{
    rival = foxglove();
    rival.trackName = text("Foxglove Camera");
    rival.version = text("5.1.2");
    rival.formattedPrice = text("$1.99");
    rival.artworkUrl100 = text("https://icons.example/foxglove-old.png");
    store.reset();
    clock = std::make_shared<VirtualClock>(noon(8, 21));
    writeFileAtomically(statePath(), toJson(unmeasured(m_ranks, clock->now())));
    restartStore();
    list();
}

void RivalWorld::restart()
{
    store->waitUntilSaved();
    restartStore();
}

void RivalWorld::damageHistory()
{
    store->waitUntilSaved();
    store.reset();
    QFile history(historyPath());
    ASSERT_TRUE(history.open(QIODevice::WriteOnly | QIODevice::Truncate));
    history.write("this is no database, and long enough to be looked at as if it were one");
    history.close();
    restartStore();
}

void RivalWorld::list()
{
    appStore->apps.insert(201, rival);
    for (const RivalRanks &ranks : m_ranks)
        appStore->resultsOf.insert(
            QStringLiteral("%1/%2").arg(text(ranks.keyword), text(ranks.country)),
            resultsOf(ranks, rival));
}

void RivalWorld::track(const char *country)
{
    list();
    store->addCompetitor(rival, appId(), text(country));
}

void RivalWorld::untrack()
{
    const QList<TrackedCompetitor> competitors = store->competitorsOfApp(appId());
    for (const TrackedCompetitor &competitor : competitors) {
        if (competitor.trackId == 201)
            store->removeCompetitor(competitor.id);
    }
}

void RivalWorld::goTo(int month, int day)
{
    clock->advance(noon(month, day) - clock->now());
}

void RivalWorld::rank(const RivalRanks &ranks)
{
    for (RivalRanks &known : m_ranks) {
        if (text(known.keyword) == text(ranks.keyword) &&
            text(known.country) == text(ranks.country))
            known = ranks;
    }
    list();
}

QUuid RivalWorld::idOf(const char *keyword, const char *country) const
{
    for (const TrackedKeyword &tracked : store->trackedKeywords()) {
        if (tracked.keyword == text(keyword) && tracked.country == text(country))
            return tracked.id;
    }
    ADD_FAILURE() << "no keyword " << keyword;
    return {};
}

DashboardKeywordRow RivalWorld::row(const char *keyword, const char *country) const
{
    return store->dashboardRow(*store->trackedKeyword(idOf(keyword, country)));
}

void RivalWorld::measure(const char *keyword, const char *country)
{
    list();
    Outcome(store->refreshKeyword(idOf(keyword, country), {})).wait();
    store->waitUntilSaved();
}

void RivalWorld::measureAll()
{
    for (const RivalRanks &ranks : m_ranks)
        measure(ranks.keyword, ranks.country);
}

void RivalWorld::playThreeMonths()
{
    // Played once, and taken from what was saved from then on.
    static std::optional<Played> played;
    if (played && store->competitors().isEmpty()) {
        takeUp(*played);
        return;
    }
    const bool isFirst = store->competitors().isEmpty();
    track();
    measure("film camera filter");
    goTo(10, 9);
    rival.trackName = text("Foxglove Film Camera");
    rival.artworkUrl100 = text("https://icons.example/foxglove.png");
    measure("film camera filter");
    goTo(10, 23);
    rival.version = text("5.1.3");
    measure("film camera filter");
    goTo(11, 4);
    rival.formattedPrice = text("Free");
    measure("film camera filter");
    goTo(11, 15);
    rank({"photo editor", "US", 35, 29});
    measure("photo editor");
    goTo(11, 19);
    rival.version = text("5.2");
    measure("film camera filter");
    goTo(11, 22);
    rank({"photo editor", "US", 37, 24});
    measureAll();
    if (isFirst)
        played = Played{contentOf(statePath()), contentOf(historyPath()), rival, m_ranks};
}

void RivalWorld::takeUp(const Played &played)
{
    rival = played.rival;
    m_ranks = played.ranks;
    list();
    store->waitUntilSaved();
    store.reset();
    writeFileAtomically(statePath(), played.state);
    writeFileAtomically(historyPath(), played.history);
    clock = std::make_shared<VirtualClock>(noon(11, 22));
    restartStore();
}

} // namespace veltrix
