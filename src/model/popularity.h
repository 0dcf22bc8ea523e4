// SPDX-License-Identifier: GPL-3.0-or-later
// How the popularity of a keyword was measured, and what a provider hands back.
#pragma once

#include "model/autocomplete_evidence.h"
#include "model/field_list.h"

#include <QLatin1String>

namespace veltrix
{

/// Sources of a popularity measurement. The first three count as popularity; the fourth is
/// autocomplete visibility.
namespace popularity_source
{
inline constexpr QLatin1String appleSearchPopularity{"apple_search_popularity"};
inline constexpr QLatin1String calibratedSearchDemand{"calibrated_search_demand"};
inline constexpr QLatin1String quorvinCalibratedEstimate{"quorvin_calibrated_estimate"};
inline constexpr QLatin1String appleAutocompleteEstimate{"apple_autocomplete_estimate"};
} // namespace popularity_source

/// How a popularity score was obtained.
struct PopularityMeasurement {
    /// 5 to 100.
    std::int64_t score = 0;
    /// One of popularity_source.
    QString source;
    QString modelVersion;
    /// Search results sampled, at most 25.
    std::int64_t sampledApps = 0;
    /// Sampled apps that match the keyword and have ratings.
    std::int64_t ratedRelevantApps = 0;
    /// The relevance-weighted rating statistic that entered the model.
    double weightedRatingSignal = 0;

    bool operator==(const PopularityMeasurement &) const = default;
};

template <>
inline constexpr auto fieldsOf<PopularityMeasurement> = std::tuple{
    field("score", &PopularityMeasurement::score),
    field("source", &PopularityMeasurement::source),
    field("modelVersion", &PopularityMeasurement::modelVersion),
    field("sampledApps", &PopularityMeasurement::sampledApps),
    field("ratedRelevantApps", &PopularityMeasurement::ratedRelevantApps),
    field("weightedRatingSignal", &PopularityMeasurement::weightedRatingSignal),
};

/// True when the measurement counts as search popularity: one of the three accepted sources and a
/// score from 5 to 100.
bool isSearchPopularity(const PopularityMeasurement &measurement);

/// True when the measurement is autocomplete visibility with a score from 5 to 100.
bool isAutocompleteVisibility(const PopularityMeasurement &measurement);

/// What a popularity provider returns for one keyword. In memory only.
struct PopularityAssessment {
    std::optional<PopularityMeasurement> measurement;
    std::optional<AutocompleteEvidence> evidence;
    /// An explanation for the user.
    QString message;

    bool operator==(const PopularityAssessment &) const = default;
};

} // namespace veltrix
