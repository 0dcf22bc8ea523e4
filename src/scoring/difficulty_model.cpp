// SPDX-License-Identifier: GPL-3.0-or-later
#include "scoring/difficulty_model.h"

#include "scoring/text_tokens.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace veltrix
{

namespace
{

/// Weights of the three components; unitless, their sum is 1.
constexpr double reviewsWeight = 0.45;
constexpr double ageWeight = 0.25;
constexpr double matchWeight = 0.3;
/// Mean ratings at which the review component reaches 1 − 1/e.
constexpr double ratingsScale = 10'000;
/// Mean age, in years, from which the age component is full.
constexpr double fullAge = 8;
/// A year of 365.25 days, in seconds.
constexpr double secondsPerYear = 31'557'600;
constexpr double highestScore = 100;

/// Age in years, 0 for a release to come; no value when the date is unusable.
std::optional<double> ageInYears(const std::optional<QString> &releaseDate, Date now)
{
    if (!releaseDate)
        return std::nullopt;
    const auto released = parseInternetDateTime(*releaseDate, FractionalSeconds::Rejected);
    if (!released)
        return std::nullopt;
    const double age = Seconds(now - *released).count() / secondsPerYear;
    return age > 0 ? age : 0;
}

/// The keyword's tokens, each once.
QVarLengthArray<QStringView, 8> distinctTokens(const TextTokens &tokens)
{
    QVarLengthArray<QStringView, 8> distinct;
    for (const QStringView token : tokens) {
        if (!distinct.contains(token))
            distinct.append(token);
    }
    return distinct;
}

/// Share of the keyword's tokens that stand in the app's title or subtitle, 0 to 1.
double keywordShare(std::span<const QStringView> keywordTokens, const ITunesAppResult &app)
{
    if (keywordTokens.empty())
        return 0;
    const TextTokens title(viewOf(app.trackName), TokenRule::Difficulty);
    const TextTokens subtitle(viewOf(app.subtitle), TokenRule::Difficulty);
    const auto found =
        std::count_if(keywordTokens.begin(), keywordTokens.end(), [&](QStringView token) {
            return title.contains(token) || subtitle.contains(token);
        });
    return static_cast<double>(found) / static_cast<double>(keywordTokens.size());
}

double reviewComponent(double averageReviews)
{
    const double component = 1 - std::exp(-averageReviews / ratingsScale);
    // Averages below minus seven million have no finite component.
    return std::max(component, std::numeric_limits<double>::lowest());
}

double ageComponent(double averageAge)
{
    if (averageAge >= fullAge)
        return 1;
    return averageAge >= 0 ? averageAge / fullAge : 0;
}

} // namespace

std::span<const ITunesAppResult> difficultySample(std::span<const ITunesAppResult> results)
{
    return results.first(std::min(results.size(), difficultySampleLimit));
}

DifficultyAssessment assessDifficulty(QStringView keyword, std::span<const ITunesAppResult> sample,
                                      Date now)
{
    const TextTokens keywordTokens(keyword, TokenRule::Difficulty);
    const auto distinct = distinctTokens(keywordTokens);
    double reviews = 0;
    double age = 0;
    double match = 0;
    std::int64_t missingReviews = 0;
    std::int64_t missingDates = 0;
    for (const ITunesAppResult &app : sample) {
        reviews += static_cast<double>(app.userRatingCount.value_or(0));
        missingReviews += app.userRatingCount ? 0 : 1;
        const auto years = ageInYears(app.releaseDate, now);
        age += years.value_or(0);
        missingDates += years ? 0 : 1;
        match += keywordShare({distinct.constData(), size_t(distinct.size())}, app);
    }
    const double count = sample.empty() ? 1 : static_cast<double>(sample.size());

    DifficultyComponents components{
        .sampledAppCount = std::int64_t(sample.size()),
        .missingReviewCount = missingReviews,
        .missingReleaseDateCount = missingDates,
        .averageReviewsTop10 = reviews / count,
        .averageAgeYearsTop10 = age / count,
        .averageKeywordMatchTop10 = match / count,
        .reviewComponent = reviewComponent(reviews / count),
        .ageComponent = ageComponent(age / count),
        .matchComponent = std::clamp(match / count, 0.0, 1.0),
        .reviewsWeight = reviewsWeight,
        .ageWeight = ageWeight,
        .matchWeight = matchWeight,
    };
    const double points =
        (reviewsWeight * components.reviewComponent + ageWeight * components.ageComponent +
         matchWeight * components.matchComponent) *
        100;
    const double score = std::clamp(std::round(points), 0.0, highestScore);
    return {.score = static_cast<std::int64_t>(score), .components = components};
}

} // namespace veltrix
