// SPDX-License-Identifier: GPL-3.0-or-later
// A month with Veltrix on a virtual clock: a window that is open for some hours of every day, many
// keywords, and services that are slow, fail now and then, or refuse a keyword for ever.
#pragma once

#include "store/keyword_refreshes.h"

#include <cstdint>
#include <vector>

namespace veltrix
{

struct MonthOptions {
    /// A keyword near the head of the list that no service will ever answer: one that breaks the
    /// rules, as older files may hold, or one that keeps them.
    enum class Poison { None, TooLong, UnknownStorefront, AlwaysFails };
    /// The service of search suggestions, which is asked after each search.
    enum class Hints { None, Answering, OutOfReach };

    int keywords = 200;
    int days = 31;
    int firstHour = 9;
    int hoursOpen = 8;
    /// Chance of a search to fail, 0 to 1.
    double faults = 0;
    Seconds searchTime{0};
    Hints hints = Hints::None;
    KeywordRefreshes::Due due = KeywordRefreshes::Due::After24Hours;
    /// The window opens so much earlier each day than on the day before.
    Seconds earlierEachDay{0};
    Poison poison = Poison::None;
    std::uint32_t seed = 1;
};

struct MonthResult {
    /// UTC days with a measurement, for each keyword that can be measured, in list order.
    std::vector<int> observedDays;
    int searches = 0;
    int failures = 0;
    /// Refreshes that ended with "Some rankings couldn't be updated…".
    int errorsShown = 0;

    [[nodiscard]] int fewestDays() const;
    [[nodiscard]] double averageDays() const;
    /// Keywords observed on fewer days.
    [[nodiscard]] int keywordsBelow(int days) const;
};

/// Lives through the month: the refreshes, their pipeline and the window's loop are the program's
/// own; services are stand-ins, and what is measured is kept in memory.
MonthResult simulateMonth(const MonthOptions &options);

} // namespace veltrix
