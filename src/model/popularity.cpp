// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/popularity.h"

namespace veltrix
{

namespace
{

constexpr std::int64_t lowestShownScore = 5;
constexpr std::int64_t highestShownScore = 100;

bool isShownScore(std::int64_t score)
{
    return score >= lowestShownScore && score <= highestShownScore;
}

} // namespace

bool isSearchPopularity(const PopularityMeasurement &measurement)
{
    return isShownScore(measurement.score) &&
           (measurement.source == popularity_source::appleSearchPopularity ||
            measurement.source == popularity_source::calibratedSearchDemand ||
            measurement.source == popularity_source::quorvinCalibratedEstimate);
}

bool isAutocompleteVisibility(const PopularityMeasurement &measurement)
{
    return isShownScore(measurement.score) &&
           measurement.source == popularity_source::appleAutocompleteEstimate;
}

} // namespace veltrix
