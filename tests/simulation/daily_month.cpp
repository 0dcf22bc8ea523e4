// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulation/daily_month.h"

#include "headless/measure_run.h"
#include "headless/rank_telling.h"
#include "simulation/plain_popularity.h"
#include "store/aso_store.h"
#include "support/task_outcome.h"
#include "support/virtual_clock.h"

#include <QTemporaryDir>

#include <algorithm>
#include <limits>
#include <random>

namespace veltrix
{

namespace
{

constexpr Seconds hour{3600};
constexpr Seconds day{secondsPerDay};
/// 2026-12-01T00:00:00Z.
constexpr double firstMidnight = 1'796'083'200;
constexpr Seconds plannedTime = 9.5 * hour;
/// When a machine that was off is turned on.
constexpr Seconds bootTime = 7.7 * hour;
constexpr std::int64_t ownApp = 1;
constexpr int lowestRank = 100;

class SearchFailure final : public Error
{
public:
    SearchFailure() : Error(QStringLiteral("The service did not answer.")) {}
};

/// Each keyword has a rank of its own from which it wanders from day to day, now and then far.
class WanderingRanks final : public ITunesClientProtocol
{
public:
    WanderingRanks(std::shared_ptr<Clock> clock, std::uint32_t seed)
        : m_clock(std::move(clock)), m_seed(seed)
    {
        for (int i = 0; i < lowestRank; ++i) {
            ITunesAppResult app;
            app.trackId = 100 + i;
            app.trackName = QStringLiteral("App %1").arg(i + 1);
            app.userRatingCount = 1000;
            m_others.append(app);
        }
    }

    Task<QList<ITunesAppResult>> search(QString term, QString, std::int64_t,
                                        std::stop_token stop) override
    {
        throwIfStopped(stop);
        if (answersLeft == 0)
            throw SearchFailure();
        --answersLeft;
        QList<ITunesAppResult> results = m_others;
        const int rank = rankOf(term);
        if (rank <= lowestRank) {
            ITunesAppResult own = m_others.constFirst();
            own.trackId = ownApp;
            results.insert(rank - 1, own);
            results.removeLast();
        }
        co_return results;
    }
    Task<std::optional<ITunesAppResult>> lookup(std::int64_t, QString, std::stop_token) override
    {
        co_return std::nullopt;
    }

    /// Searches that are still answered.
    int answersLeft = std::numeric_limits<int>::max();

private:
    [[nodiscard]] int rankOf(const QString &term) const
    {
        std::mt19937 ofKeyword(m_seed + qChecksum(term.toUtf8()));
        const int home = std::uniform_int_distribution<>(3, 110)(ofKeyword);
        std::mt19937 ofDay(m_seed + qChecksum(term.toUtf8()) * 1000U +
                           std::uint32_t(utcDay(m_clock->now())));
        const bool isFar = std::uniform_int_distribution<>(1, 60)(ofDay) == 1;
        const int reach = isFar ? 15 : 1;
        return std::max(1, home + std::uniform_int_distribution<>(-reach, reach)(ofDay));
    }

    std::shared_ptr<Clock> m_clock;
    std::uint32_t m_seed;
    QList<ITunesAppResult> m_others;
};

/// One user's data, and every start of the program on it.
class Life
{
public:
    explicit Life(const DailyMonthOptions &options) : m_options(options), m_random(options.seed)
    {
        const auto store = open();
        ITunesAppResult app;
        app.trackId = ownApp;
        app.trackName = QStringLiteral("Lumen Photo Editor");
        const AppProfile tracked = store->addApp(app, QStringLiteral("US"));
        QStringList keywords;
        for (int i = 1; i <= options.keywords; ++i)
            keywords.append(QStringLiteral("keyword %1").arg(i));
        store->addTrackedKeywords(tracked.id, keywords, QStringLiteral("US"));
    }

    DailyMonth live()
    {
        for (int number = 1; number <= m_options.days; ++number) {
            if (m_options.daysOff.contains(number))
                continue;
            const bool wasOff = m_options.daysOff.contains(number - 1);
            if (wasOff)
                run(number, bootTime, Start::CaughtUp);
            std::uniform_real_distribution<> delay(0, m_options.randomDelay.count());
            run(number, plannedTime + Seconds(delay(m_random)));
        }
        countDays();
        return std::move(m_month);
    }

private:
    std::unique_ptr<ASOStore> open()
    {
        return std::make_unique<ASOStore>(ASOStore::Arguments{
            .persistenceURL = m_folder.filePath(QStringLiteral("state.json")),
            .iTunesClient = m_client,
            .pipeline = KeywordPipeline{std::make_shared<PlainPopularity>(), m_client, m_clock},
            .discoveryClient = m_client,
            .clock = m_clock,
            .rankedAppsCache = nullptr,
        });
    }

    enum class Start { InTime, CaughtUp };

    void run(int number, Seconds time, Start start = Start::InTime)
    {
        const Date at = m_start + (number - 1) * day + time;
        m_clock->advance(at - m_clock->now());
        m_client->answersLeft =
            m_options.searchesAnswered.value(number, std::numeric_limits<int>::max());
        const auto store = open();
        RankTelling telling(*store, RankTelling::pathIn(m_folder.path()),
                            [] { return DigestChoice(); });
        MeasureRun measuring(*store, telling, [](const MeasureMessage &) {});
        MeasureWish wish;
        wish.notify = true;
        Outcome<MeasureSummary> outcome(measuring.run(wish, std::stop_token()));
        m_month.runs.push_back({number, at, start == Start::CaughtUp, outcome.wait().value(),
                                measuredByAge(*store, number, at)});
    }

    /// The same run by a rule of 24 hours, as far as the service answers.
    int measuredByAge(const ASOStore &store, int number, Date at)
    {
        int answers = m_options.searchesAnswered.value(number, m_options.keywords);
        int measured = 0;
        for (const TrackedKeyword &keyword : store.trackedKeywords()) {
            auto &days = m_daysByAge[keyword.id];
            if ((!days.isEmpty() && at - days.constLast() < day) || answers == 0)
                continue;
            --answers;
            ++measured;
            days.append(at);
        }
        return measured;
    }

    void countDays()
    {
        const auto store = open();
        std::vector<int> days;
        std::vector<int> byAge;
        for (const TrackedKeyword &keyword : store->trackedKeywords()) {
            days.push_back(int(store->keywordSnapshots(keyword.id).size()));
            byAge.push_back(int(m_daysByAge[keyword.id].size()));
        }
        m_month.fewestDays = *std::ranges::min_element(days);
        m_month.mostDays = *std::ranges::max_element(days);
        m_month.fewestDaysByAge = *std::ranges::min_element(byAge);
        m_month.mostDaysByAge = *std::ranges::max_element(byAge);
    }

    DailyMonthOptions m_options;
    std::mt19937 m_random;
    QTemporaryDir m_folder;
    const Date m_start = dateFromUnixSeconds(firstMidnight);
    std::shared_ptr<VirtualClock> m_clock = std::make_shared<VirtualClock>(m_start);
    std::shared_ptr<WanderingRanks> m_client =
        std::make_shared<WanderingRanks>(m_clock, m_options.seed);
    QHash<QUuid, QList<Date>> m_daysByAge;
    DailyMonth m_month;
};

} // namespace

DailyMonth simulateDailyMonth(const DailyMonthOptions &options)
{
    return Life(options).live();
}

} // namespace veltrix
