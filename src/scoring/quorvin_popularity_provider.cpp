// SPDX-License-Identifier: GPL-3.0-or-later
#include "scoring/quorvin_popularity_provider.h"

namespace veltrix
{

QuorvinPopularityProvider::QuorvinPopularityProvider(QString modelVersion)
    : m_modelVersion(std::move(modelVersion))
{
}

Task<PopularityAssessment>
QuorvinPopularityProvider::assess(std::shared_ptr<const KeywordSurvey> survey, QString country,
                                  std::stop_token stop)
{
    throwIfStopped(stop);
    co_return estimatePopularity(*survey, country, m_modelVersion);
}

} // namespace veltrix
