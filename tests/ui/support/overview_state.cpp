// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/support/overview_state.h"

#include "scoring/keyword_pipeline.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace veltrix
{

namespace
{

constexpr int month = 31;

QUuid numbered(uint first, uint second)
{
    return {first, ushort(second), 0, 0x80, 0, 0, 0, 0, 0, 0, 7};
}

AppProfile appOf(uint number, const QString &name, const QString &country)
{
    AppProfile app;
    app.id = numbered(number, 0xFFFF);
    app.trackId = 101 + number;
    app.appName = name;
    app.platform = QStringLiteral("iPhone");
    app.country = country;
    app.iconURL = Url::fromText(QStringLiteral("https://icons.example/app%1.png").arg(number));
    return app;
}

SharedSnapshot snapshotOf(const TrackedKeyword &keyword, int rank, Date at, const QString &version)
{
    auto made = std::make_shared<KeywordSnapshot>();
    made->id = QUuid::createUuid();
    made->trackedKeywordId = keyword.id;
    made->keyword = keyword.keyword;
    made->country = keyword.country;
    made->fetchedAt = at;
    if (rank > 0)
        made->position = rank;
    made->popularityModelVersion = version;
    made->scoringModelVersion = QString(currentScoringModelVersion);
    return made;
}

void addKeyword(PersistedState &state, const AppProfile &app, const RankedKeyword &ranked,
                double minutesAgo, Date now, const QString &version)
{
    TrackedKeyword keyword;
    keyword.id = numbered(uint(app.trackId), uint(state.trackedKeywords.size()));
    keyword.appId = app.id;
    keyword.keyword = QString::fromUtf8(ranked.keyword);
    keyword.country = QString::fromUtf8(ranked.country);
    keyword.createdAt = now - Seconds(60 * secondsPerDay);
    state.trackedKeywords.append(keyword);
    const int days = int(ranked.ranks.size());
    for (int day = 0; day < days; ++day) {
        if (ranked.ranks[size_t(day)] < 0)
            continue;
        const Date at = now - Seconds(60 * minutesAgo + (days - 1 - day) * secondsPerDay);
        state.snapshots.push_back(snapshotOf(keyword, ranked.ranks[size_t(day)], at, version));
    }
}

/// From one rank to another within a month, not quite straight, with a last step.
std::vector<int> way(int from, int before, int now)
{
    std::vector<int> ranks;
    for (int day = 0; day < month - 1; ++day) {
        const double straight = from + (before - from) * day / double(month - 2);
        const int wobble = (day * 7 + from) % 5 - 2;
        ranks.push_back(std::clamp(int(std::lround(straight)) + wobble, 1, 100));
    }
    ranks.back() = before;
    ranks.push_back(now);
    return ranks;
}

/// Keywords that stand where they stood yesterday.
void addQuiet(RankedApp &app, std::vector<const char *> keywords, std::vector<int> now)
{
    for (size_t i = 0; i < keywords.size(); ++i) {
        const int rank = now[i % now.size()] + int(i / now.size());
        app.keywords.push_back({keywords[i], app.country, way(std::min(95, rank + 9), rank, rank)});
    }
}

} // namespace

PersistedState stateOf(const std::vector<RankedApp> &apps, Date now,
                       const QString &popularityVersion)
{
    PersistedState state;
    for (const RankedApp &ranked : apps) {
        AppProfile app = appOf(uint(state.apps.size()), QString::fromUtf8(ranked.name),
                               QString::fromUtf8(ranked.country));
        app.sortOrder = state.apps.size();
        for (const RankedKeyword &keyword : ranked.keywords)
            addKeyword(state, app, keyword, ranked.minutesAgo, now, popularityVersion);
        state.apps.append(app);
    }
    return state;
}

std::vector<RankedApp> fourRankedApps()
{
    std::vector<int> entered = way(70, 80, 44);
    std::fill(entered.begin() + 10, entered.end() - 1, 0);
    std::vector<int> gone = way(50, 88, 0);
    RankedApp lumen{"Lumen Photo Editor",
                    "US",
                    {{"passport photo booth", "US", gone},
                     {"remove background", "US", way(14, 12, 21)},
                     {"photo editor", "US", way(55, 43, 37)},
                     {"film camera filter", "US", way(20, 6, 2)},
                     {"collage maker", "US", way(30, 11, 9)},
                     {"bildbearbeitung", "DE", way(24, 19, 18)},
                     {"background eraser", "GB", way(29, 32, 34)}}};
    addQuiet(lumen,
             {"retro photo", "light leak effect", "photo journal", "polaroid frame", "grain filter",
              "double exposure", "fotocollage", "analog camera", "photo grid", "sepia",
              "story maker", "photo frames", "film grain", "camera roll", "photo booth",
              "blur background", "picture editor"},
             {1, 3, 7, 11, 19, 28, 34});
    RankedApp tidewater{"Tidewater Journal",
                        "GB",
                        {{"gratitude diary", "GB", way(40, 26, 15)},
                         {"mood journal", "GB", way(18, 14, 19)},
                         {"daily diary", "GB", way(16, 13, 11)}},
                        18};
    addQuiet(tidewater,
             {"journal", "diary with lock", "writing prompts", "five minute journal", "travel log",
              "dream diary", "reflection", "bullet journal", "private diary", "photo diary",
              "morning pages", "habit journal", "notes", "memories", "line a day"},
             {2, 9, 14, 22, 38});
    RankedApp orchard{"Orchard Budget",
                      "DE",
                      {{"ausgaben tracker", "DE", entered},
                       {"haushaltsbuch", "DE", way(38, 31, 17)},
                       {"budget planer", "DE", way(25, 7, 3)}},
                      25};
    addQuiet(orchard,
             {"geld sparen", "haushalt app",       "finanzen",     "kontoauszug",   "sparplan",
              "budget",      "einnahmen ausgaben", "ausgaben app", "fixkosten",     "abo verwalten",
              "rechnungen",  "kassenbuch",         "finanzplaner", "sparziel",      "taschengeld",
              "geldbeutel",  "monatsbudget",       "wg kasse",     "kosten teilen", "konto app",
              "sparen app",  "finanz app",         "budget app",   "haushaltskasse"},
             {1, 5, 8, 13, 21, 33});
    RankedApp juniper{
        "Juniper Sleep Sounds",
        "CA",
        {{"rain sounds", "CA", way(9, 8, 15)}, {"sleep timer", "CA", way(33, 30, 27)}},
        90};
    addQuiet(juniper,
             {"white noise", "sleep sounds", "ocean waves", "brown noise", "fan noise",
              "baby sleep", "nature sounds", "meditation", "thunder"},
             {4, 12, 27, 41});
    for (const char *missing : {"asmr", "lullaby"}) {
        std::vector<int> ranks = way(40, 44, 44);
        ranks.back() = -1;
        juniper.keywords.push_back({missing, "CA", ranks});
    }
    return {lumen, tidewater, orchard, juniper};
}

PersistedState manyRankedApps(int apps, int keywords, int days, Date now,
                              const QString &popularityVersion)
{
    std::mt19937 random(11);
    PersistedState state;
    for (int i = 0; i < apps; ++i) {
        AppProfile app =
            appOf(uint(i), QStringLiteral("Sample App %1").arg(i + 1), QStringLiteral("US"));
        app.sortOrder = i;
        for (int k = 0; k < keywords; ++k) {
            const QByteArray name =
                QStringLiteral("keyword %1 of %2").arg(k + 1).arg(i + 1).toUtf8();
            RankedKeyword ranked{name.constData(), "US", {}};
            int rank = 1 + int(random() % 90);
            for (int day = 0; day < days; ++day) {
                rank = std::clamp(rank + int(random() % 5) - 2, 1, 100);
                ranked.ranks.push_back(rank);
            }
            addKeyword(state, app, ranked, i, now, popularityVersion);
        }
        state.apps.append(app);
    }
    return state;
}

} // namespace veltrix
