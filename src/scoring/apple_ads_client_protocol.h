// SPDX-License-Identifier: GPL-3.0-or-later
// Where Apple's own search popularity would come from: a seam for an Apple Search Ads client.
#pragma once

#include "effects/task.h"
#include "model/popularity.h"

namespace veltrix
{

/// A source of Apple's own search popularity. Has no data of its own.
class AppleAdsClientProtocol
{
public:
    AppleAdsClientProtocol() = default;
    virtual ~AppleAdsClientProtocol() = default;
    AppleAdsClientProtocol(const AppleAdsClientProtocol &) = delete;
    AppleAdsClientProtocol &operator=(const AppleAdsClientProtocol &) = delete;

    /// Apple's popularity of a search term in a storefront: a measurement of source
    /// "apple_search_popularity" with a score from 5 to 100, which the opportunity model accepts;
    /// nothing when Apple does not give one. Throws an Error when there is no answer.
    virtual Task<std::optional<PopularityMeasurement>>
    searchPopularity(QString keyword, QString country, std::stop_token stop) = 0;
};

} // namespace veltrix
