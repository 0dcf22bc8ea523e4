// SPDX-License-Identifier: GPL-3.0-or-later
#include "generated_state.h"

#include <algorithm>
#include <random>

namespace veltrix
{

namespace
{

/// Numbers that are the same with every standard library.
class Dice
{
public:
    explicit Dice(std::uint64_t seed) : m_engine(seed) {}

    /// 0 to count - 1.
    int below(int count) { return int(m_engine() % std::uint64_t(count)); }
    /// A number between the two with all the digits that a computed one has.
    double between(double low, double high)
    {
        return low + (high - low) * (double(m_engine() >> 11U) / 9007199254740992.0);
    }
    bool oneIn(int count) { return below(count) == 0; }
    QUuid uuid()
    {
        QByteArray bytes(16, '\0');
        for (char &byte : bytes)
            byte = char(m_engine() & 0xFFU);
        return QUuid::fromRfc4122(bytes);
    }

private:
    std::mt19937_64 m_engine;
};

constexpr int rankedApps = 2'000;
constexpr double firstDay = 9'000;

Url icon(int app)
{
    return *Url::fromText(
        QStringLiteral("https://artwork.example/image/thumb/Purple221/v4/%1/0d/16/"
                       "%1d167b-976c-a407-4ab3-2ade4bd1a165/AppIcon-0-0-%2-85-220.png/"
                       "100x100bb.jpg")
            .arg(app % 97, 2, 10, QChar(u'0'))
            .arg(app));
}

QString word(int number)
{
    static const char *const words[] = {"photo", "tide",   "moon",   "editor", "planner", "budget",
                                        "sleep", "guitar", "recipe", "widget", "météo",   "timer"};
    return QString::fromUtf8(words[number % 12]);
}

/// A keyword with what changes slowly about it.
struct Watched {
    TrackedKeyword keyword;
    QList<Url> icons;
    QList<QStringList> suggestions;
    int difficulty;
    int popularity;
    int position;
};

Watched watched(int number, const QUuid &appId, Dice &dice)
{
    Watched result;
    result.keyword = {
        dice.uuid(), appId,
        QStringLiteral("%1 %2 %3").arg(word(number), word(number / 12 + 5)).arg(number),
        QStringLiteral("US"), startOfUtcDay(std::int64_t(firstDay))};
    for (int i = 0; i < 5; ++i)
        result.icons.append(icon(dice.below(rankedApps)));
    for (int probe = 0; probe < 5; ++probe) {
        QStringList list;
        for (int i = 0; i < 5; ++i)
            list.append(result.keyword.keyword.left(2 + probe * 2) + u' ' + word(dice.below(12)));
        result.suggestions.append(list);
    }
    result.difficulty = 20 + dice.below(60);
    result.popularity = 5 + dice.below(80);
    result.position = 1 + dice.below(100);
    return result;
}

void drift(Watched &watched, Dice &dice)
{
    if (dice.oneIn(20))
        watched.icons[dice.below(5)] = icon(dice.below(rankedApps));
    for (QStringList &list : watched.suggestions) {
        if (dice.oneIn(6))
            list.swapItemsAt(dice.below(4), 4);
    }
    watched.position = std::clamp(watched.position + dice.below(5) - 2, 1, 110);
    if (dice.oneIn(4))
        watched.difficulty = std::clamp(watched.difficulty + dice.below(3) - 1, 1, 100);
    if (dice.oneIn(4))
        watched.popularity = std::clamp(watched.popularity + dice.below(3) - 1, 5, 100);
}

AutocompleteEvidence evidence(const Watched &watched, Date now, int day, Dice &dice)
{
    AutocompleteEvidence result{watched.keyword.keyword,
                                watched.keyword.country,
                                QStringLiteral("143441-1,29"),
                                QStringLiteral("en-us"),
                                {},
                                5,
                                std::min(day + 1, 7),
                                40 + dice.below(20),
                                dice.below(12),
                                false};
    for (int i = 0; i < 5; ++i) {
        result.probes.append({watched.keyword.keyword.left(2 + i * 2), watched.suggestions[i],
                              now + Seconds(double(i) + dice.between(0, 0.9)), std::nullopt});
        if (dice.oneIn(2))
            result.probes.last().exactRank = 1 + dice.below(5);
    }
    return result;
}

CompetitionAssessment competition(const Watched &watched, Dice &dice)
{
    CompetitionAssessment result;
    result.score = watched.difficulty;
    result.sampleCount = 25;
    for (const char *factor :
         {"Rating volume", "Rating momentum", "Dominant apps", "Rating quality", "App age",
          "Publisher diversity", "Title relevance"})
        result.factors.insert(QString::fromUtf8(factor), dice.between(0, 100));
    result.adjustment = QStringLiteral("No small-sample or weak-leader correction applied.");
    return result;
}

OpportunityAssessment opportunity(const Watched &watched, Dice &dice)
{
    // A score follows from figures that hardly move from day to day.
    const int score = 20 + (watched.popularity * 2 + 100 - watched.difficulty) / 6;
    return {
        score, QStringLiteral("Good Target"),
        QStringLiteral("A realistic keyword worth a place in the title or subtitle. Opportunity "
                       "%1/100; popularity %2, difficulty %3. Uses your app’s storefront "
                       "ratings, stars and age. Assumes title placement; all figures are "
                       "modelled.")
            .arg(score)
            .arg(watched.popularity)
            .arg(watched.difficulty),
        dice.between(14.3, 100), dice.oneIn(4)};
}

SharedSnapshot measure(const Watched &watched, int day, Dice &dice)
{
    auto snapshot = std::make_shared<KeywordSnapshot>();
    snapshot->id = dice.uuid();
    snapshot->trackedKeywordId = watched.keyword.id;
    snapshot->keyword = watched.keyword.keyword;
    snapshot->country = watched.keyword.country;
    snapshot->fetchedAt =
        dateFromReferenceSeconds((firstDay + day) * secondsPerDay + dice.between(20'000, 80'000));
    const double signal = dice.between(10, 90'000);
    snapshot->popularityRaw = signal;
    snapshot->popularityScore = watched.popularity;
    snapshot->difficultyScore = watched.difficulty;
    snapshot->difficultyComponents = {10,
                                      0,
                                      dice.below(3),
                                      double(dice.below(4'000'000)) / 10,
                                      dice.between(0.1, 14),
                                      dice.between(0, 1),
                                      dice.between(0, 1),
                                      dice.between(0, 1),
                                      dice.between(0, 1),
                                      0.5,
                                      0.2,
                                      0.3};
    if (watched.position <= 100)
        snapshot->position = watched.position;
    snapshot->competitorIcons = watched.icons;
    const QString model = QStringLiteral("quorvin-v2-relevance-3");
    snapshot->popularityMeasurement =
        PopularityMeasurement{watched.popularity,
                              QString(popularity_source::quorvinCalibratedEstimate),
                              model,
                              25,
                              5 + dice.below(20),
                              signal};
    snapshot->popularityModelVersion = model;
    snapshot->popularityStatus =
        QStringLiteral("Estimated popularity using Quorvin v2. Upstream calibration used US data, "
                       "so other storefronts are less certain. Sampled 25 apps.");
    snapshot->autocompleteEvidence = evidence(watched, snapshot->fetchedAt, day, dice);
    snapshot->competition = competition(watched, dice);
    snapshot->opportunity = opportunity(watched, dice);
    snapshot->scoringModelVersion = QStringLiteral("quorvin-opportunity-v1");
    return snapshot;
}

} // namespace

PersistedState generatedState(int keywords, int days)
{
    Dice dice(20010101);
    PersistedState state;
    for (int i = 0; i < 2; ++i) {
        state.apps.append({dice.uuid(), 6'451'880'007 + i, QStringLiteral("Photo Frame %1").arg(i),
                           QStringLiteral("iPhone"), icon(i), QStringLiteral("US"), i});
    }
    std::vector<Watched> all;
    for (int i = 0; i < keywords; ++i) {
        all.push_back(watched(i, state.apps[i % 2].id, dice));
        state.trackedKeywords.append(all.back().keyword);
    }
    for (int i = 0; i < 10; ++i) {
        state.competitors.append({dice.uuid(), state.apps[i % 2].id, 6'451'990'000 + i,
                                  QStringLiteral("Rival %1").arg(i), icon(100 + i),
                                  QStringLiteral("US"), QStringLiteral("Brass Lens Studio")});
    }
    state.snapshots.reserve(size_t(keywords) * size_t(days));
    for (int day = 0; day < days; ++day) {
        for (Watched &one : all) {
            drift(one, dice);
            state.snapshots.push_back(measure(one, day, dice));
        }
    }
    return state;
}

SharedSnapshot nextMeasurement(const PersistedState &state, int keyword)
{
    const TrackedKeyword &measured = state.trackedKeywords[keyword];
    auto next = std::make_shared<KeywordSnapshot>(*state.snapshots.back());
    next->id = QUuid::createUuid();
    next->trackedKeywordId = measured.id;
    next->keyword = measured.keyword;
    next->fetchedAt += Seconds(secondsPerDay);
    return next;
}

PersistedState generatedBareState(int keywords, int days)
{
    PersistedState state = generatedState(keywords, 1);
    const std::vector<SharedSnapshot> first = state.snapshots;
    for (SharedSnapshot &snapshot : state.snapshots) {
        auto bare = std::make_shared<KeywordSnapshot>();
        bare->id = snapshot->id;
        bare->trackedKeywordId = snapshot->trackedKeywordId;
        bare->keyword = snapshot->keyword;
        bare->country = snapshot->country;
        bare->fetchedAt = snapshot->fetchedAt;
        bare->position = snapshot->position;
        snapshot = std::move(bare);
    }
    for (int day = 1; day < days; ++day) {
        for (const SharedSnapshot &measured : first) {
            auto next = std::make_shared<KeywordSnapshot>(
                *state.snapshots[size_t(day - 1) * size_t(keywords)]);
            next->id = measured->id;
            next->trackedKeywordId = measured->trackedKeywordId;
            next->fetchedAt = measured->fetchedAt + Seconds(day * secondsPerDay);
            state.snapshots.push_back(std::move(next));
        }
    }
    return state;
}

} // namespace veltrix
