// SPDX-License-Identifier: GPL-3.0-or-later
#include "scoring/sample_statistics.h"

#include <algorithm>

namespace veltrix
{

namespace
{

/// Per unit of mean relevance; unitless.
constexpr double relevanceGain = 2.6;
constexpr double lowestRelevanceFactor = 0.3;
/// Apps.
constexpr double fullSample = 10;

} // namespace

std::span<const ITunesAppResult> sampleOf(std::span<const ITunesAppResult> results)
{
    return results.first(std::min(results.size(), sampleLimit));
}

double relevanceFactor(double relevanceSum, double sampleCount)
{
    return std::clamp(relevanceSum / sampleCount * relevanceGain, lowestRelevanceFactor, 1.0);
}

double sampleCoverage(double sampleCount)
{
    return std::min(sampleCount / fullSample, 1.0);
}

double median(std::span<double> values)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    const size_t middle = values.size() / 2;
    if (values.size() % 2 == 1)
        return values[middle];
    return (values[middle - 1] + values[middle]) / 2;
}

} // namespace veltrix
