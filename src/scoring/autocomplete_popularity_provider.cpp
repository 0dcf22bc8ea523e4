// SPDX-License-Identifier: GPL-3.0-or-later
#include "scoring/autocomplete_popularity_provider.h"

#include "scoring/text_tokens.h"

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

Task<PopularityAssessment> AutocompletePopularityProvider::assess(QString keyword, QString country,
                                                                  QList<ITunesAppResult> results,
                                                                  std::stop_token stop)
{
    return run(m_provider, m_suggestions, std::move(keyword), std::move(country),
               std::move(results), std::move(stop));
}

Task<PopularityAssessment>
AutocompletePopularityProvider::run(std::shared_ptr<PopularityProviding> provider,
                                    std::shared_ptr<AutocompleteObserving> suggestions,
                                    QString keyword, QString country,
                                    QList<ITunesAppResult> results, std::stop_token stop)
{
    PopularityAssessment assessment = co_await provider->assess(keyword, country, results, stop);
    std::optional<AutocompleteEvidence> evidence =
        co_await suggestions->observe(keyword, country, stop);
    if (evidence) {
        evidence->possibleBrand = isPossibleBrand(keyword, results);
        assessment.evidence = std::move(evidence);
    }
    co_return assessment;
}

bool isPossibleBrand(const QString &keyword, const QList<ITunesAppResult> &results)
{
    const TextTokens wanted(keyword, TokenRule::Relevance);
    if (wanted.isEmpty())
        return false;
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
