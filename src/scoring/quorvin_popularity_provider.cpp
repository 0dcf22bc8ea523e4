// SPDX-License-Identifier: GPL-3.0-or-later
#include "scoring/quorvin_popularity_provider.h"

namespace veltrix
{

QuorvinPopularityProvider::QuorvinPopularityProvider(QString modelVersion)
    : m_modelVersion(std::move(modelVersion))
{
}

Task<PopularityAssessment> QuorvinPopularityProvider::assess(QString keyword, QString country,
                                                             QList<ITunesAppResult> results,
                                                             std::stop_token stop)
{
    throwIfStopped(stop);
    co_return estimatePopularity(keyword, country, results, m_modelVersion);
}

} // namespace veltrix
