// SPDX-License-Identifier: GPL-3.0-or-later
#include "scoring/app_signals.h"

#include <algorithm>
#include <cmath>

namespace veltrix
{

namespace
{

constexpr double daysPerYear = 365.25;
/// Youngest age, in years, at which a yearly rate is taken as it stands.
constexpr double youngestRatedAge = 0.5;

} // namespace

double ratingCount(const ITunesAppResult &app)
{
    return static_cast<double>(std::max<std::int64_t>(app.userRatingCount.value_or(0), 0));
}

std::optional<double> starRating(const ITunesAppResult &app)
{
    if (!app.averageUserRating || !std::isfinite(*app.averageUserRating))
        return std::nullopt;
    return app.averageUserRating;
}

std::optional<double> appAgeYears(const ITunesAppResult &app, Date now)
{
    if (!app.releaseDate)
        return std::nullopt;
    const auto released = parseInternetDateTime(*app.releaseDate);
    if (!released)
        return std::nullopt;
    const double days = std::floor(Seconds(now - *released).count() / secondsPerDay);
    return std::max(0.0, days / daysPerYear);
}

double ratingMomentum(double ratings, double ageYears)
{
    return ratings / std::max(ageYears, youngestRatedAge);
}

std::optional<std::int64_t> rankedPosition(std::span<const ITunesAppResult> results,
                                           std::int64_t trackId)
{
    const ITunesAppResult *app = findApp(results, trackId);
    if (app == nullptr)
        return std::nullopt;
    return app - results.data() + 1;
}

} // namespace veltrix
