// SPDX-License-Identifier: GPL-3.0-or-later
// How many installs a day the user's app could win from a keyword.
#pragma once

#include "model/assessments.h"
#include "model/popularity.h"
#include "scoring/keyword_survey.h"

namespace veltrix
{

/// What the model is asked about, beside a keyword and its search.
struct OpportunityQuery {
    /// Storefront code in any case.
    QString storefront;
    std::optional<PopularityMeasurement> popularity;
    CompetitionAssessment competition;
    /// The App Store id of the user's app.
    std::int64_t trackId = 0;
    /// Its 1-based position in the results, when it is among them.
    std::optional<std::int64_t> position;
    Date now;
};

/// Strength of an app on a scale to 100, from its ratings, their yearly rate, stars and age.
///
/// Every app gets a floor of 10 ÷ 0.7 = 14.29, so an app without an entry in the results (null) and
/// one whose entry is empty are worth the same; whatever is missing adds nothing to the floor.
double appStrength(const ITunesAppResult *app, Date now);

/// The rank, 1.56 to 250, that an app can expect when the competition score exceeds its strength by
/// `gap` points (negative when the app is the stronger).
double expectedRank(double gap);

/// Share of searchers, 0 to 0.3, who tap the result at `rank`, which may lie between whole ranks.
double tapThroughShare(double rank);

/// Estimates what the user's app could win from the keyword: installs a day, as a score from 0 to
/// 100 (50 is one install a day, 70 ten, 90 a hundred), with a label and an explanation. Scoring
/// model "quorvin-opportunity-v1".
///
/// installs = searches a day in the storefront × tap-through share of the modelled rank × 5 %. The
/// rank is the one expected from the gap between competition and the app's strength; where the app
/// ranks already it is never worse than the current one, and exactly the current one when the
/// app's title already targets the keyword, because then nothing is left to gain from the title.
///
/// No value when the popularity is missing, of another kind than search popularity or out of 5 to
/// 100, when no app was sampled, or when the storefront has no market factor: there is no demand or
/// no field to model then, and a zero would look like a measured one. An app missing from the
/// results counts as a new one.
std::optional<OpportunityAssessment> assessOpportunity(const KeywordSurvey &survey,
                                                       const OpportunityQuery &query);

} // namespace veltrix
