// SPDX-License-Identifier: GPL-3.0-or-later
// A month of runs without a window, as a timer starts them: what each measures and tells.
#pragma once

#include "headless/measure_messages.h"

#include <QHash>
#include <QList>

#include <vector>

namespace veltrix
{

struct DailyMonthOptions {
    int keywords = 200;
    int days = 30;
    /// On these days, from 1, the machine is off; the run is caught up when it is on again.
    QList<int> daysOff{12};
    /// On these the service answers so many searches and then no more.
    QHash<int, int> searchesAnswered{{20, 0}, {21, 90}};
    /// Up to so long after the planned time, another time each day.
    Seconds randomDelay{900};
    std::uint32_t seed = 1;
};

/// One start of the program.
struct DailyRun {
    /// From 1.
    int day = 0;
    Date at;
    bool isCaughtUp = false;
    MeasureSummary summary;
    /// How many keywords a rule of 24 hours would have measured.
    int measuredByAge = 0;
};

struct DailyMonth {
    std::vector<DailyRun> runs;
    /// UTC days with a measurement, of the keyword that has fewest and of the one that has most.
    int fewestDays = 0;
    int mostDays = 0;
    /// The same by a rule of 24 hours.
    int fewestDaysByAge = 0;
    int mostDaysByAge = 0;
};

/// Lives through the month. The store, its files, the measuring and the telling are the program's
/// own, anew for each run; the App Store is a stand-in in which ranks wander.
DailyMonth simulateDailyMonth(const DailyMonthOptions &options = {});

} // namespace veltrix
