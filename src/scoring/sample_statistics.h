// SPDX-License-Identifier: GPL-3.0-or-later
// The sample that competition and popularity look at, and the terms that both take from it.
#pragma once

#include "model/itunes_app_result.h"

#include <span>

namespace veltrix
{

/// Search results that are sampled, from the first.
inline constexpr size_t sampleLimit = 25;

/// The first results, all of them when there are fewer than the limit.
std::span<const ITunesAppResult> sampleOf(std::span<const ITunesAppResult> results);

/// How far the sample's titles speak to the keyword, 0.3 to 1: mean relevance times 2.6, clamped.
double relevanceFactor(double relevanceSum, double sampleCount);

/// How far the sample is large enough to be judged, 0 to 1: ten apps are.
double sampleCoverage(double sampleCount);

/// The middle value, the mean of the two middle ones for an even count, 0 for none. Sorts `values`.
double median(std::span<double> values);

} // namespace veltrix
