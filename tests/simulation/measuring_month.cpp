// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulation/measuring_month.h"

#include "clients/autocomplete_client.h"
#include "scoring/autocomplete_popularity_provider.h"
#include "store/keyword_list.h"
#include "store/keyword_refreshes.h"
#include "store/refresh_loop.h"
#include "store/snapshot_index.h"
#include "support/virtual_clock.h"

#include <algorithm>
#include <numeric>
#include <random>
#include <set>

namespace veltrix
{

namespace
{

constexpr Seconds hour{3600};
constexpr Seconds day{secondsPerDay};
/// 2026-12-01T00:00:00Z.
constexpr double firstMidnight = 1'796'083'200;
/// Where the keyword that cannot be measured stands in the list.
constexpr int poisonedPlace = 10;
/// How long a request for suggestions takes.
constexpr Seconds hintsAnswer{0.2};

const QString alwaysFailing = QStringLiteral("cursed");

bool isPoisoned(const QString &keyword, const QString &country)
{
    return keyword.size() > 100 || country == QStringLiteral("UK") || keyword == alwaysFailing;
}

class SearchFailure final : public Error
{
public:
    SearchFailure() : Error(QStringLiteral("The service did not answer.")) {}
};

/// Searches take their time, fail at random, and refuse what no service accepts.
class SimulatedSearches final : public ITunesClientProtocol
{
public:
    SimulatedSearches(std::shared_ptr<Clock> clock, const MonthOptions &options)
        : m_clock(std::move(clock)), m_options(options), m_random(options.seed)
    {
        for (int i = 0; i < 3; ++i) {
            ITunesAppResult app;
            app.trackId = i + 1;
            app.trackName = QStringLiteral("App %1").arg(i + 1);
            app.userRatingCount = 100 * (i + 1);
            m_results.append(app);
        }
    }

    Task<QList<ITunesAppResult>> search(QString term, QString country, std::int64_t,
                                        std::stop_token stop) override
    {
        ++searches;
        const bool isRefused = isPoisoned(term, country);
        const bool fails =
            isRefused || std::uniform_real_distribution<>()(m_random) < m_options.faults;
        failures += fails ? 1 : 0;
        const QList<ITunesAppResult> answer = m_results;
        const Seconds time = m_options.searchTime;
        throwIfStopped(stop);
        if (time > Seconds::zero())
            co_await m_clock->sleep(time, stop);
        if (fails)
            throw SearchFailure();
        co_return answer;
    }

    Task<std::optional<ITunesAppResult>> lookup(std::int64_t, QString, std::stop_token) override
    {
        co_return std::nullopt;
    }

    int searches = 0;
    int failures = 0;

private:
    std::shared_ptr<Clock> m_clock;
    MonthOptions m_options;
    std::mt19937 m_random;
    QList<ITunesAppResult> m_results;
};

/// The model costs nothing here: what matters is when keywords are measured.
class PlainPopularity final : public PopularityProviding
{
public:
    [[nodiscard]] QString modelVersion() const override { return QStringLiteral("simulated-1"); }
    Task<PopularityAssessment> assess(std::shared_ptr<const KeywordSurvey>, QString,
                                      std::stop_token) override
    {
        co_return PopularityAssessment{
            PopularityMeasurement{42, QString(popularity_source::quorvinCalibratedEstimate),
                                  modelVersion(), 3, 3, 200},
            std::nullopt, QStringLiteral("Measured.")};
    }
};

Task<HttpResponse> answerHints(std::shared_ptr<Clock> clock, bool isReachable, Seconds timeout,
                               std::stop_token stop)
{
    co_await clock->sleep(isReachable ? hintsAnswer : timeout, stop);
    if (!isReachable)
        throw TransportError(QStringLiteral("The suggestions are out of reach."));
    HttpResponse response;
    response.status = 200;
    response.body = QByteArrayLiteral("<plist version=\"1.0\"><array><dict><key>term</key>"
                                      "<string>keyword</string></dict></array></plist>");
    co_return response;
}

std::shared_ptr<PopularityProviding> popularityOf(const MonthOptions &options,
                                                  const std::shared_ptr<Clock> &clock)
{
    auto plain = std::make_shared<PlainPopularity>();
    if (options.hints == MonthOptions::Hints::None)
        return plain;
    const bool isReachable = options.hints == MonthOptions::Hints::Answering;
    AutocompleteClient::Arguments arguments;
    arguments.send = [clock, isReachable](const HttpRequest &request, std::stop_token stop) {
        return answerHints(clock, isReachable, request.timeout, std::move(stop));
    };
    arguments.clock = clock;
    return std::make_shared<AutocompletePopularityProvider>(
        plain, std::make_shared<AutocompleteClient>(std::move(arguments)));
}

/// What is tracked, in memory: the keywords, and what is measured of them.
class TrackedInMemory final : public RefreshedKeywords
{
public:
    TrackedInMemory(const MonthOptions &options, std::shared_ptr<Clock> clock)
        : m_clock(std::move(clock))
    {
        m_app.id = QUuid::createUuid();
        m_app.trackId = 1;
        for (int i = 0; i < options.keywords; ++i) {
            if (i == poisonedPlace && options.poison == MonthOptions::Poison::TooLong)
                add(QString(101, u'a'), "US");
            if (i == poisonedPlace && options.poison == MonthOptions::Poison::UnknownStorefront)
                add(QStringLiteral("kettle"), "UK");
            if (i == poisonedPlace && options.poison == MonthOptions::Poison::AlwaysFails)
                add(alwaysFailing, "US");
            add(QStringLiteral("keyword %1").arg(i), "US");
        }
    }

