// SPDX-License-Identifier: GPL-3.0-or-later
// Months in which listings change: what the measurements of two apps notice of it.
#pragma once

#include "model/listing_change.h"

#include <QString>

#include <vector>

namespace veltrix
{

struct ComparedMonthsOptions {
    int days = 92;
    int keywordsOfEachApp = 8;
    /// For so long after a change some machines of the service still send the old listing,
    Seconds staleAnswers{1.5 * 86'400.0};
    /// and so many of a hundred answers come from them.
    int stalePercent = 30;
    std::uint32_t seed = 1;
};

/// What a publisher did.
struct PlannedChange {
    std::int64_t trackId = 0;
    /// From 1.
    int day = 0;
    ListingChangeKind kind = ListingChangeKind::Version;
    /// Prices are a storefront's own; other changes are in all.
    QString storefront;
    QString later;
};

/// A change as the program tells it.
struct NoticedChange {
    /// The app whose page shows it.
    QString app;
    std::int64_t trackId = 0;
    int day = 0;
    ListingChange change;
};

struct ComparedMonths {
    std::vector<PlannedChange> planned;
    /// Of the apps as they are watched at the end; a competitor of both apps has two logs.
    std::vector<NoticedChange> noticed;
    /// Days with standings, of the keyword that has fewest.
    int fewestDaysOfStandings = 0;
    /// From which day, from 1, the standings name the competitor that was tracked later.
    int firstDayOfLateRival = 0;
};

/// The day on which another competitor is tracked.
inline constexpr int dayOfLateRival = 31;

/// Two apps, five competitors, two storefronts. The program is started anew each day; the App Store
/// is a stand-in whose listings change as planned. One competitor of both apps is removed and put
/// back.
ComparedMonths simulateComparedMonths(const ComparedMonthsOptions &options = {});

} // namespace veltrix
