// SPDX-License-Identifier: GPL-3.0-or-later
#include "scoring/opportunity_model.h"

#include "scoring/app_signals.h"
#include "scoring/rating_curves.h"
#include "scoring/storefront_markets.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace veltrix
{

namespace
{

/// Popularity score → searches a day in the United States.
constexpr CurvePoint dailySearchPoints[] = {
    {1, 1},       {20, 35},     {39, 65},      {40, 70},      {45, 140},  {50, 280},
    {55, 570},    {60, 1150},   {65, 2300},    {70, 4600},    {75, 9300}, {80, 19'000},
    {85, 38'000}, {90, 76'000}, {95, 152'000}, {100, 300'000}};
constexpr Curve dailySearchCurve{CurveMode::Linear, dailySearchPoints};

/// Share of searchers who tap the result at ranks 1, 2, 3 and so on.
constexpr std::array<double, 20> tapThroughShares{
    0.3,   0.18,  0.12,   0.085,  0.06,   0.045,  0.033,  0.025,  0.019, 0.013,
    0.009, 0.007, 0.0055, 0.0042, 0.0033, 0.0025, 0.0019, 0.0014, 0.001, 0.0007};
/// How fast the share falls beyond the last of these ranks; an exponent.
constexpr double tapThroughDecay = 4.215012890970851;

struct RankAtGap {
    /// Points by which competition exceeds strength.
    double gap;
    double rank;
};
constexpr RankAtGap ranksByGap[] = {{-37.3, 1.56}, {-32.6, 1.58}, {-27.2, 3.09}, {-22.6, 4.28},
                                    {-17.4, 5.28}, {-12.5, 6.22}, {-7.3, 7.62},  {-2.3, 10.44},
                                    {5.2, 13.82},  {15.0, 16.7},  {22.5, 17.23}, {27.4, 17.86},
                                    {38.8, 23.08}, {52.5, 31.82}, {59.0, 47.72}};
/// Growth of the rank per point beyond the last gap, and where it ends.
constexpr double rankGrowth = 0.06234701143385762;
constexpr double worstRank = 250;

/// Weights of the parts of an app's strength; unitless.
constexpr double ratingsWeight = 0.3;
constexpr double momentumWeight = 0.1;
constexpr double starsWeight = 0.1;
constexpr double ageWeight = 0.1;
/// Points that every app gets, and the share of 1 that all parts together make up.
constexpr double strengthFloor = 10;
constexpr double strengthScale = 0.7;

/// Share of those who reach the listing that install.
constexpr double installConversion = 0.05;
/// Score of one install a day, points for each factor of ten, and the highest score.
constexpr double oneInstallScore = 50;
constexpr double pointsPerDecade = 20;
constexpr double highestScore = 100;
/// Installs a day at rank 1 below which a keyword is of low volume.
constexpr double lowVolumeLimit = 1.0;
/// Scores from which the labels hold.
constexpr std::int64_t sweetSpotScore = 70;
constexpr std::int64_t goodTargetScore = 50;
constexpr std::int64_t supportingScore = 30;

struct Verdict {
    QString label;
    QString sentence;
};

/// To the nearest multiple of 1 ÷ `steps`, ties to even.
double roundedToEven(double value, double steps)
{
    return std::nearbyint(value * steps) / steps;
}

/// The rank that the app is modelled to reach.
double modelledRank(const KeywordSurvey &survey, const OpportunityQuery &query,
                    const ITunesAppResult *app, double strength)
{
    const double expected = expectedRank(static_cast<double>(query.competition.score) - strength);
    if (!query.position || *query.position <= 0)
        return expected;
    const auto current = static_cast<double>(*query.position);
    // The title alone counts here, so the genre is not given: a keyword of trading intent then
    // needs its finance evidence in the title.
    const QStringView title = app != nullptr ? viewOf(app->trackName) : QStringView();
    const bool targeted = survey.relevance().against(title, {}).targetsKeyword();
    return expected > current || targeted ? current : expected;
}

std::int64_t scoreOf(double installs)
{
    if (installs <= 0)
        return 0;
    const double points = std::nearbyint(std::log10(installs) * pointsPerDecade + oneInstallScore);
    return static_cast<std::int64_t>(std::clamp(points, 0.0, highestScore));
}

/// Modelled installs a day at rank 1, with two decimals; with one when that is below 1. Rounding
/// twice lets 0.95 to 0.99 become 1 and so escape the low volume.
double installsAtTop(double demand)
{
    const double installs =
        std::nearbyint(demand * tapThroughShares.front() * installConversion * 100) / 100;
    return installs < lowVolumeLimit ? roundedToEven(installs, 10) : installs;
}

Verdict verdictOn(double atTop, std::int64_t score)
{
    const auto worthwhile = QStringLiteral(
        "Demand and your app’s competitive strength support targeting this keyword.");
    if (atTop < lowVolumeLimit)
        return {QStringLiteral("Low Volume"),
                QStringLiteral("The model estimates little demand even at #1.")};
    if (score >= sweetSpotScore)
        return {QStringLiteral("Sweet Spot"), worthwhile};
    if (score >= goodTargetScore)
        return {QStringLiteral("Good Target"), worthwhile};
    if (score >= supportingScore)
        return {QStringLiteral("Supporting"),
                QStringLiteral("A supporting keyword with modest modeled opportunity.")};
    return {QStringLiteral("Worth Climbing"),
            QStringLiteral("Demand exists, but competition limits the modeled opportunity for your "
                           "app today.")};
}

/// The competition score is called difficulty here: to the user it is what the target was made of.
QString explanationOf(const Verdict &verdict, std::int64_t score, std::int64_t popularity,
                      std::int64_t competition, bool usedNewAppBaseline)
{
    const QString strength =
        usedNewAppBaseline
            ? QStringLiteral("New-app baseline: storefront metadata for your app was unavailable.")
            : QStringLiteral("Uses your app’s storefront ratings, stars and age.");
    return QStringLiteral("%1 Opportunity %2/100; popularity %3, difficulty %4. %5 Assumes title "
                          "targeting, storefront market size and a 5% install conversion. "
                          "Estimates—not promised rankings or downloads.")
        .arg(verdict.sentence, QString::number(score), QString::number(popularity),
             QString::number(competition), strength);
}

} // namespace

double appStrength(const ITunesAppResult *app, Date now)
{
    if (app == nullptr)
        return strengthFloor / strengthScale;
    const double ratings = ratingCount(*app);
    const auto age = appAgeYears(*app, now);
    const auto stars = starRating(*app);
    const double ratingPoints = ratingCountCurve.at(ratings);
    const double momentumPoints = ratingMomentumCurve.at(age ? ratingMomentum(ratings, *age) : 0);
    const double starPoints = stars && ratings > 0 ? starCurve.at(*stars) : 0;
    const double agePoints = age ? ageCurve.at(*age) : 0;
    return (ratingsWeight * ratingPoints + momentumWeight * momentumPoints +
            starsWeight * starPoints + ageWeight * agePoints + strengthFloor) /
           strengthScale;
}

double expectedRank(double gap)
{
    const RankAtGap &first = *std::begin(ranksByGap);
    const RankAtGap &last = *std::rbegin(ranksByGap);
    if (gap <= first.gap)
        return first.rank;
    if (gap > last.gap)
        return std::min(worstRank, last.rank * std::exp((gap - last.gap) * rankGrowth));
    const auto *upper = std::find_if(std::begin(ranksByGap) + 1, std::end(ranksByGap) - 1,
                                     [gap](const RankAtGap &point) { return point.gap >= gap; });
    const RankAtGap &a = *(upper - 1);
    const RankAtGap &b = *upper;
    const double t = (gap - a.gap) / (b.gap - a.gap);
    return std::exp(std::log(a.rank) + t * (std::log(b.rank) - std::log(a.rank)));
}

double tapThroughShare(double rank)
{
    if (rank <= 1)
        return tapThroughShares.front();
    const auto ranks = static_cast<double>(tapThroughShares.size());
    if (!(rank < ranks))
        return tapThroughShares.back() * std::pow(ranks / rank, tapThroughDecay);
    const double whole = std::floor(rank);
    const double fraction = rank - whole;
    const auto index = static_cast<size_t>(whole);
    return std::exp((1 - fraction) * std::log(tapThroughShares[index - 1]) +
                    fraction * std::log(tapThroughShares[index]));
}

std::optional<OpportunityAssessment> assessOpportunity(const KeywordSurvey &survey,
                                                       const OpportunityQuery &query)
{
    if (!query.popularity || !isSearchPopularity(*query.popularity) ||
        query.competition.sampleCount <= 0)
        return std::nullopt;
    const auto market = storefrontMarketFactor(query.storefront);
    if (!market)
        return std::nullopt;

    const std::int64_t popularity = query.popularity->score;
    const double demand = *market * dailySearchCurve.at(static_cast<double>(popularity));
    const ITunesAppResult *app = findApp(survey.results(), query.trackId);
    const double strength = appStrength(app, query.now);
    const double share = tapThroughShare(modelledRank(survey, query, app, strength));
    const std::int64_t score = scoreOf(demand * share * installConversion);
    const Verdict verdict = verdictOn(installsAtTop(demand), score);
    const bool usedNewAppBaseline = app == nullptr;
    return OpportunityAssessment{
        .score = score,
        .label = verdict.label,
        .explanation =
            explanationOf(verdict, score, popularity, query.competition.score, usedNewAppBaseline),
        .appStrength = strength,
        .usedNewAppBaseline = usedNewAppBaseline,
    };
}

} // namespace veltrix
