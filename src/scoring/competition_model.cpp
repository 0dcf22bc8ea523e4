// SPDX-License-Identifier: GPL-3.0-or-later
#include "scoring/competition_model.h"

#include "scoring/app_signals.h"
#include "scoring/rating_curves.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace veltrix
{

namespace
{

/// Value of a factor whose inputs are unknown, in points.
constexpr double midpoint = 50;
/// Ratings (10 to the power of this) at which an app dominates fully.
constexpr double fullDominance = 7;
/// Weight of a leading app in "Dominant apps" beside 1 of the others; unitless.
constexpr double leadingAppWeight = 2;
/// Smallest sample, in apps, of which half counts as leading.
constexpr int smallestHalvedSample = 3;

/// Samples below this many apps are capped at so many points an app.
constexpr std::int64_t cappedSample = 10;
constexpr std::int64_t pointsPerApp = 10;
constexpr std::int64_t lowestScore = 1;
constexpr std::int64_t highestScore = 100;

/// Ratings of a leader that make its own brand strong, and the median ratings of the next others.
constexpr double strongLeaderRatings = 1000;
constexpr double strongOthersRatings = 10'000;
constexpr qsizetype comparedOthers = 4;

/// Ratings up to which a leader is weak, and from which it is not weak at all.
constexpr double weakLeaderRatings = 1000;
constexpr double soundLeaderRatings = 3000;
/// Logarithm of their ratio, 3, to the base 10.
constexpr double log10Of3 = 0.47712125471966244;
/// Target points of a field with a leader without ratings, and what 1000 ratings add to them.
constexpr double weakLeaderBase = 15;
constexpr double weakLeaderRange = 35;
/// log10(1000 + 1): what the ratings of a leader are measured by.
constexpr double log10Of1001 = 3.000434077479319;

/// Share of titles below which the rest of the field counts as backfill, and the factor that is
/// left: the lowest one and what it gains per share of titles. Unitless.
constexpr double backfillShare = 0.2;
constexpr double backfillFloor = 0.6;
constexpr double backfillGain = 2;

/// What the model alone asks of the sample, in result order where order counts.
struct SampledField {
    const KeywordSurvey &survey;
    SampleValues ratings;
    SampleValues ages;
    SampleValues momenta;
    double starSum = 0;
    double starWeight = 0;
    double titleMatches = 0;

    /// Number of apps; never 0.
    [[nodiscard]] double count() const { return survey.count(); }
    /// Share of apps whose title targets the keyword, 0 to 1.
    [[nodiscard]] double titleShare() const { return titleMatches / count(); }
    [[nodiscard]] double leaderRatings() const { return ratings.front(); }
};

SampledField fieldOf(const KeywordSurvey &survey, Date now)
{
    SampledField field{survey, {}, {}, {}};
    for (const SurveyedApp &app : survey.apps()) {
        field.ratings.append(app.ratings);
        field.titleMatches += app.title.targetsKeyword() ? 1 : 0;
        if (const auto age = appAgeYears(*app.record, now)) {
            field.ages.append(*age);
            field.momenta.append(ratingMomentum(app.ratings, *age));
        }
        if (const auto stars = starRating(*app.record)) {
            field.starSum += app.ratings * *stars;
            field.starWeight += app.ratings;
        }
    }
    return field;
}

/// The weighted mean size of the apps, 0 to 1 before it is scaled; the leading half counts double.
double dominance(const SampledField &field)
{
    const qsizetype leading = std::max<qsizetype>(field.ratings.size(), smallestHalvedSample) / 2;
    double sum = 0;
    for (qsizetype i = 0; i < field.ratings.size(); ++i) {
        const double size =
            std::min(std::log10(std::max(field.ratings[i], 1.0)) / fullDominance, 1.0);
        sum += (i < leading ? leadingAppWeight : 1) * size;
    }
    return field.survey.coverage() * 100 * sum / (field.count() + static_cast<double>(leading));
}

/// Publishers with a name, compared trimmed and ignoring case.
double distinctPublishers(std::span<const SurveyedApp> apps)
{
    std::array<std::optional<LowerCasedText>, sampleLimit> publishers;
    auto end = publishers.begin();
    for (const SurveyedApp &app : apps) {
        const QStringView name = viewOf(app.record->sellerName).trimmed();
        if (name.isEmpty())
            continue;
        const QStringView candidate = end->emplace(name).view();
        const bool isNew = std::none_of(publishers.begin(), end, [candidate](const auto &known) {
            return known->view() == candidate;
        });
        if (isNew)
            ++end;
    }
    return static_cast<double>(end - publishers.begin());
}

/// The factors in the order of competitionFactors().
std::array<double, 7> factorValues(const SampledField &field)
{
    const double relevance = field.survey.relevanceFactor();
    const double coverage = field.survey.coverage();
    const double meanStars = field.starWeight > 0 ? field.starSum / field.starWeight : 0;
    const bool agesKnown = !field.ages.isEmpty();
    const double ageSum = std::accumulate(field.ages.begin(), field.ages.end(), 0.0);
    const double agePoints =
        agesKnown ? ageCurve.at(ageSum / static_cast<double>(field.ages.size())) : midpoint;
    return {
        ratingCountCurve.at(median(field.ratings)),
        agesKnown ? ratingMomentumCurve.at(median(field.momenta)) : midpoint,
        dominance(field),
        relevance * coverage * starCurve.at(meanStars),
        relevance * agePoints,
        relevance * coverage * (distinctPublishers(field.survey.apps()) / field.count() * 100),
        field.titleShare() * 100 * coverage,
    };
}

/// Toward zero.
std::int64_t truncated(double value)
{
    return static_cast<std::int64_t>(value);
}

std::int64_t rawScore(const std::array<double, 7> &factors)
{
    double sum = 0;
    for (size_t i = 0; i < factors.size(); ++i)
        sum += competitionFactors()[i].weight * factors[i];
    return std::clamp(truncated(sum), lowestScore, highestScore);
}

/// Ratings of the first four apps, after the leader, of other sellers.
SampleValues ratingsOfOthers(std::span<const SurveyedApp> apps)
{
    SampleValues others;
    const LowerCasedText leader(viewOf(apps.front().record->sellerName));
    for (const SurveyedApp &app : apps.subspan(1)) {
        const LowerCasedText seller(viewOf(app.record->sellerName));
        if (others.size() < comparedOthers && seller.view() != leader.view())
            others.append(app.ratings);
    }
    return others;
}

/// The keyword names the leader's publisher, and the leader or those behind it are strong.
bool isStrongBrand(const KeywordSurvey &survey)
{
    const SurveyedApp &leader = survey.apps().front();
    const TextTokens publisher(viewOf(leader.record->sellerName), TokenRule::Relevance);
    const TextTokens &tokens = survey.relevance().tokens();
    const bool named = !tokens.isEmpty() &&
                       std::all_of(tokens.begin(), tokens.end(),
                                   [&](QStringView token) { return publisher.contains(token); });
    if (!named)
        return false;
    if (leader.ratings >= strongLeaderRatings)
        return true;
    const SampleValues others = ratingsOfOthers(survey.apps());
    return !others.isEmpty() && median(others) >= strongOthersRatings;
}

/// 1 for a weak leader, falling to 0 for a sound one.
double leaderWeakness(double ratings)
{
    if (ratings <= weakLeaderRatings)
        return 1;
    if (ratings >= soundLeaderRatings)
        return 0;
    return 1 - std::log10(ratings / weakLeaderRatings) / log10Of3;
}

/// The score after the weak-leader and backfill corrections.
std::int64_t correctedForLeader(std::int64_t capped, const SampledField &field)
{
    auto score = static_cast<double>(capped);
    const double share = field.titleShare();
    const double weakness = leaderWeakness(field.leaderRatings());
    const double logRatings = std::log10(field.leaderRatings() + 1);
    if (weakness > 0) {
        const double target = logRatings * weakLeaderRange / log10Of1001 + weakLeaderBase;
        if (target < score)
            score = std::trunc(score - (score - (target + share * (score - target))) * weakness);
    }
    if (share < backfillShare && field.leaderRatings() < weakLeaderRatings) {
        const double kept = std::min(backfillGain * share + backfillFloor, 1.0);
        const double factor = kept + (1 - kept) * logRatings / log10Of1001;
        score = std::max(std::trunc(std::clamp(factor, backfillFloor, 1.0) * score),
                         static_cast<double>(lowestScore));
    }
    return truncated(score);
}

} // namespace

const std::array<CompetitionFactor, 7> &competitionFactors()
{
    static const std::array<CompetitionFactor, 7> factors{{
        {QStringLiteral("Rating volume"), 0.3},
        {QStringLiteral("Rating momentum"), 0.1},
        {QStringLiteral("Dominant apps"), 0.2},
        {QStringLiteral("Rating quality"), 0.1},
        {QStringLiteral("App age"), 0.1},
        {QStringLiteral("Publisher diversity"), 0.1},
        {QStringLiteral("Title relevance"), 0.1},
    }};
    return factors;
}

CompetitionAssessment assessCompetition(const KeywordSurvey &survey, Date now)
{
    CompetitionAssessment assessment;
    if (survey.apps().empty()) {
        assessment.adjustment = QStringLiteral("No app results.");
        return assessment;
    }

    const SampledField field = fieldOf(survey, now);
    const auto factors = factorValues(field);
    const std::int64_t raw = rawScore(factors);
    const auto count = std::int64_t(survey.apps().size());
    std::int64_t score = raw;
    if (count < cappedSample)
        score = std::min(score, count * pointsPerApp);
    if (count != 1 && !survey.keyword().isEmpty() && !isStrongBrand(survey))
        score = correctedForLeader(score, field);

    assessment.adjustment =
        score == raw ? QStringLiteral("No small-sample or weak-leader correction applied.")
                     : QStringLiteral("Adjusted from %1 for a small result set, weak leader or "
                                      "unrelated backfill.")
                           .arg(raw);
    assessment.score = std::clamp(score, lowestScore, highestScore);
    assessment.sampleCount = count;
    assessment.factors.reserve(qsizetype(factors.size()));
    for (size_t i = 0; i < factors.size(); ++i)
        assessment.factors.insert(competitionFactors()[i].name, factors[i]);
    return assessment;
}

} // namespace veltrix
