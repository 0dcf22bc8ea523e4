// SPDX-License-Identifier: GPL-3.0-or-later
// What the Competitors workspace shows below its search.
#pragma once

#include "store/aso_store.h"
#include "ui_kit/widgets/empty_state.h"

namespace veltrix
{

/// The tracked competitors of the user's app, or why there are none. A pure value.
struct CompetitorOverview {
    QList<TrackedCompetitor> competitors;
    /// What stands in the place of competitors.
    EmptyState::Content empty;
    /// "5 tracked"; empty when there are none.
    QString count;

    static CompetitorOverview of(const ASOStore &store, const std::optional<QUuid> &appId);
    bool operator==(const CompetitorOverview &) const = default;
};

} // namespace veltrix