    [[nodiscard]] const QList<TrackedKeyword> &trackedKeywords() const override
    {
        return m_keywords.all();
    }
    [[nodiscard]] std::optional<TrackedKeyword> trackedKeyword(QUuid id) const override
    {
        const TrackedKeyword *keyword = m_keywords.find(id);
        return keyword ? std::optional(*keyword) : std::nullopt;
    }
    [[nodiscard]] std::optional<AppProfile> app(QUuid id) const override
    {
        return id == m_app.id ? std::optional(m_app) : std::nullopt;
    }
    [[nodiscard]] SharedSnapshot newestSnapshot(QUuid keywordId) const override
    {
        return m_snapshots.newest(keywordId, m_clock->now());
    }
    void keepSnapshot(SharedSnapshot snapshot, const QList<ITunesAppResult> & /*results*/) override
    {
        m_snapshots.store(std::move(snapshot));
    }

    [[nodiscard]] int observedDays(const QUuid &keywordId) const
    {
        std::set<std::int64_t> days;
        for (const SharedSnapshot &snapshot : m_snapshots.ofKeyword(keywordId))
            days.insert(utcDay(snapshot->fetchedAt));
        return int(days.size());
    }

private:
    void add(const QString &text, const char *country)
    {
        m_keywords.append(
            {QUuid::createUuid(), m_app.id, text, QString::fromLatin1(country), m_clock->now()});
    }

    std::shared_ptr<Clock> m_clock;
    AppProfile m_app;
    KeywordList m_keywords;
    SnapshotIndex m_snapshots;
};

} // namespace

int MonthResult::fewestDays() const
{
    return observedDays.empty() ? 0 : *std::ranges::min_element(observedDays);
}

double MonthResult::averageDays() const
{
    if (observedDays.empty())
        return 0;
    return std::accumulate(observedDays.begin(), observedDays.end(), 0.0) /
           double(observedDays.size());
}

int MonthResult::keywordsBelow(int days) const
{
    return int(std::ranges::count_if(observedDays, [=](int observed) { return observed < days; }));
}

MonthResult simulateMonth(const MonthOptions &options)
{
    const auto clock = std::make_shared<VirtualClock>(dateFromUnixSeconds(firstMidnight));
    const auto searches = std::make_shared<SimulatedSearches>(clock, options);
    TrackedInMemory tracked(options, clock);
    KeywordRefreshes refreshes(
        tracked, KeywordPipeline{popularityOf(options, clock), searches, clock}, clock);
    refreshes.setDue(options.due);

    MonthResult result;
    QObject::connect(&refreshes, &KeywordRefreshes::errorChanged,
                     [&] { result.errorsShown += refreshes.error() ? 1 : 0; });
    RefreshLoop loop(*clock, [&refreshes](std::stop_token stop) {
        return refreshes.refreshStale(std::nullopt, std::move(stop));
    });
    const Date start = clock->now();
    for (int i = 0; i < options.days; ++i) {
        const Date opens = start + i * day + options.firstHour * hour - i * options.earlierEachDay;
        clock->advance(opens - clock->now());
        loop.setActive(true);
        clock->advance(options.hoursOpen * hour);
        loop.setActive(false);
    }

    for (const TrackedKeyword &keyword : tracked.trackedKeywords()) {
        if (!isPoisoned(keyword.keyword, keyword.country))
            result.observedDays.push_back(tracked.observedDays(keyword.id));
    }
    result.searches = searches->searches;
    result.failures = searches->failures;
    return result;
}

} // namespace veltrix
