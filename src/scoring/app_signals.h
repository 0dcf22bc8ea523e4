// SPDX-License-Identifier: GPL-3.0-or-later
// What the models read from one app of a search answer, with the rule for what is missing.
#pragma once

#include "model/date.h"
#include "model/itunes_app_result.h"

#include <span>

namespace veltrix
{

/// Number of ratings; an absent or negative count is 0, because an app that shows no ratings
/// competes like one that has none.
double ratingCount(const ITunesAppResult &app);

/// Mean stars (0 to 5), when the record has them as a finite number.
std::optional<double> starRating(const ITunesAppResult &app);

/// Age in years of 365.25 days, counted in whole days and never negative; no value when the release
/// date is missing or unreadable. Dates are read with and without a fraction of a second.
std::optional<double> appAgeYears(const ITunesAppResult &app, Date now);

/// Ratings a year. An app younger than half a year counts as half a year old, so that its first
/// days are not blown up into a yearly rate.
double ratingMomentum(double ratings, double ageYears);

/// 1-based position of the first result with that App Store id.
std::optional<std::int64_t> rankedPosition(std::span<const ITunesAppResult> results,
                                           std::int64_t trackId);

} // namespace veltrix
