// SPDX-License-Identifier: GPL-3.0-or-later
// Competitors as apps, and where they stood.
#pragma once

#include "model/keyword_standings.h"
#include "model/tracked_competitor.h"

#include <QList>

namespace veltrix
{

/// A competitor: one app, however many storefronts it is watched in.
struct RivalApp {
    std::int64_t trackId = 0;
    /// As the asked storefront calls it, where it is watched there.
    QString name;
    std::vector<QUuid> competitorIds;

    bool operator==(const RivalApp &) const = default;
};

/// In the order in which they were tracked first. `storefront` may be empty.
std::vector<RivalApp> rivalApps(const QList<TrackedCompetitor> &competitors,
                                const QString &storefront);

/// Where the app stood in a measurement; absent when it was not tracked then.
std::optional<RivalStanding> standingOf(const RivalApp &app, const KeywordStandings &measured);

} // namespace veltrix
