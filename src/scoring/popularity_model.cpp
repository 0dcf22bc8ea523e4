// SPDX-License-Identifier: GPL-3.0-or-later
#include "scoring/popularity_model.h"

#include "scoring/curve.h"
#include "scoring/text_tokens.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

namespace veltrix
{

namespace
{

// Coefficients of the linear model, in points of popularity per unit of each term.
constexpr double intercept = 3.6672;
constexpr double relevanceCoefficient = 1.0404;
constexpr double leadingSignalCoefficient = -1.9714;
constexpr double exactPhraseCoefficient = 0.6129;
constexpr double medianSignalCoefficient = 2.9001;
constexpr double lengthCoefficient = 0.8644;
constexpr double irrelevantCoefficient = -0.338;
constexpr double topSignalCoefficient = 2.1709;
constexpr double leadingLogCoefficient = 8.1524;

/// Gain and limit of the terms that are limited; unitless.
constexpr double relevanceTermGain = 2.5;
constexpr double relevanceTermLimit = 25;
constexpr double exactPhraseGain = 40;
constexpr double exactPhraseLimit = 20;
constexpr double irrelevantGain = 50;
constexpr double irrelevantLimit = 15;

/// Score.
constexpr double lowestScore = 5;
constexpr double highestScore = 100;

/// Sample size in apps from which half of it leads; below, the first app alone does.
constexpr qsizetype smallestHalvedSample = 4;

/// Adjustment by the number of words, from none to six and more: longer terms are searched less.
constexpr std::array<double, 7> lengthAdjustments{0, 0, -3, -8, -15, -22, -28};

/// Weighted rating signal → unitless term, for the leading and for the median signal.
constexpr CurvePoint leadingSignalPoints[] = {{10, 1},      {100, 5},      {1000, 10},
                                              {10'000, 17}, {100'000, 24}, {1'000'000, 30}};
constexpr CurvePoint medianSignalPoints[] = {
    {10, 0.5}, {100, 3}, {1000, 5}, {10'000, 8}, {50'000, 10}};
constexpr Curve leadingSignalCurve{CurveMode::Logarithmic, leadingSignalPoints};
constexpr Curve medianSignalCurve{CurveMode::Logarithmic, medianSignalPoints};

/// Relevance times ratings of each app, in result order.
SampleValues ratingSignals(const KeywordSurvey &survey)
{
    SampleValues values;
    for (const SurveyedApp &app : survey.apps())
        values.append(app.title.relevance * app.ratings);
    return values;
}

/// Share of the sampled apps of which `predicate` holds, 0 to 1.
template <class Predicate>
double shareOf(const KeywordSurvey &survey, Predicate predicate)
{
    const auto apps = survey.apps();
    return static_cast<double>(std::count_if(apps.begin(), apps.end(), predicate)) / survey.count();
}

/// Mean signal of the leading half of the sample, of the first app in a small one.
double leadingSignal(const SampleValues &values)
{
    const qsizetype leading = values.size() >= smallestHalvedSample ? values.size() / 2 : 1;
    const double sum = std::accumulate(values.begin(), values.begin() + leading, 0.0);
    return sum / static_cast<double>(leading);
}

double lengthAdjustment(QStringView keyword)
{
    const auto words = size_t(whiteSpaceWordCount(keyword));
    return lengthAdjustments[std::min(words, lengthAdjustments.size() - 1)];
}

/// The linear model, before the score is rounded and limited.
double rawPopularity(const KeywordSurvey &survey, const SampleValues &values, double leading)
{
    const double factor = survey.relevanceFactor();
    const double coverage = survey.coverage();
    const double middle = median(values);
    const double top = *std::max_element(values.begin(), values.end());
    const double exactShare =
        shareOf(survey, [](const SurveyedApp &app) { return app.title.exactPhrase; });
    const double irrelevantShare =
        shareOf(survey, [](const SurveyedApp &app) { return app.title.relevance == 0; });
    return intercept +
           relevanceCoefficient *
               std::min(relevanceTermGain * survey.relevanceSum(), relevanceTermLimit) * factor +
           leadingSignalCoefficient * leadingSignalCurve.at(leading) * factor +
           exactPhraseCoefficient * std::min(exactShare * exactPhraseGain, exactPhraseLimit) *
               coverage +
           medianSignalCoefficient * medianSignalCurve.at(middle) * factor +
           lengthCoefficient * lengthAdjustment(survey.keyword()) +
           irrelevantCoefficient * std::min(irrelevantShare * irrelevantGain, irrelevantLimit) *
               coverage +
           topSignalCoefficient * std::log10(top + 1) +
           leadingLogCoefficient * std::log10(1 + leading);
}

/// To the nearest integer, ties to even.
std::int64_t scoreOf(double raw)
{
    if (raw < lowestScore)
        return std::int64_t(lowestScore);
    return static_cast<std::int64_t>(std::nearbyint(std::min(raw, highestScore)));
}

QString minimumMessage()
{
    return QStringLiteral("Estimated popularity at the minimum: no matching title evidence in "
                          "sampled results. This does not establish zero search demand or official "
                          "Apple popularity.");
}

QString estimateMessage(QStringView country)
{
    if (country.compare(QLatin1String("US"), Qt::CaseInsensitive) == 0)
        return QStringLiteral("Estimated popularity using Quorvin v2. Upstream calibration used US "
                              "data; not official Apple popularity. Accuracy has not been "
                              "independently validated here.");
    return QStringLiteral("Estimated popularity using Quorvin v2. Upstream calibration used US "
                          "data; not official Apple popularity. Accuracy has not been "
                          "independently validated here; this storefront is outside the reported "
                          "US calibration.");
}

} // namespace

PopularityAssessment estimatePopularity(const KeywordSurvey &survey, QStringView country,
                                        const QString &modelVersion)
{
    PopularityAssessment assessment;
    if (survey.apps().empty()) {
        assessment.message =
            QStringLiteral("No search results available for a popularity estimate.");
        return assessment;
    }

    PopularityMeasurement &measurement = assessment.measurement.emplace();
    measurement.source = popularity_source::quorvinCalibratedEstimate;
    measurement.modelVersion = modelVersion;
    measurement.sampledApps = std::int64_t(survey.apps().size());
    if (survey.relevanceSum() == 0) {
        measurement.score = std::int64_t(lowestScore);
        assessment.message = minimumMessage();
        return assessment;
    }
    const SampleValues values = ratingSignals(survey);
    const double leading = leadingSignal(values);
    measurement.score = scoreOf(rawPopularity(survey, values, leading));
    measurement.ratedRelevantApps =
        std::count_if(values.begin(), values.end(), [](double value) { return value > 0; });
    measurement.weightedRatingSignal = leading;
    assessment.message = estimateMessage(country);
    return assessment;
}

} // namespace veltrix
