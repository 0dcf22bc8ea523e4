// SPDX-License-Identifier: GPL-3.0-or-later
// What was removed from the store, whole, so that it can be put back.
#pragma once

#include "model/app_profile.h"
#include "model/tracked_competitor.h"
#include "model/tracked_keyword.h"
#include "store/placed.h"
#include "store/snapshot_index.h"

#include <QHash>

namespace veltrix
{

/// The records that one removal took, with their places. Put back before anything else has changed,
/// they give the state file that there was before, byte for byte. Snapshots are shared, not copied.
struct RemovedTracking {
    std::vector<Placed<AppProfile>> apps;
    std::vector<Placed<TrackedKeyword>> keywords;
    std::vector<Placed<TrackedCompetitor>> competitors;
    std::vector<FiledSnapshot> snapshots;
    /// App Store ids of the apps to which the keywords and competitors belonged, by the apps' own
    /// ids: an app that is removed and added anew has another.
    QHash<QUuid, std::int64_t> trackIds;

    [[nodiscard]] bool isEmpty() const
    {
        return apps.empty() && keywords.empty() && competitors.empty();
    }
};

/// What is there again.
struct RestoredTracking {
    /// Apps that were put back, or that had been added anew meanwhile.
    QList<QUuid> appIds;
    /// Keywords that were put back, or that had been added anew meanwhile, as they are now.
    QList<TrackedKeyword> keywords;
};

} // namespace veltrix
