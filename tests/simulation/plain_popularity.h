// SPDX-License-Identifier: GPL-3.0-or-later
// A popularity model for months that are not about popularity.
#pragma once

#include "scoring/popularity_providing.h"

namespace veltrix
{

/// Measures nothing, at once.
class PlainPopularity final : public PopularityProviding
{
public:
    [[nodiscard]] QString modelVersion() const override { return QStringLiteral("simulated-1"); }
    Task<PopularityAssessment> assess(std::shared_ptr<const KeywordSurvey>, QString,
                                      std::stop_token) override
    {
        co_return PopularityAssessment{std::nullopt, std::nullopt, QStringLiteral("None.")};
    }
};

} // namespace veltrix
