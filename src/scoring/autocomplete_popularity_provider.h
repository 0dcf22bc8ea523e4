// SPDX-License-Identifier: GPL-3.0-or-later
// Popularity with what the App Store suggests beside it.
#pragma once

#include "effects/autocomplete_observing.h"
#include "effects/task_scope.h"
#include "scoring/popularity_providing.h"

namespace veltrix
{

/// Adds autocomplete evidence to the assessment of another provider, after it and without changing
/// it. Evidence that cannot be had is left out and fails nothing.
class AutocompletePopularityProvider final : public PopularityProviding
{
public:
    /// `suggestions` is shared by everyone who spends its budget.
    AutocompletePopularityProvider(std::shared_ptr<PopularityProviding> provider,
                                   std::shared_ptr<AutocompleteObserving> suggestions);

    /// The wrapped provider's.
    [[nodiscard]] QString modelVersion() const override;
    /// Throws what the wrapped provider throws, and Cancelled, also when this goes first.
    Task<PopularityAssessment> assess(std::shared_ptr<const KeywordSurvey> survey, QString country,
                                      std::stop_token callersStop) override;

private:
    std::shared_ptr<PopularityProviding> m_provider;
    std::shared_ptr<AutocompleteObserving> m_suggestions;
    TaskScope m_tasks;
};

/// Whether a keyword looks like a brand: its tokens are those of the first segment of the name of
/// one of the apps found.
bool isPossibleBrand(const KeywordSurvey &survey);

} // namespace veltrix
