// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulation/compared_months.h"

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
/// 2026-09-01T00:00:00Z.
constexpr double firstMidnight = 1'788'220'800;
constexpr int lowestRank = 100;

const QString us = QStringLiteral("US");
const QString de = QStringLiteral("DE");

struct AppOfStore {
    std::int64_t trackId;
    const char *name;
};

constexpr AppOfStore lumen{1, "Lumen Photo Editor"};
constexpr AppOfStore tidewater{2, "Tidewater Journal"};
constexpr AppOfStore foxglove{11, "Foxglove Camera"};
constexpr AppOfStore saffronmoor{12, "Saffronmoor Camera"};
constexpr AppOfStore mosswick{13, "Mosswick Retro Camera"};
constexpr AppOfStore grainy{14, "Grainy"};
constexpr AppOfStore aperture{15, "Quiet Aperture"};

std::vector<PlannedChange> plannedChanges()
{
    using enum ListingChangeKind;
    return {
        {foxglove.trackId, 9, Name, {}, QStringLiteral("Foxglove Film Camera")},
        {foxglove.trackId, 9, Icon, {}, QStringLiteral("film")},
        {lumen.trackId, 14, Version, {}, QStringLiteral("3.1")},
        {foxglove.trackId, 23, Version, {}, QStringLiteral("5.1.3")},
        {mosswick.trackId, 25, Price, us, QStringLiteral("$2.99")},
        {foxglove.trackId, 35, Price, us, QStringLiteral("Free")},
        {foxglove.trackId, 35, Price, de, QStringLiteral("Gratis")},
        {grainy.trackId, 40, Version, {}, QStringLiteral("2.0")},
        {tidewater.trackId, 44, Name, {}, QStringLiteral("Tidewater Diary")},
        {foxglove.trackId, 50, Version, {}, QStringLiteral("5.2")},
        {lumen.trackId, 52, Version, {}, QStringLiteral("3.2")},
        // Taken back after a week, and then for good.
        {saffronmoor.trackId, 60, Name, {}, QStringLiteral("Saffronmoor Pro")},
        {saffronmoor.trackId, 67, Name, {}, QString::fromUtf8(saffronmoor.name)},
        {saffronmoor.trackId, 80, Name, {}, QStringLiteral("Saffronmoor Pro")},
        // Twice in three days.
        {aperture.trackId, 70, Version, {}, QStringLiteral("1.1")},
        {aperture.trackId, 72, Version, {}, QStringLiteral("1.1.1")},
    };
}

/// Listings as they are planned, with old answers now and then.
class ChangingStore final : public ITunesClientProtocol
{
public:
    ChangingStore(std::shared_ptr<Clock> clock, Date start, ComparedMonthsOptions options)
        : m_clock(std::move(clock)), m_start(start), m_options(options), m_random(options.seed)
    {
    }

