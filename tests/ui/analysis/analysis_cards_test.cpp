// SPDX-License-Identifier: GPL-3.0-or-later
// Every text of the cards of the keyword analysis, to the letter.
#include "ui/analysis/analysis_cards.h"

#include "ui/analysis/sample_snapshot.h"

namespace veltrix
{

namespace
{

const AnalysisFormat english{QLocale(QLocale::English, QLocale::UnitedStates), QTimeZone::utc()};

AnalysisContent contentOf(const KeywordSnapshot &snapshot)
{
    return analysisContent(snapshot.keyword, snapshot.country, &snapshot, english);
}

AnalysisCard cardOf(const KeywordSnapshot &snapshot, AnalysisCard::Model model)
{
    for (const AnalysisCard &card : contentOf(snapshot).cards) {
        if (card.model == model)
            return card;
    }
    ADD_FAILURE() << "no such card";
    return {};
}

/// One line an item; warnings and information are marked.
QStringList linesOf(const AnalysisCard &card)
{
    QStringList lines{card.scoreText()};
    for (const AnalysisItem &item : card.items) {
        if (const auto *plain = std::get_if<AnalysisText>(&item)) {
            const bool isWarning = plain->kind == AnalysisText::Kind::Warning;
            const bool isInfo = plain->kind == AnalysisText::Kind::Info;
            lines << (isWarning ? text("! ") : isInfo ? text("i ") : QString()) + plain->text;
        } else if (const auto *factor = std::get_if<AnalysisFactor>(&item)) {
            lines << QStringList{factor->name, factor->weight, factor->detail, factor->points}.join(
                text(" | "));
        } else {
            const auto &evidence = std::get<AnalysisEvidence>(item);
            lines << evidence.name + text(" -> ") + evidence.value;
        }
    }
    return lines;
}

QStringList popularityOf(const KeywordSnapshot &snapshot)
{
    return linesOf(cardOf(snapshot, AnalysisCard::Model::Popularity));
}

QStringList autocompleteOf(const KeywordSnapshot &snapshot)
{
    return linesOf(cardOf(snapshot, AnalysisCard::Model::Autocomplete));
}

QStringList difficultyOf(const KeywordSnapshot &snapshot)
{
    return linesOf(cardOf(snapshot, AnalysisCard::Model::Difficulty));
}

QStringList competitionOf(const KeywordSnapshot &snapshot)
{
    return linesOf(cardOf(snapshot, AnalysisCard::Model::Competition));
}

const char *const autocompleteInfo =
    "i Incomplete prefixes contribute reciprocal-log rank, weighted toward earlier visibility. "
    "Full-term matches confirm evidence but add no points. After three observed days, the score is "
    "the seven-day median. No rating counts enter this score. Confidence remains low until tested "
    "against reference data.";

} // namespace

TEST(AnalysisPopularity, ShowsScoreSourceNoteAndRawValue)
{
    EXPECT_EQ(popularityOf(completeSnapshot()),
              (QStringList{text("61 / 100"), text("Source: quorvin_calibrated_estimate"),
                           text("Estimated popularity, not official Apple data."),
                           text("Saved raw value: 61,234.5")}));
}

TEST(AnalysisPopularity, SourceAndRawValueSayWhatTheyAre)
{
    const AnalysisCard card = cardOf(completeSnapshot(), AnalysisCard::Model::Popularity);
    int explained = 0;
    for (const AnalysisItem &item : card.items) {
        const auto &line = std::get<AnalysisText>(item);
        const bool needsHelp =
            line.text.startsWith(text("Source: ")) || line.text.startsWith(text("Saved raw value"));
        EXPECT_EQ(!line.help.isEmpty(), needsHelp) << line.text.toStdString();
        explained += needsHelp ? 1 : 0;
    }
    EXPECT_EQ(explained, 2);
}

TEST(AnalysisPopularity, WithoutAMeasurementARefreshIsAskedFor)
{
    KeywordSnapshot snapshot = completeSnapshot();
    snapshot.popularityMeasurement.reset();
    snapshot.popularityRaw.reset();
    EXPECT_EQ(
        popularityOf(snapshot),
        (QStringList{QString(), text("Refresh this keyword to calculate estimated popularity.")}));
    EXPECT_EQ(contentOf(snapshot).figures.at(1).text(), text("Search popularity: —"));
}

TEST(AnalysisPopularity, WhatTheMeasurementSaidStandsUnderIt)
{
    KeywordSnapshot snapshot = completeSnapshot();
    snapshot.popularityStatus = text(" Estimated popularity at the minimum. ");
    EXPECT_EQ(popularityOf(snapshot).at(3), text("Estimated popularity at the minimum."));
    snapshot.popularityMeasurement.reset();
    snapshot.popularityRaw.reset();
    snapshot.popularityStatus =
        text("Popularity unavailable. Rankings were saved; try popularity again later.");
    EXPECT_EQ(
        popularityOf(snapshot),
        (QStringList{QString(), text("Refresh this keyword to calculate estimated popularity."),
                     *snapshot.popularityStatus}));
    snapshot.popularityStatus = text("  ");
    EXPECT_EQ(popularityOf(snapshot).size(), 2);
}

TEST(AnalysisPopularity, AScoreOfFiveIsShownAndOneOfFourIsNot)
{
    KeywordSnapshot snapshot = completeSnapshot();
    snapshot.popularityMeasurement->source = text("calibrated_search_demand");
    snapshot.popularityMeasurement->score = 5;
    EXPECT_EQ(popularityOf(snapshot).constFirst(), text("5 / 100"));
    snapshot.popularityMeasurement->score = 4;
    EXPECT_EQ(popularityOf(snapshot).constFirst(), QString());
}

TEST(AnalysisPopularity, EachAcceptedSourceIsNamed)
{
    for (const char *source :
         {"apple_search_popularity", "calibrated_search_demand", "quorvin_calibrated_estimate"}) {
        KeywordSnapshot snapshot = completeSnapshot();
        snapshot.popularityMeasurement->source = text(source);
        EXPECT_EQ(popularityOf(snapshot).at(1), text("Source: ") + text(source));
    }
}

TEST(AnalysisPopularity, AutocompleteAloneIsNotPopularity)
{
    KeywordSnapshot snapshot = completeSnapshot();
    snapshot.popularityMeasurement->source = text("apple_autocomplete_estimate");
    EXPECT_EQ(popularityOf(snapshot).constFirst(), QString());
}

TEST(AnalysisAutocomplete, ShowsTheEvidence)
{
    EXPECT_EQ(
        autocompleteOf(completeSnapshot()),
        (QStringList{
            text("38 / 100"), text("Demand confidence: low · No reference-data validation yet"),
            text("4 probes"), text("3 observed day(s) in the last 7 · Median smoothing active"),
            text("! Visibility has varied substantially across observations."),
            text("! Matches a ranking app's name: may represent branded intent."),
            text("co -> Empty response"), text("colla -> Exact phrase #2"),
            text("collage m -> Not observed"), text("collage maker -> Exact phrase #1"),
            text(autocompleteInfo),
            text("Model: autocomplete-visibility-v2 · Up to 5 requests per term, 24-hour "
                 "nonempty cache, 200 requests/day per installation. This sheet makes no "
                 "requests.")}));
}

TEST(AnalysisAutocomplete, TwoObservedDaysAreNotSmoothedYet)
{
    KeywordSnapshot snapshot = completeSnapshot();
    snapshot.autocompleteEvidence->observedDays = 2;
    EXPECT_TRUE(autocompleteOf(snapshot).contains(
        text("2 observed day(s) in the last 7 · Collecting repeated evidence")));
}

TEST(AnalysisAutocomplete, ASpreadOf25IsNoWarning)
{
    KeywordSnapshot snapshot = completeSnapshot();
    const QString warning = text("! Visibility has varied substantially across observations.");
    snapshot.autocompleteEvidence->scoreSpread = 25;
    EXPECT_FALSE(autocompleteOf(snapshot).contains(warning));
    snapshot.autocompleteEvidence->scoreSpread = 26;
    EXPECT_TRUE(autocompleteOf(snapshot).contains(warning));
    snapshot.autocompleteEvidence->scoreSpread.reset();
    EXPECT_FALSE(autocompleteOf(snapshot).contains(warning));
}

TEST(AnalysisAutocomplete, ABrandIsOnlyMarkedWhenTheEvidenceMarksIt)
{
    KeywordSnapshot snapshot = completeSnapshot();
    snapshot.autocompleteEvidence->possibleBrand = false;
    EXPECT_FALSE(autocompleteOf(snapshot).contains(
        text("! Matches a ranking app's name: may represent branded intent.")));
}

TEST(AnalysisAutocomplete, AMissingScoreIsNotZero)
{
    KeywordSnapshot snapshot = completeSnapshot();
    snapshot.autocompleteEvidence->dailyScore.reset();
    EXPECT_EQ(autocompleteOf(snapshot).constFirst(), text("— Refresh required"));
}

TEST(AnalysisAutocomplete, ASnapshotOlderThanTheModelSaysSo)
{
    KeywordSnapshot snapshot = completeSnapshot();
    snapshot.autocompleteEvidence.reset();
    snapshot.popularityModelVersion.reset();
    EXPECT_EQ(
        autocompleteOf(snapshot),
        (QStringList{text("— Refresh required"),
                     text("This observation predates the autocomplete model. Refresh to collect "
                          "evidence; the old ratings-based score is not comparable."),
                     text(autocompleteInfo),
                     text("Model: unknown · Up to 5 requests per term, 24-hour nonempty cache, 200 "
                          "requests/day per installation. This sheet makes no requests.")}));
}

TEST(AnalysisAutocomplete, WithoutEvidenceItSaysThatNoneWasSaved)
{
    KeywordSnapshot snapshot = completeSnapshot();
    snapshot.autocompleteEvidence.reset();
    EXPECT_EQ(autocompleteOf(snapshot).mid(0, 2),
              (QStringList{text("— Refresh required"), text("No autocomplete evidence saved.")}));
}

TEST(AnalysisAutocomplete, AMeasurementByAutocompleteGivesScoreAndModel)
{
    KeywordSnapshot snapshot = completeSnapshot();
    snapshot.autocompleteEvidence.reset();
    snapshot.popularityMeasurement = PopularityMeasurement{
        40, text("apple_autocomplete_estimate"), text("autocomplete-visibility-v1"), 0, 0, 0};
    const QStringList lines = autocompleteOf(snapshot);
    EXPECT_EQ(lines.constFirst(), text("40 / 100"));
    EXPECT_TRUE(lines.constLast().startsWith(text("Model: autocomplete-visibility-v1 · ")));
}

TEST(AnalysisDifficulty, ShowsTheThreeFactorsWithWeightsAndPoints)
{
    EXPECT_EQ(
        difficultyOf(completeSnapshot()),
        (QStringList{
            text("44 / 100"),
            text("A local heuristic built from up to ten returned apps. Higher means stronger "
                 "signals of competition—not a measured probability of ranking."),
            text("Rating count | 45% weight | Average 9,912 ratings · 1 − exp(−average ratings / "
                 "10,000) | 28.4"),
            text("App age | 25% weight | Average 4.2 years · Average age capped at 8 years, "
                 "divided by 8 | 13.1"),
            text("Keyword match | 30% weight | Average token overlap 10% · Share of keyword tokens "
                 "found in each title/subtitle | 3.0"),
            text("Sample: 10 of up to 10 apps · Missing inputs: 0 rating counts · 1 release dates"),
            text("Final score = rounded sum of weighted points. Missing rating counts and unusable "
                 "release dates contribute zero in this model and can understate competition. "
                 "Absent subtitles are treated as empty text.")}));
}

TEST(AnalysisDifficulty, AnObservationWithoutCountsIsALegacyOne)
{
    KeywordSnapshot snapshot = completeSnapshot();
    snapshot.difficultyComponents.sampledAppCount.reset();
    snapshot.difficultyComponents.missingReviewCount.reset();
    snapshot.difficultyComponents.missingReleaseDateCount.reset();
    const QStringList lines = difficultyOf(snapshot);
    EXPECT_TRUE(lines.contains(
        text("Legacy observation: sample size and missing-field coverage were not recorded.")));
    EXPECT_TRUE(lines.filter(text("Missing inputs")).isEmpty());
    EXPECT_EQ(lines.constFirst(), text("44 / 100"));
}

TEST(AnalysisDifficulty, AScoreOfNoAppsIsNotZero)
{
    KeywordSnapshot snapshot = completeSnapshot();
    snapshot.difficultyScore = 0;
    snapshot.difficultyComponents.sampledAppCount = 0;
    EXPECT_EQ(difficultyOf(snapshot).constFirst(), text("— No app results to score"));
    EXPECT_TRUE(difficultyOf(snapshot).filter(text("Average")).isEmpty())
        << "averages of no apps are no zeroes";
    EXPECT_TRUE(difficultyOf(snapshot).contains(
        text("Sample: 0 of up to 10 apps · Missing inputs: 0 rating counts · 1 release dates")));
    EXPECT_EQ(contentOf(snapshot).figures.at(2).text(), text("Difficulty · estimate: —"));
}

TEST(AnalysisDifficulty, MetersAreTheComponents)
{
    QList<double> fractions;
    const AnalysisCard card = cardOf(completeSnapshot(), AnalysisCard::Model::Difficulty);
    for (const AnalysisItem &item : card.items) {
        if (const auto *factor = std::get_if<AnalysisFactor>(&item))
            fractions << factor->fraction;
    }
    EXPECT_EQ(fractions, (QList<double>{0.63, 0.525, 0.1}));
}

TEST(AnalysisCompetition, ShowsTheSevenFactorsInTheModelsOrder)
{
    EXPECT_EQ(
        competitionOf(completeSnapshot()),
        (QStringList{
            text("66 / 100"),
            text("Quorvin competition model · 25 of up to 25 apps. Higher means stronger "
                 "competition, not a probability of ranking."),
            text("Rating volume | 30% weight | 23.4 weighted points · 78.0 of 100 | 23.4"),
            text("Rating momentum | 10% weight | 6.1 weighted points · 61.0 of 100 | 6.1"),
            text("Dominant apps | 20% weight | 11.1 weighted points · 55.5 of 100 | 11.1"),
            text("Rating quality | 10% weight | 8.5 weighted points · 85.0 of 100 | 8.5"),
            text("App age | 10% weight | 7.0 weighted points · 70.0 of 100 | 7.0"),
            text("Publisher diversity | 10% weight | 9.6 weighted points · 96.0 of 100 | 9.6"),
            text("Title relevance | 10% weight | 4.0 weighted points · 40.0 of 100 | 4.0"),
            text("No small-sample or weak-leader correction applied."),
            text("Missing ratings count as zero. If no usable ages or rating momentum exist, those "
                 "factors use the upstream midpoint of 50. Rating momentum means lifetime ratings "
                 "per year, not measured recent growth.")}));
}

TEST(AnalysisCompetition, WithoutResultsThereIsNoScore)
{
    KeywordSnapshot snapshot = completeSnapshot();
    snapshot.competition = CompetitionAssessment{0, 0, {}, text("No app results.")};
    const QStringList lines = competitionOf(snapshot);
    EXPECT_EQ(lines.constFirst(), text("— No app results to score"));
    EXPECT_TRUE(lines.contains(text("No app results.")));
    EXPECT_EQ(contentOf(snapshot).figures.at(3).text(), text("Competition: —"));
}

TEST(AnalysisCompetition, ASnapshotOlderThanTheModelHasNoScoreAndAsksForARefresh)
{
    KeywordSnapshot snapshot = completeSnapshot();
    snapshot.competition.reset();
    EXPECT_EQ(competitionOf(snapshot),
              (QStringList{text("— No app results to score"),
                           text("This observation predates the competition model. Refresh this "
                                "keyword to assess the competition.")}));
}

TEST(AnalysisCompetition, AFactorOfAnotherModelHasNoWeight)
{
    KeywordSnapshot snapshot = completeSnapshot();
    snapshot.competition->factors = {{text("Weather"), 12.5}};
    EXPECT_TRUE(competitionOf(snapshot).contains(text("Weather |  | 12.5 of 100 | ")));
}

} // namespace veltrix
