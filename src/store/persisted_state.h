// SPDX-License-Identifier: GPL-3.0-or-later
// The content of the state file.
#pragma once

#include "model/app_profile.h"
#include "model/keyword_snapshot.h"
#include "model/tracked_competitor.h"
#include "model/tracked_keyword.h"

#include <vector>

namespace veltrix
{

/// All that the user tracks and all that was measured.
struct PersistedState {
    QList<AppProfile> apps;
    QList<TrackedKeyword> trackedKeywords;
    std::vector<SharedSnapshot> snapshots;
    /// Missing in files from before competitors were tracked.
    QList<TrackedCompetitor> competitors;
};

template <>
inline constexpr auto fieldsOf<PersistedState> = std::tuple{
    field("apps", &PersistedState::apps),
    field("trackedKeywords", &PersistedState::trackedKeywords),
    field("snapshots", &PersistedState::snapshots),
    field("competitors", &PersistedState::competitors, Presence::Lenient),
};

} // namespace veltrix
