// SPDX-License-Identifier: GPL-3.0-or-later
// How strong the first ten apps of a search look.
#pragma once

#include "model/date.h"
#include "model/difficulty_components.h"
#include "model/itunes_app_result.h"

#include <QStringView>

#include <span>

namespace veltrix
{

/// Search results that the model is meant for, from the first.
inline constexpr size_t difficultySampleLimit = 10;

/// How hard a keyword is, with what that was computed from.
struct DifficultyAssessment {
    /// 0 to 100; higher means stronger signals of competition, not a probability of ranking.
    std::int64_t score = 0;
    DifficultyComponents components;

    bool operator==(const DifficultyAssessment &) const = default;
};

/// The results that the model is given: the first ten, all when there are fewer.
std::span<const ITunesAppResult> difficultySample(std::span<const ITunesAppResult> results);

/// Scores how hard the given apps are to rank among, for one keyword.
///
/// In: the keyword, the sample in search order, and the moment that counts as now. The storefront
/// plays no part. Out: the score, 0 to 100, and the averages, components (0 to 1) and weights that
/// it was computed from, which a snapshot keeps. Part of the scoring model
/// "quorvin-opportunity-v1".
///
/// score = round(100 × (0.45 × reviews + 0.25 × age + 0.3 × match)), half away from zero, where
/// reviews = 1 − e^(−mean ratings ÷ 10,000), age = mean age ÷ 8 years, at most 1, and match = the
/// mean share of the keyword's tokens in title and subtitle.
///
/// A missing rating count and an unusable release date count as zero and stay in the mean: an app
/// that shows nothing is not taken for an average one. That can understate competition, so both
/// are counted in the components. Negative rating counts enter as they are; only the score is
/// clamped, and the review component kept finite, so that the breakdown can be saved. Release
/// dates with a fraction of a second are not read here.
DifficultyAssessment assessDifficulty(QStringView keyword, std::span<const ITunesAppResult> sample,
                                      Date now);

} // namespace veltrix
