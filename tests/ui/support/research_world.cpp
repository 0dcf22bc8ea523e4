// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/support/research_world.h"

#include "effects/atomic_file.h"
#include "json/json_writer.h"
#include "ui/analysis/sample_snapshot.h"

namespace veltrix
{

namespace
{

constexpr int historyLength = 120;

/// Ranks of the last fortnight, oldest first: -1 no check, 0 not ranked.
constexpr std::array fortnight{31, 29, -1, 24, 26, 0, 22, 18, 19, 15, -1, 12, 11, 9};

int rankOf(int daysAgo)
{
    if (size_t(daysAgo) < fortnight.size())
        return fortnight[fortnight.size() - 1 - size_t(daysAgo)];
    if (daysAgo % 17 == 5)
        return 0;
    return daysAgo % 9 == 2 ? -1 : 34 + (daysAgo * 7) % 23 + daysAgo / 6;
}

PersistedState researchState()
{
    const Date now = VirtualClock().now();
    const QString version = FakePopularity().version;
    PersistedState state = sampleState(now, version);
    for (TrackedKeyword &keyword : state.trackedKeywords)
        keyword.createdAt = now - Seconds((historyLength + 1) * secondsPerDay);
    const TrackedKeyword &charted = state.trackedKeywords[1];
    std::erase_if(state.snapshots, [&](const SharedSnapshot &snapshot) {
        return snapshot->trackedKeywordId == charted.id;
    });
    for (int daysAgo = historyLength; daysAgo >= 0; --daysAgo) {
        const int rank = rankOf(daysAgo);
        if (rank < 0)
            continue;
        KeywordSnapshot snapshot = completeSnapshot();
        snapshot.trackedKeywordId = charted.id;
        snapshot.keyword = charted.keyword;
        snapshot.fetchedAt = now - Seconds(daysAgo * secondsPerDay + 240);
        snapshot.popularityModelVersion = version;
        snapshot.popularityMeasurement->modelVersion = version;
        snapshot.position = rank > 0 ? std::optional<std::int64_t>(rank) : std::nullopt;
        for (int i = 0; i < 5; ++i)
            snapshot.competitorIcons.append(
                *Url::fromText(QStringLiteral("https://icons.example/c%1.png").arg(i)));
        state.snapshots.push_back(std::make_shared<const KeywordSnapshot>(snapshot));
    }
    const char *sellers[] = {"Northlight Labs", "Pocket Optics", "Brass Lens Studio", "Haze & Co.",
                             "Studio Minuit"};
    const char *names[] = {"Grainy", "Dovetail Cam", "Quiet Aperture", "Hazel Presets",
                           "Lumière Film Lab"};
    for (int i = 0; i < state.competitors.size(); ++i) {
        state.competitors[i].name = text(names[i]);
        state.competitors[i].sellerName = text(sellers[i]);
        state.competitors[i].iconURL =
            Url::fromText(QStringLiteral("https://icons.example/rival%1.png").arg(i));
    }
    return state;
}

} // namespace

Task<void> FakeAppStore::pass(QString what, std::stop_token stop)
{
    throwIfStopped(stop);
    const bool isFailing = fails && fails(what);
    struct Counted {
        int &count;
        explicit Counted(int &counted) : count(counted) { ++count; }
        ~Counted() { --count; }
    };
    const Counted counted(inFlight);
    if (holds) {
        const OneShot<Done> gate;
        m_held.push_back(gate);
        co_await gate.wait(stop);
    }
    if (isFailing)
        throw FakeFailure();
}

void FakeAppStore::release()
{
    for (const OneShot<Done> &gate : std::exchange(m_held, {}))
        gate.resolve({});
}

Task<QList<ITunesAppResult>> FakeAppStore::search(QString term, QString country, std::int64_t limit,
                                                  std::stop_token stop)
{
    searches.append(QStringLiteral("%1/%2/%3").arg(term, country).arg(limit));
    const QString there = QStringLiteral("%1/%2").arg(term, country);
    const QList<ITunesAppResult> answer = resultsOf.value(there, resultsOf.value(term, results));
    co_await pass(term, stop);
    co_return answer.mid(0, limit);
}

Task<std::optional<ITunesAppResult>> FakeAppStore::lookup(std::int64_t trackId, QString country,
                                                          std::stop_token stop)
{
    lookups.append(QStringLiteral("%1/%2").arg(trackId).arg(country));
    const auto known = apps.constFind(trackId);
    const std::optional<ITunesAppResult> answer =
        known == apps.constEnd() ? std::nullopt : std::optional(*known);
    co_await pass(QString::number(trackId), stop);
    co_return answer;
}

ITunesAppResult foxglove()
{
    ITunesAppResult app = appResult(201, "Foxglove Film Camera");
    app.subtitle = text("Vintage Analog Photo Filters");
    app.sellerName = text("Brass Lens Studio");
    app.primaryGenreName = text("Photo & Video");
    app.formattedPrice = text("Free");
    app.averageUserRating = 4.7;
    app.userRatingCount = 128'402;
    app.version = text("5.2.1");
    app.minimumOsVersion = text("16.0");
    app.currentVersionReleaseDate = text("2026-11-12T08:00:00Z");
    app.description = text(
        "Foxglove gives every photo the look of film. Choose from forty stocks, each measured from "
        "real negatives, and watch colour, grain and halation change as you turn the dial.\n\n"
        "What is inside:\n• Forty film stocks, from soft portrait rolls to gritty night film\n"
        "• Light leaks that follow the edges of your picture\n• A darkroom with curves, dust and "
        "paper textures\n• Batch development for whole trips\n\nYour photos never leave your "
        "device. No account is needed.");
    QStringList pictures;
    for (int i = 1; i <= 6; ++i)
        pictures << QStringLiteral("https://screens.example/foxglove-%1.png").arg(i);
    app.screenshotUrls = pictures;
    app.artworkUrl512 = text("https://icons.example/foxglove-512.png");
    return app;
}

QList<ITunesAppResult> rankedApps(int count)
{
    static const char *const names[] = {
        "Collagely: Photo Grid",  "PicStitch Studio", "Mosaic Maker",
        "Layout & Frames",        "Grid Post",        "Scrapbook Pro",
        "Photo Collage & Editor", "Moodboard"};
    static const char *const sellers[] = {"Gridworks",     "Stitch Labs", "Tessera",
                                          "Frames Inc.",   "Postline",    "Paper & Glue",
                                          "Everyday Apps", "Muse"};
    QList<ITunesAppResult> apps;
    for (int i = 0; i < count; ++i) {
        ITunesAppResult app = appResult(1001 + i, names[i % 8]);
        if (i >= 8)
            app.trackName = text(names[i % 8]) + QStringLiteral(" %1").arg(i / 8 + 1);
        app.sellerName = text(sellers[(i * 3) % 8]);
        app.averageUserRating = 4.9 - (i * 7 % 14) / 10.0;
        apps.append(app);
    }
    return apps;
}

QList<ITunesAppResult> rankedWith(int position, int count)
{
    QList<ITunesAppResult> apps = rankedApps(count);
    if (position > 0)
        apps.insert(position - 1, foxglove());
    return apps;
}

ResearchWorld::ResearchWorld() : UiWorld(researchState())
{
    saved->keyword = text("collage maker");
    saved->country = text("US");
    saved->saved = {clock->now() - Seconds(2 * 3600), rankedApps(40)};
    appStore->apps.insert(201, foxglove());
    for (const ITunesAppResult &app : rankedApps(100))
        appStore->apps.insert(*app.trackId, app);
    appStore->results = rankedWith(17, 60);
    appStore->resultsOf = {
        {text("foxglove film"), rankedWith(1, 8)}, {text("film camera"), rankedWith(4, 60)},
        {text("foxglove"), rankedWith(1, 3)},      {text("film"), rankedWith(0, 100)},
        {text("camera"), rankedWith(0, 100)},      {text("vintage analog"), rankedWith(6, 30)}};
    restartStore();
}

void ResearchWorld::restartStore()
{
    ASOStore::Arguments arguments = storeArguments();
    arguments.iTunesClient = appStore;
    arguments.discoveryClient = appStore;
    arguments.pipeline.iTunesClient = appStore;
    arguments.rankedAppsCache = saved;
    store.reset();
    store = std::make_unique<ASOStore>(std::move(arguments));
}

DashboardKeywordRow ResearchWorld::row(const char *keyword) const
{
    for (const TrackedKeyword &tracked : store->trackedKeywords()) {
        if (tracked.keyword == text(keyword))
            return store->dashboardRow(tracked);
    }
    ADD_FAILURE() << "no keyword " << keyword;
    return {};
}

} // namespace veltrix