    Task<QList<ITunesAppResult>> search(QString term, QString country, std::int64_t,
                                        std::stop_token stop) override
    {
        throwIfStopped(stop);
        QList<ITunesAppResult> results;
        for (int place = 0; place < lowestRank; ++place)
            results.append(listingOf({1'000 + place, "Another app"}, country));
        std::mt19937 ranks(m_options.seed + qChecksum(term.toUtf8()) +
                           std::uint32_t(utcDay(m_clock->now())));
        for (const AppOfStore &app :
             {lumen, tidewater, foxglove, saffronmoor, mosswick, grainy, aperture}) {
            const int rank = std::uniform_int_distribution<>(1, 60)(ranks);
            results.insert(rank - 1, listingOf(app, country));
        }
        co_return results.first(lowestRank);
    }
    Task<std::optional<ITunesAppResult>> lookup(std::int64_t, QString, std::stop_token) override
    {
        co_return std::nullopt;
    }

    [[nodiscard]] ITunesAppResult listingOf(const AppOfStore &app, const QString &country)
    {
        ITunesAppResult listing;
        listing.trackId = app.trackId;
        listing.trackName = QString::fromUtf8(app.name);
        listing.version = QStringLiteral("1.0");
        listing.formattedPrice = country == us ? QStringLiteral("$1.99") : QStringLiteral("1,99 €");
        QString icon = QStringLiteral("first");
        const bool isOldMachine =
            std::uniform_int_distribution<>(1, 100)(m_random) <= m_options.stalePercent;
        for (const PlannedChange &change : plannedChanges()) {
            const Date since = m_start + (change.day - 1) * day;
            const Date seenBy = isOldMachine ? since + m_options.staleAnswers : since;
            const bool isHere = change.storefront.isEmpty() || change.storefront == country;
            if (change.trackId != app.trackId || !isHere || m_clock->now() < seenBy)
                continue;
            switch (change.kind) {
            case ListingChangeKind::Name:
                listing.trackName = change.later;
                break;
            case ListingChangeKind::Version:
                listing.version = change.later;
                break;
            case ListingChangeKind::Price:
                listing.formattedPrice = change.later;
                break;
            case ListingChangeKind::Icon:
                icon = change.later;
                break;
            }
        }
        const int server = std::uniform_int_distribution<>(1, 5)(m_random);
        listing.artworkUrl100 =
            QStringLiteral("https://is%1.example/image/%2/%3/Icon.png/100x100bb.jpg")
                .arg(QString::number(server), QString::number(app.trackId), icon);
        return listing;
    }

private:
    std::shared_ptr<Clock> m_clock;
    Date m_start;
    ComparedMonthsOptions m_options;
    std::mt19937 m_random;
};

class ComparedLife
{
public:
    explicit ComparedLife(const ComparedMonthsOptions &options) : m_options(options)
    {
        const auto store = open();
        for (const AppOfStore &own : {lumen, tidewater}) {
            const AppProfile app = store->addApp(m_client->listingOf(own, us), us);
            for (const QString &country : {us, de}) {
                QStringList keywords;
                for (int i = 0; i < options.keywordsOfEachApp / 2; ++i)
                    keywords.append(QStringLiteral("%1 %2").arg(QString::fromUtf8(own.name),
                                                                QString::number(i)));
                store->addTrackedKeywords(app.id, keywords, country);
            }
            store->addCompetitor(m_client->listingOf(foxglove, us), app.id, us);
            store->addCompetitor(m_client->listingOf(saffronmoor, us), app.id, us);
        }
        const QUuid first = store->apps().constFirst().id;
        store->addCompetitor(m_client->listingOf(mosswick, us), first, us);
        store->addCompetitor(m_client->listingOf(aperture, us), first, us);
        store->waitUntilSaved();
    }

    ComparedMonths live()
    {
        m_months.planned = plannedChanges();
        for (int number = 1; number <= m_options.days; ++number)
            liveADay(number);
        look();
        return std::move(m_months);
    }

private:
    std::unique_ptr<ASOStore> open()
    {
        auto store = std::make_unique<ASOStore>(ASOStore::Arguments{
            .persistenceURL = m_folder.filePath(QStringLiteral("state.json")),
            .iTunesClient = m_client,
            .pipeline = KeywordPipeline{std::make_shared<PlainPopularity>(), m_client, m_clock},
            .discoveryClient = m_client,
            .clock = m_clock,
            .rankedAppsCache = nullptr,
        });
        store->refreshes().setDue(KeywordRefreshes::Due::EachDay);
        return store;
    }

    void liveADay(int number)
    {
        m_clock->advance(m_start + (number - 1) * day + 9.5 * hour - m_clock->now());
        const auto store = open();
        // What yesterday has removed goes for good now.
        m_clock->advance(ASOStore::historyTidyingDelay);
        if (number == dayOfLateRival) {
            const QUuid first = store->apps().constFirst().id;
            store->addCompetitor(m_client->listingOf(grainy, us), first, us);
        }
        if (number == dayOfLateRival + 1) {
            RemovedTracking removed = store->removeCompetitor(store->competitors().constFirst().id);
            store->waitUntilSaved();
            store->restore(std::move(removed));
        }
        Outcome<Done>(finished(store->refreshHistory({}))).wait();
        store->waitUntilSaved();
    }

    [[nodiscard]] int dayOf(Date date) const { return int((date - m_start) / day) + 1; }

    void look()
    {
        const auto store = open();
        for (const AppProfile &app : store->apps())
            takeLog(*store, app.id, app.trackId, app.appName);
        for (const TrackedCompetitor &rival : store->competitors()) {
            const QString owner = store->app(rival.appId)->appName;
            takeLog(*store, rival.id, rival.trackId,
                    QStringLiteral("%1 (of %2)").arg(rival.name, owner));
        }
        m_months.fewestDaysOfStandings = std::numeric_limits<int>::max();
        const TrackedCompetitor late = store->competitors().constLast();
        for (const TrackedKeyword &keyword : store->trackedKeywords()) {
            const auto days = Outcome(store->standings(keyword.id, {})).wait().value();
            m_months.fewestDaysOfStandings =
                std::min(m_months.fewestDaysOfStandings, int(days.size()));
            const auto first = std::ranges::find_if(days, [&](const KeywordStandings &one) {
                return std::ranges::find(one.rivals, late.id, &RivalStanding::competitorId) !=
                       one.rivals.end();
            });
            if (keyword.appId == late.appId && first != days.end())
                m_months.firstDayOfLateRival = dayOf(first->fetchedAt);
        }
    }

    void takeLog(ASOStore &store, const QUuid &id, std::int64_t trackId, const QString &name)
    {
        const ListingHistory log = Outcome(store.listingHistory(id, {})).wait().value();
        for (const ListingChange &change : log.changes)
            m_months.noticed.push_back({name, trackId, dayOf(change.seenAt), change});
    }

    ComparedMonthsOptions m_options;
    QTemporaryDir m_folder;
    Date m_start = dateFromUnixSeconds(firstMidnight);
    std::shared_ptr<VirtualClock> m_clock = std::make_shared<VirtualClock>(m_start);
    std::shared_ptr<ChangingStore> m_client =
        std::make_shared<ChangingStore>(m_clock, m_start, m_options);
    ComparedMonths m_months;
};

} // namespace

ComparedMonths simulateComparedMonths(const ComparedMonthsOptions &options)
{
    return ComparedLife(options).live();
}

} // namespace veltrix
