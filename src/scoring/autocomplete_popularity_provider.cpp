// SPDX-License-Identifier: GPL-3.0-or-later
#include "scoring/autocomplete_popularity_provider.h"

#include <algorithm>

namespace veltrix
{

AutocompletePopularityProvider::AutocompletePopularityProvider(
    std::shared_ptr<PopularityProviding> provider,
    std::shared_ptr<AutocompleteObserving> suggestions)
    : m_provider(std::move(provider)), m_suggestions(std::move(suggestions))
{
}

QString AutocompletePopularityProvider::modelVersion() const
{
    return m_provider->modelVersion();
}

Task<PopularityAssessment>
AutocompletePopularityProvider::assess(std::shared_ptr<const KeywordSurvey> survey, QString country,
                                       std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    PopularityAssessment assessment = co_await m_provider->assess(survey, country, stop);
    std::optional<AutocompleteEvidence> evidence =
        co_await m_suggestions->observe(survey->keyword(), country, stop);
    if (evidence) {
        evidence->possibleBrand = isPossibleBrand(*survey);
        assessment.evidence = std::move(evidence);
    }
    co_return assessment;
}

bool isPossibleBrand(const KeywordSurvey &survey)
{
    const TextTokens &wanted = survey.relevance().tokens();
    if (wanted.isEmpty())
        return false;
    const QList<ITunesAppResult> &results = survey.results();
    return std::any_of(results.begin(), results.end(), [&wanted](const ITunesAppResult &result) {
        const QList<QStringView> segments =
            textSegments(viewOf(result.trackName), 1, EmptyPieces::Drop);
        if (segments.isEmpty())
            return false;
        const TextTokens tokens(segments.front(), TokenRule::Relevance);
        return std::equal(tokens.begin(), tokens.end(), wanted.begin(), wanted.end());
    });
}

} // namespace veltrix
