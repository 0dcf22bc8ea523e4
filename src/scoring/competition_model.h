// SPDX-License-Identifier: GPL-3.0-or-later
// How hard the field of apps returned for a keyword is to displace.
#pragma once

#include "model/assessments.h"
#include "model/date.h"
#include "scoring/keyword_survey.h"

#include <array>

namespace veltrix
{

/// One of the factors that make up the score.
struct CompetitionFactor {
    /// The key in CompetitionAssessment::factors.
    QString name;
    /// Share of the score; the weights add up to 1.
    double weight = 0;
};

/// The seven factors in the order in which they are added up and shown.
const std::array<CompetitionFactor, 7> &competitionFactors();

/// Scores the competition for one keyword.
///
/// In: the survey of its search, and the moment that counts as now. Out: the score, 1 to 100, or 0
/// for an empty sample; the seven factors, each 0 to 100; and the sentence that says whether the
/// score was corrected. Part of the scoring model "quorvin-opportunity-v1". Higher means stronger
/// competition, not a probability of ranking.
///
/// The weighted sum of the factors is truncated, capped at ten points an app for fewer than ten
/// apps, and then, unless the leader's own publisher is what is searched for, drawn down when the
/// leader is weak or the rest of the field has nothing to do with the keyword.
///
/// A missing rating count is 0, as an app without ratings displaces nobody. A missing or unreadable
/// release date and missing stars leave the app out of the means instead, because they say nothing
/// about it; when no app has a usable date, momentum and age stand at their midpoint of 50. An app
/// without a seller counts as no publisher.
CompetitionAssessment assessCompetition(const KeywordSurvey &survey, Date now);

} // namespace veltrix
