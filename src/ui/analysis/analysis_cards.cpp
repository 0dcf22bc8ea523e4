// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/analysis/analysis_cards.h"

#include "scoring/competition_model.h"

#include <algorithm>
#include <cmath>

namespace veltrix
{

namespace
{

using Texts = AnalysisTexts;
using Kind = AnalysisText::Kind;

QString decimal(const QLocale &locale, double value, int digits)
{
    return locale.toString(value, 'f', digits);
}

QString weightText(double weight)
{
    return Texts::tr("%1% weight").arg(qRound(weight * 100));
}

/// At most two decimals, none that are zero.
QString shortest(const QLocale &locale, double value)
{
    for (int digits = 0; digits < 2; ++digits) {
        const double scale = std::pow(10, digits);
        if (std::abs(std::round(value * scale) / scale - value) < 0.005)
            return decimal(locale, value, digits);
    }
    return decimal(locale, value, 2);
}

AnalysisFactor difficultyFactor(const QString &name, const QString &detail, double component,
                                double weight, const QLocale &locale)
{
    return {name, weightText(weight), std::clamp(component, 0.0, 1.0), detail,
            decimal(locale, component * weight * 100, 1)};
}

/// The score of autocomplete visibility: that of the evidence, or of a measurement that was made by
/// it alone.
std::optional<std::int64_t> autocompleteScore(const KeywordSnapshot &snapshot)
{
    if (snapshot.autocompleteEvidence && snapshot.autocompleteEvidence->dailyScore)
        return snapshot.autocompleteEvidence->dailyScore;
    if (snapshot.popularityMeasurement && isAutocompleteVisibility(*snapshot.popularityMeasurement))
        return snapshot.popularityMeasurement->score;
    return std::nullopt;
}

QString autocompleteModel(const KeywordSnapshot &snapshot)
{
    if (snapshot.popularityMeasurement &&
        snapshot.popularityMeasurement->source == popularity_source::appleAutocompleteEstimate)
        return snapshot.popularityMeasurement->modelVersion;
    return snapshot.autocompleteEvidence ? QString(autocompleteModelVersion) : Texts::tr("unknown");
}

QString probeResult(const AutocompleteProbe &probe)
{
    if (probe.exactRank)
        return Texts::tr("Exact phrase #%1").arg(*probe.exactRank);
    return probe.suggestions.isEmpty() ? Texts::tr("Empty response") : Texts::tr("Not observed");
}

void appendEvidence(QList<AnalysisItem> &items, const AutocompleteEvidence &evidence)
{
    items << AnalysisText{Kind::Plain,
                          Texts::tr("Demand confidence: low · No reference-data validation yet")};
    items << AnalysisText{Kind::Plain, Texts::tr("%1 probes").arg(evidence.probes.size())};
    const QString state = evidence.observedDays > daysBeforeMedian
                              ? Texts::tr("Median smoothing active")
                              : Texts::tr("Collecting repeated evidence");
    items << AnalysisText{Kind::Plain, Texts::tr("%1 observed day(s) in the last 7 · %2")
                                           .arg(QString::number(evidence.observedDays), state)};
    if (evidence.scoreSpread.value_or(0) >= variableScoreSpread)
        items << AnalysisText{
            Kind::Warning, Texts::tr("Visibility has varied substantially across observations.")};
    if (evidence.possibleBrand)
        items << AnalysisText{
            Kind::Warning,
            Texts::tr("Matches a ranking app's name: may represent branded intent.")};
    for (const AutocompleteProbe &probe : evidence.probes)
        items << AnalysisEvidence{probe.prefix, probeResult(probe)};
}

void appendDifficultyFactors(QList<AnalysisItem> &items, const DifficultyComponents &components,
                             const QLocale &locale)
{
    const auto detail = [](const QString &value, const QString &rule) {
        return value + QStringLiteral(" · ") + rule;
    };
    items << difficultyFactor(
        Texts::tr("Rating count"),
        detail(
            Texts::tr("Average %1 ratings").arg(decimal(locale, components.averageReviewsTop10, 0)),
            Texts::tr("1 − exp(−average ratings / 10,000)")),
        components.reviewComponent, components.reviewsWeight, locale);
    items << difficultyFactor(
        Texts::tr("App age"),
        detail(
            Texts::tr("Average %1 years").arg(decimal(locale, components.averageAgeYearsTop10, 1)),
            Texts::tr("Average age capped at 8 years, divided by 8")),
        components.ageComponent, components.ageWeight, locale);
    items << difficultyFactor(
        Texts::tr("Keyword match"),
        detail(Texts::tr("Average token overlap %1")
                   .arg(decimal(locale, components.averageKeywordMatchTop10 * 100, 0) +
                        locale.percent()),
               Texts::tr("Share of keyword tokens found in each title/subtitle")),
        components.matchComponent, components.matchWeight, locale);
}

QString sampleText(const DifficultyComponents &components)
{
    if (!components.sampledAppCount)
        return Texts::tr(
            "Legacy observation: sample size and missing-field coverage were not recorded.");
    QString text = Texts::tr("Sample: %1 of up to 10 apps").arg(*components.sampledAppCount);
    if (components.missingReviewCount && components.missingReleaseDateCount)
        text +=
            QStringLiteral(" · ") + Texts::tr("Missing inputs: %1 rating counts · %2 release dates")
                                        .arg(QString::number(*components.missingReviewCount),
                                             QString::number(*components.missingReleaseDateCount));
    return text;
}

AnalysisFactor competitionFactor(const QString &name, double value, const QLocale &locale)
{
    AnalysisFactor factor{name, QString(), std::clamp(value / 100, 0.0, 1.0), QString(), QString()};
    const QString outOf = Texts::tr("%1 of 100").arg(decimal(locale, value, 1));
    const auto &known = competitionFactors();
    const auto weighted = std::ranges::find(known, name, &CompetitionFactor::name);
    if (weighted == known.end()) {
        factor.detail = outOf;
        return factor;
    }
    factor.weight = weightText(weighted->weight);
    factor.points = decimal(locale, value * weighted->weight, 1);
    factor.detail = Texts::tr("%1 weighted points · %2").arg(factor.points, outOf);
    return factor;
}

} // namespace

AnalysisCard popularityCard(const KeywordSnapshot &snapshot, const QLocale &locale)
{
    AnalysisCard card{AnalysisCard::Model::Popularity, Texts::tr("Search popularity")};
    const auto &measurement = snapshot.popularityMeasurement;
    if (measurement && isSearchPopularity(*measurement)) {
        card.score = measurement->score;
        card.items << AnalysisText{Kind::Plain, Texts::tr("Source: %1").arg(measurement->source),
                                   Texts::tr("The method that gave the score. Estimates are made "
                                             "from the apps that the search returned.")}
                   << AnalysisText{Kind::Note,
                                   Texts::tr("Estimated popularity, not official Apple data.")};
    } else {
        card.items << AnalysisText{
            Kind::Plain, Texts::tr("Refresh this keyword to calculate estimated popularity.")};
    }
    const QString status = snapshot.popularityStatus.value_or(QString()).trimmed();
    if (!status.isEmpty())
        card.items << AnalysisText{Kind::Note, status};
    if (snapshot.popularityRaw)
        card.items << AnalysisText{
            Kind::Plain,
            Texts::tr("Saved raw value: %1").arg(shortest(locale, *snapshot.popularityRaw)),
            Texts::tr("The ratings of the apps found, weighted by how relevant each app is: what "
                      "the estimate was made from. Values of other storefronts or models do not "
                      "compare with it.")};
    return card;
}

AnalysisCard autocompleteCard(const KeywordSnapshot &snapshot)
{
    AnalysisCard card{AnalysisCard::Model::Autocomplete, Texts::tr("Autocomplete visibility")};
    card.score = autocompleteScore(snapshot);
    card.missing = Texts::tr("— Refresh required");
    if (snapshot.autocompleteEvidence)
        appendEvidence(card.items, *snapshot.autocompleteEvidence);
    else if (!snapshot.popularityModelVersion)
        card.items << AnalysisText{
            Kind::Plain, Texts::tr("This observation predates the autocomplete model. Refresh to "
                                   "collect evidence; the old ratings-based score is not "
                                   "comparable.")};
    else
        card.items << AnalysisText{Kind::Plain, Texts::tr("No autocomplete evidence saved.")};
    card.items << AnalysisText{
        Kind::Info,
        Texts::tr("Incomplete prefixes contribute reciprocal-log rank, weighted toward earlier "
                  "visibility. Full-term matches confirm evidence but add no points. After three "
                  "observed days, the score is the seven-day median. No rating counts enter this "
                  "score. Confidence remains low until tested against reference data.")};
    card.items << AnalysisText{
        Kind::Note, Texts::tr("Model: %1 · Up to 5 requests per term, 24-hour nonempty cache, 200 "
                              "requests/day per installation. This sheet makes no requests.")
                        .arg(autocompleteModel(snapshot))};
    return card;
}

AnalysisCard difficultyCard(const KeywordSnapshot &snapshot, const QLocale &locale)
{
    const DifficultyComponents &components = snapshot.difficultyComponents;
    AnalysisCard card{AnalysisCard::Model::Difficulty, Texts::tr("Difficulty · estimate")};
    // A score of no apps means nothing, and nothing is never shown as zero.
    card.missing = Texts::tr("— No app results to score");
    const bool isScored = components.sampledAppCount != 0;
    if (isScored)
        card.score = snapshot.difficultyScore;
    card.items << AnalysisText{
        Kind::Note,
        Texts::tr("A local heuristic built from up to ten returned apps. Higher means stronger "
                  "signals of competition—not a measured probability of ranking.")};
    // Averages of no apps mean nothing either.
    if (isScored)
        appendDifficultyFactors(card.items, components, locale);
    card.items << AnalysisText{Kind::Note, sampleText(components)};
    card.items << AnalysisText{
        Kind::Note,
        Texts::tr(
            "Final score = rounded sum of weighted points. Missing rating counts and unusable "
            "release dates contribute zero in this model and can understate competition. "
            "Absent subtitles are treated as empty text.")};
    return card;
}

AnalysisCard competitionCard(const KeywordSnapshot &snapshot, const QLocale &locale)
{
    AnalysisCard card{AnalysisCard::Model::Competition, Texts::tr("Competition")};
    card.missing = Texts::tr("— No app results to score");
    if (!snapshot.competition) {
        card.items << AnalysisText{
            Kind::Note, Texts::tr("This observation predates the competition model. Refresh this "
                                  "keyword to assess the competition.")};
        return card;
    }
    const CompetitionAssessment &competition = *snapshot.competition;
    if (competition.sampleCount > 0)
        card.score = competition.score;
    card.items << AnalysisText{
        Kind::Note, Texts::tr("Quorvin competition model · %1 of up to 25 apps. Higher means "
                              "stronger competition, not a probability of ranking.")
                        .arg(competition.sampleCount)};
    for (const CompetitionFactor &known : competitionFactors()) {
        if (const std::optional<double> value = competition.factors.find(known.name))
            card.items << competitionFactor(known.name, *value, locale);
    }
    for (const FactorMap::Entry &entry : competition.factors) {
        if (std::ranges::find(competitionFactors(), entry.name, &CompetitionFactor::name) ==
            competitionFactors().end())
            card.items << competitionFactor(entry.name, entry.value, locale);
    }
    if (!competition.adjustment.isEmpty())
        card.items << AnalysisText{Kind::Plain, competition.adjustment};
    card.items << AnalysisText{
        Kind::Note,
        Texts::tr(
            "Missing ratings count as zero. If no usable ages or rating momentum exist, those "
            "factors use the upstream midpoint of 50. Rating momentum means lifetime ratings "
            "per year, not measured recent growth.")};
    return card;
}

} // namespace veltrix
