// SPDX-License-Identifier: GPL-3.0-or-later
// A search in the light of its keyword: looked at once, for every model that asks.
#pragma once

#include "model/itunes_app_result.h"
#include "scoring/title_relevance.h"

#include <span>

namespace veltrix
{

/// Search results that competition and popularity sample, from the first.
inline constexpr size_t sampleLimit = 25;

/// A value for each sampled app, or for some of them.
using SampleValues = QVarLengthArray<double, qsizetype(sampleLimit)>;

/// What competition and popularity both ask of a sampled app.
struct SurveyedApp {
    const ITunesAppResult *record = nullptr;
    /// As ratingCount() says.
    double ratings = 0;
    /// Of the app's name, with its genre.
    TitleRelevance title;
};

/// The results of a keyword's search and what their sample has to do with the keyword. It keeps the
/// results alive, does not change, and stays where it is.
class KeywordSurvey
{
public:
    /// `results` are all results of the search, in order.
    KeywordSurvey(QStringView keyword, QList<ITunesAppResult> results);
    KeywordSurvey(const KeywordSurvey &) = delete;
    KeywordSurvey &operator=(const KeywordSurvey &) = delete;

    [[nodiscard]] const QString &keyword() const { return m_keyword; }
    [[nodiscard]] const KeywordRelevance &relevance() const { return m_relevance; }
    [[nodiscard]] const QList<ITunesAppResult> &results() const { return m_results; }

    /// The first results, all of them when there are fewer than sampleLimit, in their order.
    [[nodiscard]] std::span<const SurveyedApp> apps() const;
    /// Number of apps in the sample.
    [[nodiscard]] double count() const { return static_cast<double>(m_apps.size()); }
    /// The sum of the titles' relevances, 0 to count().
    [[nodiscard]] double relevanceSum() const { return m_relevanceSum; }
    /// How far the sample's titles speak to the keyword, 0.3 to 1: mean relevance times 2.6,
    /// clamped. Only for a sample that is not empty.
    [[nodiscard]] double relevanceFactor() const;
    /// How far the sample is large enough to be judged, 0 to 1: ten apps are.
    [[nodiscard]] double coverage() const;

private:
    QString m_keyword;
    KeywordRelevance m_relevance;
    QList<ITunesAppResult> m_results;
    QVarLengthArray<SurveyedApp, qsizetype(sampleLimit)> m_apps;
    double m_relevanceSum = 0;
};

/// The middle value, the mean of the two middle ones for an even count, 0 for none.
double median(SampleValues values);

} // namespace veltrix
