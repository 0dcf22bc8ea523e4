// SPDX-License-Identifier: GPL-3.0-or-later
// A complete measurement, for the analysis to explain.
#pragma once

#include "store/store_fixture.h"

namespace veltrix
{

/// "collage maker" in the United States, with everything that the current models save.
inline KeywordSnapshot completeSnapshot()
{
    KeywordSnapshot snapshot;
    snapshot.id = QUuid::createUuid();
    snapshot.keyword = text("collage maker");
    snapshot.country = text("US");
    snapshot.fetchedAt = dateFromUnixSeconds(1795254060); // 2026-11-21T09:41:00Z
    snapshot.popularityRaw = 61234.5;
    snapshot.popularityScore = 61;
    snapshot.difficultyScore = 44;
    snapshot.difficultyComponents = {10, 0, 1, 9912, 4.2, 0.1, 0.63, 0.525, 0.1, 0.45, 0.25, 0.3};
    snapshot.position = 9;
    snapshot.popularityMeasurement = PopularityMeasurement{
        61, text("quorvin_calibrated_estimate"), text("quorvin-v2-relevance-3"), 25, 12, 61234.5};
    snapshot.popularityModelVersion = text("quorvin-v2-relevance-3");
    AutocompleteEvidence evidence;
    evidence.keyword = snapshot.keyword;
    evidence.country = snapshot.country;
    evidence.probes = {
        {text("co"), {}, snapshot.fetchedAt, std::nullopt},
        {text("colla"), {text("collage"), text("collage maker")}, snapshot.fetchedAt, 2},
        {text("collage m"), {text("collage mixer")}, snapshot.fetchedAt, std::nullopt},
        {text("collage maker"), {text("collage maker")}, snapshot.fetchedAt, 1}};
    evidence.plannedProbes = 4;
    evidence.observedDays = 3;
    evidence.dailyScore = 38;
    evidence.scoreSpread = 26;
    evidence.possibleBrand = true;
    snapshot.autocompleteEvidence = evidence;
    snapshot.competition =
        CompetitionAssessment{66,
                              25,
                              {{text("Rating volume"), 78.0},
                               {text("Rating momentum"), 61.0},
                               {text("Dominant apps"), 55.5},
                               {text("Rating quality"), 85.0},
                               {text("App age"), 70.0},
                               {text("Publisher diversity"), 96.0},
                               {text("Title relevance"), 40.0}},
                              text("No small-sample or weak-leader correction applied.")};
    snapshot.opportunity = OpportunityAssessment{
        62, text("Good Target"),
        text("Demand and your app’s competitive strength support targeting this keyword. "
             "Opportunity 62/100; popularity 61, difficulty 66. Uses your app’s storefront "
             "ratings, stars and age. Assumes title targeting, storefront market size and a 5% "
             "install conversion. Estimates—not promised rankings or downloads."),
        54.2, false};
    snapshot.scoringModelVersion = text("quorvin-opportunity-v1");
    return snapshot;
}

} // namespace veltrix
