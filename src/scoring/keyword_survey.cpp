// SPDX-License-Identifier: GPL-3.0-or-later
#include "scoring/keyword_survey.h"

#include "scoring/app_signals.h"

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

KeywordSurvey::KeywordSurvey(QStringView keyword, QList<ITunesAppResult> results)
    : m_keyword(keyword.toString()), m_relevance(keyword), m_results(std::move(results))
{
    const std::span<const ITunesAppResult> all = std::as_const(m_results);
    for (const ITunesAppResult &app : all.first(std::min(all.size(), sampleLimit))) {
        const TitleRelevance title =
            m_relevance.against(viewOf(app.trackName), viewOf(app.primaryGenreName));
        m_apps.append({&app, ratingCount(app), title});
        m_relevanceSum += title.relevance;
    }
}

std::span<const SurveyedApp> KeywordSurvey::apps() const
{
    return {m_apps.constData(), size_t(m_apps.size())};
}

double KeywordSurvey::relevanceFactor() const
{
    return std::clamp(m_relevanceSum / count() * relevanceGain, lowestRelevanceFactor, 1.0);
}

double KeywordSurvey::coverage() const
{
    return std::min(count() / fullSample, 1.0);
}

double median(SampleValues values)
{
    if (values.isEmpty())
        return 0;
    std::sort(values.begin(), values.end());
    const qsizetype middle = values.size() / 2;
    if (values.size() % 2 == 1)
        return values[middle];
    return (values[middle - 1] + values[middle]) / 2;
}

} // namespace veltrix
