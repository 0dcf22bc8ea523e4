// SPDX-License-Identifier: GPL-3.0-or-later
// Where popularity comes from: a seam, so that another source can take the estimate's place.
#pragma once

#include "effects/task.h"
#include "model/popularity.h"
#include "scoring/keyword_survey.h"

#include <memory>

namespace veltrix
{

/// Assesses how popular a keyword is as a search term.
class PopularityProviding
{
public:
    PopularityProviding() = default;
    virtual ~PopularityProviding() = default;
    PopularityProviding(const PopularityProviding &) = delete;
    PopularityProviding &operator=(const PopularityProviding &) = delete;

    /// Version of the model; a snapshot made under another version is stale.
    [[nodiscard]] virtual QString modelVersion() const = 0;

    /// `survey` is of the keyword's search in the storefront. Throws when popularity cannot be had;
    /// the run then goes on without it.
    virtual Task<PopularityAssessment> assess(std::shared_ptr<const KeywordSurvey> survey,
                                              QString country, std::stop_token stop) = 0;
};

} // namespace veltrix
