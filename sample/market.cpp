// SPDX-License-Identifier: GPL-3.0-or-later
// What an app is in one storefront on one day.
#include "sample/market.h"

#include "sample/dice.h"

#include <algorithm>
#include <cmath>

namespace veltrix::sample
{

namespace
{

enum class Purpose { Sale = 11, Ratings, Stars };

/// A number from 0 to below 1 that stays the same for an app in a storefront.
double fixedChance(const SampleApp &app, const Storefront &storefront, Purpose purpose)
{
    return unitFromHash(stableHash(app.trackId, storefront.hintsId, purpose));
}

/// Ratings in a storefront for each one at home.
double shareOfHome(const SampleApp &app, const Storefront &storefront)
{
    if (&storefront == app.home)
        return 1;
    const double jitter = 0.4 + 1.2 * fixedChance(app, storefront, Purpose::Ratings);
    if (!app.onlyLanguage)
        return jitter * storefront.ratingsShare / app.home->ratingsShare;
    if (storefront.language == *app.onlyLanguage)
        return jitter * std::min(1.0, storefront.ratingsShare / app.home->ratingsShare);
    return 0.004 * jitter;
}

qint64 versionsBefore(const SampleApp &app, QDate day)
{
    return app.released.date().daysTo(day) / app.updateCycle;
}

} // namespace

bool isSold(const SampleApp &app, const Storefront &storefront, QDate day)
{
    if (day < app.released.date())
        return false;
    if (app.isFixture || &storefront == app.home)
        return true;
    if (app.onlyLanguage)
        return storefront.language == *app.onlyLanguage ||
               fixedChance(app, storefront, Purpose::Sale) < 0.3;
    return fixedChance(app, storefront, Purpose::Sale) < 0.94;
}

std::int64_t ratingCount(const SampleApp &app, const Storefront &storefront, QDate day)
{
    constexpr double growthPerDay = 0.06 / 365.25;
    const double growth = 1 + growthPerDay * static_cast<double>(referenceDay().daysTo(day));
    const double count = app.homeRatings * shareOfHome(app, storefront) * std::max(0.1, growth);
    return static_cast<std::int64_t>(std::floor(count));
}

double averageStars(const SampleApp &app, const Storefront &storefront, QDate day)
{
    const std::int64_t ratings = ratingCount(app, storefront, day);
    if (ratings == 0)
        return 0;
    const double chance = fixedChance(app, storefront, Purpose::Stars);
    if (ratings < 3)
        return chance < 0.7 ? 5 : 4;
    const double shift = &storefront == app.home ? 0 : 0.2 * (chance - 0.5);
    const double stars = std::clamp(app.stars + shift, 1.0, 4.95);
    return std::round(stars * 100'000) / 100'000;
}

QDateTime currentVersionReleased(const SampleApp &app, QDate day)
{
    return app.released.addDays(versionsBefore(app, day) * app.updateCycle);
}

QString versionText(const SampleApp &app, QDate day)
{
    const qint64 versions = versionsBefore(app, day);
    return QStringLiteral("%1.%2.%3")
        .arg(1 + versions / 40)
        .arg(versions / 4 % 10)
        .arg(versions % 4);
}

} // namespace veltrix::sample
