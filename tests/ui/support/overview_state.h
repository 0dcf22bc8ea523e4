// SPDX-License-Identifier: GPL-3.0-or-later
// Apps whose keywords have moved, for the tests and pictures of the Overview.
#pragma once

#include "store/persisted_state.h"

#include <vector>

namespace veltrix
{

/// A keyword with its ranks from the oldest day to today; 0 is not ranked, -1 no check.
struct RankedKeyword {
    const char *keyword;
    const char *country;
    std::vector<int> ranks;
};

struct RankedApp {
    const char *name;
    const char *country;
    std::vector<RankedKeyword> keywords;
    /// Of the checks of today.
    double minutesAgo = 4;
};

/// A state of these apps; checks of earlier days were made at the same time of day as now.
PersistedState stateOf(const std::vector<RankedApp> &apps, Date now,
                       const QString &popularityVersion);
/// Four apps with 81 keywords and a month of checks, of which one was not measured whole today.
std::vector<RankedApp> fourRankedApps();
/// So many apps with so many keywords each, measured for so many days.
PersistedState manyRankedApps(int apps, int keywords, int days, Date now,
                              const QString &popularityVersion);

} // namespace veltrix
