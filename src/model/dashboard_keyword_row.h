// SPDX-License-Identifier: GPL-3.0-or-later
// One row of the keywords dashboard. In memory only.
#pragma once

#include "model/assessments.h"
#include "model/date.h"
#include "model/url.h"

#include <QUuid>

namespace veltrix
{

/// A tracked keyword with what its newest snapshot says, as the dashboard lists it.
struct DashboardKeywordRow {
    /// The tracked keyword's id.
    QUuid id;
    QString keyword;
    QString country;
    /// When the newest snapshot was taken, or when the keyword was added if there is none.
    Date lastUpdate;
    /// 5 to 100, only from an accepted source.
    std::optional<std::int64_t> popularity;
    /// 0 to 100; absent when no apps were sampled.
    std::optional<std::int64_t> difficulty;
    /// 1-based; absent when unranked or not yet measured.
    std::optional<std::int64_t> position;
    QList<Url> appsInRanking;
    /// 5 to 100, only from an autocomplete measurement.
    std::optional<std::int64_t> autocompleteVisibility;
    std::optional<OpportunityAssessment> opportunity;
    /// The keyword has no snapshot yet.
    bool awaitingMetrics = false;

    bool operator==(const DashboardKeywordRow &) const = default;
};

} // namespace veltrix
