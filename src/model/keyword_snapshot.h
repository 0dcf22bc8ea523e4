// SPDX-License-Identifier: GPL-3.0-or-later
// One dated measurement of a keyword.
#pragma once

#include "model/assessments.h"
#include "model/autocomplete_evidence.h"
#include "model/date.h"
#include "model/difficulty_components.h"
#include "model/popularity.h"
#include "model/url.h"

#include <QUuid>

#include <memory>

namespace veltrix
{

/// The result of one refresh of one tracked keyword. Fields from popularityMeasurement on were
/// added over time: older files read with them empty.
struct KeywordSnapshot {
    QUuid id;
    /// The TrackedKeyword measured.
    QUuid trackedKeywordId;
    QString keyword;
    QString country;
    /// When the search had answered.
    Date fetchedAt;
    /// Popularity before scaling: the measurement's weighted rating signal.
    std::optional<double> popularityRaw;
    /// 5 to 100; absent when popularity could not be measured.
    std::optional<std::int64_t> popularityScore;
    /// 0 to 100.
    std::int64_t difficultyScore = 0;
    DifficultyComponents difficultyComponents;
    /// 1-based rank of the tracked app; absent means that it was looked for and not ranked.
    std::optional<std::int64_t> position;
    /// Icons of the top-ranked apps, at most five.
    QList<Url> competitorIcons;
    std::optional<PopularityMeasurement> popularityMeasurement;
    std::optional<QString> popularityModelVersion;
    /// A text for the user about popularity.
    std::optional<QString> popularityStatus;
    std::optional<AutocompleteEvidence> autocompleteEvidence;
    std::optional<CompetitionAssessment> competition;
    std::optional<OpportunityAssessment> opportunity;
    std::optional<QString> scoringModelVersion;

    bool operator==(const KeywordSnapshot &) const = default;
};

template <>
inline constexpr auto fieldsOf<KeywordSnapshot> = std::tuple{
    field("id", &KeywordSnapshot::id),
    field("trackedKeywordId", &KeywordSnapshot::trackedKeywordId),
    field("keyword", &KeywordSnapshot::keyword),
    field("country", &KeywordSnapshot::country),
    field("fetchedAt", &KeywordSnapshot::fetchedAt),
    field("popularityRaw", &KeywordSnapshot::popularityRaw),
    field("popularityScore", &KeywordSnapshot::popularityScore),
    field("difficultyScore", &KeywordSnapshot::difficultyScore),
    field("difficultyComponents", &KeywordSnapshot::difficultyComponents),
    field("position", &KeywordSnapshot::position),
    field("competitorIcons", &KeywordSnapshot::competitorIcons),
    field("popularityMeasurement", &KeywordSnapshot::popularityMeasurement),
    field("popularityModelVersion", &KeywordSnapshot::popularityModelVersion),
    field("popularityStatus", &KeywordSnapshot::popularityStatus),
    field("autocompleteEvidence", &KeywordSnapshot::autocompleteEvidence),
    field("competition", &KeywordSnapshot::competition),
    field("opportunity", &KeywordSnapshot::opportunity),
    field("scoringModelVersion", &KeywordSnapshot::scoringModelVersion),
};

/// A stored snapshot never changes, so everyone shares the one copy.
using SharedSnapshot = std::shared_ptr<const KeywordSnapshot>;

} // namespace veltrix
