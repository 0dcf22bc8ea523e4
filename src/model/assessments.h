// SPDX-License-Identifier: GPL-3.0-or-later
// The results of the competition and opportunity models, as they are kept in a snapshot.
#pragma once

#include "model/factor_map.h"
#include "model/field_list.h"

namespace veltrix
{

/// How hard the field of returned apps is to displace.
struct CompetitionAssessment {
    /// 1 to 100, unitless, of the scoring model of its snapshot; 0 only for an empty sample.
    std::int64_t score = 0;
    /// Apps sampled, at most 25.
    std::int64_t sampleCount = 0;
    /// The seven factors by name, each 0 to 100; empty for an empty sample.
    FactorMap factors;
    /// Which correction was applied, as a sentence for the user.
    QString adjustment;

    bool operator==(const CompetitionAssessment &) const = default;
};

template <>
inline constexpr auto fieldsOf<CompetitionAssessment> = std::tuple{
    field("score", &CompetitionAssessment::score),
    field("sampleCount", &CompetitionAssessment::sampleCount),
    field("factors", &CompetitionAssessment::factors),
    field("adjustment", &CompetitionAssessment::adjustment),
};

/// What the user's app could win from a keyword.
struct OpportunityAssessment {
    /// 0 to 100, unitless: 50 is one modelled install a day, 70 ten, 90 a hundred.
    std::int64_t score = 0;
    /// "Sweet Spot", "Good Target", "Supporting", "Worth Climbing" or "Low Volume".
    QString label;
    QString explanation;
    /// Strength of the user's app, 14.29 to 100, unrounded.
    double appStrength = 0;
    /// The app was absent from the results, so the strength is that of a new app.
    bool usedNewAppBaseline = false;

    bool operator==(const OpportunityAssessment &) const = default;
};

template <>
inline constexpr auto fieldsOf<OpportunityAssessment> = std::tuple{
    field("score", &OpportunityAssessment::score),
    field("label", &OpportunityAssessment::label),
    field("explanation", &OpportunityAssessment::explanation),
    field("appStrength", &OpportunityAssessment::appStrength),
    field("usedNewAppBaseline", &OpportunityAssessment::usedNewAppBaseline),
};

} // namespace veltrix
