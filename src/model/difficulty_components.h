// SPDX-License-Identifier: GPL-3.0-or-later
// The breakdown of a difficulty score.
#pragma once

#include "model/field_list.h"

namespace veltrix
{

/// Inputs and weights from which a difficulty score was computed. The counts are absent in files
/// older than the counts; the weights are kept so that a saved breakdown stays explainable.
struct DifficultyComponents {
    /// Apps scored, 0 to 10.
    std::optional<std::int64_t> sampledAppCount;
    /// Sampled apps without a rating count.
    std::optional<std::int64_t> missingReviewCount;
    /// Sampled apps without a usable release date.
    std::optional<std::int64_t> missingReleaseDateCount;
    /// Mean rating count of the sample.
    double averageReviewsTop10 = 0;
    /// Mean age in years of 365.25 days.
    double averageAgeYearsTop10 = 0;
    /// Mean share of keyword tokens in the titles, 0 to 1.
    double averageKeywordMatchTop10 = 0;
    /// The three components, each 0 to 1, and their weights.
    double reviewComponent = 0;
    double ageComponent = 0;
    double matchComponent = 0;
    double reviewsWeight = 0;
    double ageWeight = 0;
    double matchWeight = 0;

    bool operator==(const DifficultyComponents &) const = default;
};

template <>
inline constexpr auto fieldsOf<DifficultyComponents> = std::tuple{
    field("sampledAppCount", &DifficultyComponents::sampledAppCount),
    field("missingReviewCount", &DifficultyComponents::missingReviewCount),
    field("missingReleaseDateCount", &DifficultyComponents::missingReleaseDateCount),
    field("averageReviewsTop10", &DifficultyComponents::averageReviewsTop10),
    field("averageAgeYearsTop10", &DifficultyComponents::averageAgeYearsTop10),
    field("averageKeywordMatchTop10", &DifficultyComponents::averageKeywordMatchTop10),
    field("reviewComponent", &DifficultyComponents::reviewComponent),
    field("ageComponent", &DifficultyComponents::ageComponent),
    field("matchComponent", &DifficultyComponents::matchComponent),
    field("reviewsWeight", &DifficultyComponents::reviewsWeight),
    field("ageWeight", &DifficultyComponents::ageWeight),
    field("matchWeight", &DifficultyComponents::matchWeight),
};

} // namespace veltrix
