// SPDX-License-Identifier: GPL-3.0-or-later
// The popularity provider that ships: the estimate from the search results alone.
#pragma once

#include "scoring/popularity_model.h"
#include "scoring/popularity_providing.h"

namespace veltrix
{

/// Answers at once with estimatePopularity(); asks no service.
class QuorvinPopularityProvider final : public PopularityProviding
{
public:
    explicit QuorvinPopularityProvider(QString modelVersion = quorvinPopularityModelVersion);

    [[nodiscard]] QString modelVersion() const override { return m_modelVersion; }
    /// Throws Cancelled when stopped before it begins, and nothing else.
    Task<PopularityAssessment> assess(std::shared_ptr<const KeywordSurvey> survey, QString country,
                                      std::stop_token stop) override;

private:
    QString m_modelVersion;
};

} // namespace veltrix
