// SPDX-License-Identifier: GPL-3.0-or-later
// How popular a keyword is as a search term, estimated from its search results.
#pragma once

#include "model/popularity.h"
#include "scoring/keyword_survey.h"

#include <QStringView>

namespace veltrix
{

/// Version of the estimate below.
inline constexpr QLatin1String quorvinPopularityModelVersion{"quorvin-v2-relevance-3"};

/// Estimates a keyword's search popularity, because Apple publishes no search volumes.
///
/// In: the survey of the keyword's search, the storefront code in any case (it only chooses the
/// message: the model was calibrated on US data), and the version that the measurement is to carry,
/// "quorvin-v2-relevance-3". Out: a measurement of
/// source "quorvin_calibrated_estimate" with a score from 5 to 100, and its explanation; no
/// measurement when there are no results.
///
/// A linear model over how many sampled titles speak to the keyword and how many ratings, weighted
/// by that relevance, those apps have gathered. A missing or negative rating count is 0: it adds no
/// demand, but its title still counts. A sample without any matching title gives the floor of 5
/// without the model: absence of evidence, not evidence of zero demand, hence never 0.
PopularityAssessment estimatePopularity(const KeywordSurvey &survey, QStringView country,
                                        const QString &modelVersion);

} // namespace veltrix
