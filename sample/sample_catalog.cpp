// SPDX-License-Identifier: GPL-3.0-or-later
// Makes the apps of the made-up App Store.
#include "sample/sample_catalog.h"

#include "sample/brand_names.h"
#include "sample/dice.h"
#include "sample/fixtures.h"
#include "sample/listings.h"

#include <QTimeZone>

#include <algorithm>
#include <array>
#include <cmath>
#include <set>

namespace veltrix::sample
{

namespace
{

constexpr int worldPublisherCount = 130;
/// log10 of the rating counts of local apps at home, and the powers of ten by which they differ.
constexpr double localTopRatings = 4.9;
constexpr double localRatingsFall = 4.2;

/// A year with its fraction, and the track ID that an app released then has. Between two points
/// the numbers grow evenly; late in 2022 they left 32 bits.
struct TrackIdPoint {
    double year;
    double trackId;
};
constexpr std::array trackIdPoints{
    TrackIdPoint{2009.0, 305e6},  TrackIdPoint{2012.0, 492e6},     TrackIdPoint{2014.0, 782e6},
    TrackIdPoint{2016.0, 1073e6}, TrackIdPoint{2018.0, 1332e6},    TrackIdPoint{2020.0, 1494e6},
    TrackIdPoint{2022.9, 1655e6}, TrackIdPoint{2022.9001, 6443e6}, TrackIdPoint{2024.0, 6475e6},
    TrackIdPoint{2025.0, 6740e6}, TrackIdPoint{2027.0, 6790e6},
};

double trackIdAround(double year)
{
    for (std::size_t index = 1; index < trackIdPoints.size(); ++index) {
        const TrackIdPoint &before = trackIdPoints[index - 1];
        const TrackIdPoint &after = trackIdPoints[index];
        if (year <= after.year)
            return before.trackId + (after.trackId - before.trackId) * (year - before.year) /
                                        (after.year - before.year);
    }
    return trackIdPoints.back().trackId;
}

Publisher publisherNamed(const QString &name)
{
    const std::uint64_t hash = stableTextHash(name.toUtf8());
    return {name, slugOf(name), 300'000'000 + static_cast<std::int64_t>(hash % 1'400'000'000)};
}

/// A few publishers have many apps, most have one or two.
Publisher worldPublisher(Dice &dice)
{
    const int number = static_cast<int>(worldPublisherCount * std::pow(dice.unit(), 1.7));
    return publisherNamed(publisherName(number));
}

double priceByChance(double paidShare, Dice &dice)
{
    static constexpr std::array prices{0.99, 1.99, 2.99, 3.99, 4.99, 9.99, 14.99};
    return dice.chance(paidShare) ? dice.pick(prices) : 0.0;
}

/// Prominent apps are updated more often.
int updateCycleByChance(double prominence, Dice &dice)
{
    return static_cast<int>(dice.between(6, 20) + 240 * std::pow(1 - prominence, 2) * dice.unit());
}

class CatalogMaker
{
public:
    std::vector<SampleApp> make()
    {
        for (SampleApp &app : fixtureApps())
            keep(std::move(app));
        for (const Theme &theme : themes())
            for (int place = 0; place < theme.names.size(); ++place)
                addWorldApp(theme, place);
        for (const LanguageTexts &texts : languages())
            for (std::size_t place = 0; place < texts.apps.size(); ++place)
                addLocalApp(texts, place);
        return std::move(m_apps);
    }

private:
    void addWorldApp(const Theme &theme, int place)
    {
        Dice dice(stableHash(1, theme.number, place));
        const double rank = static_cast<double>(place) / static_cast<double>(theme.names.size());
        SampleApp app;
        app.theme = &theme;
        app.home = findStorefront(textsOf(Language::English).homeCountry);
        const QString brand = brandName(m_brandsUsed++);
        const QString name = QString(theme.names[place]).replace(QStringLiteral("{}"), brand);
        app.slug = slugOf(name);
        app.publisher = worldPublisher(dice);
        writeWorldListings(app, brand, name, dice);
        rate(app, theme.topRatings, theme.ratingsFall, rank, dice);
        finish(app, rank, dice);
    }

    void addLocalApp(const LanguageTexts &texts, std::size_t place)
    {
        Dice dice(stableHash(2, texts.language, place));
        const LocalApp &local = texts.apps[place];
        SampleApp app;
        app.theme = local.theme;
        app.onlyLanguage = texts.language;
        app.home = findStorefront(texts.homeCountry);
        app.slug = slugOf(local.name);
        app.publisher = publisherNamed(dice.pick(texts.publishers));
        app.listings.fill({local.name, texts.of(*local.theme).phrases});
        const double rank = dice.unit();
        rate(app, localTopRatings, localRatingsFall, rank, dice);
        finish(app, rank, dice);
    }

    /// Some of the last apps have no ratings. Prominent apps are rated well, the others in every
    /// way.
    static void rate(SampleApp &app, double topRatings, double fall, double rank, Dice &dice)
    {
        const double noise = rank == 0 ? 0 : dice.between(-0.4, 0.4);
        const bool unrated = rank > 0.8 && dice.chance(0.3);
        const double exponent = topRatings - fall * std::pow(rank, 0.95) + noise;
        app.homeRatings = unrated ? 0 : std::round(std::pow(10.0, exponent));
        const double best = 4.88 - 0.3 * rank;
        app.stars = best - (0.5 + 1.6 * rank) * std::pow(dice.unit(), 3);
    }

    void finish(SampleApp &app, double rank, Dice &dice)
    {
        const double year = yearByChance(app.homeRatings, rank, dice);
        app.released = momentOf(year, dice);
        app.trackId = freeTrackId(year, dice);
        app.dollars = priceByChance(app.theme->paidShare, dice);
        app.updateCycle = updateCycleByChance(1 - rank, dice);
        app.hue = dice.below(static_cast<int>(hues().size()));
        keep(std::move(app));
    }

    /// Unknown apps are often new; many ratings take years to gather.
    static double yearByChance(double ratings, double rank, Dice &dice)
    {
        const double first = 2009.2;
        const double last = 2026.8 - 1.4 * std::max(0.0, std::log10(1 + ratings) - 3);
        return first + (last - first) * std::pow(dice.unit(), 1.0 - 0.4 * rank);
    }

    static QDateTime momentOf(double year, Dice &dice)
    {
        const QDate firstDay(static_cast<int>(year), 1, 1);
        const auto day = static_cast<qint64>((year - std::floor(year)) * 365);
        // Many apps are set to appear at midnight in California.
        const QTime time = dice.chance(0.4) ? QTime(dice.chance(0.5) ? 7 : 8, 0)
                                            : QTime(dice.below(24), dice.below(60), dice.below(60));
        return QDateTime(firstDay.addDays(day), time, QTimeZone::utc());
    }

    std::int64_t freeTrackId(double year, Dice &dice)
    {
        auto trackId = static_cast<std::int64_t>(trackIdAround(year)) + dice.below(900'000);
        while (m_takenIds.contains(trackId))
            ++trackId;
        return trackId;
    }

    void keep(SampleApp app)
    {
        m_takenIds.insert(app.trackId);
        m_apps.push_back(std::move(app));
    }

    std::vector<SampleApp> m_apps;
    std::set<std::int64_t> m_takenIds;
    int m_brandsUsed = 0;
};

} // namespace

SampleCatalog::SampleCatalog() : m_apps(CatalogMaker().make()) {}

const SampleApp *SampleCatalog::find(std::int64_t trackId) const
{
    const auto found = std::ranges::find(m_apps, trackId, &SampleApp::trackId);
    return found == m_apps.end() ? nullptr : &*found;
}

} // namespace veltrix::sample
