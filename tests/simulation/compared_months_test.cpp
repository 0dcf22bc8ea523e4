// SPDX-License-Identifier: GPL-3.0-or-later
// Three months of changing listings: everything that a publisher did is told once, soon, and
// nothing else.
#include "simulation/compared_months.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace veltrix
{
namespace
{

/// How long an old answer may hide a change.
constexpr int mostDelay = 3;

class ComparedMonthsTest : public testing::TestWithParam<unsigned>
{
};

TEST_P(ComparedMonthsTest, EachChangeIsToldOnceInEachLogAndNothingElse)
{
    ComparedMonthsOptions options;
    options.seed = GetParam();
    const ComparedMonths months = simulateComparedMonths(options);
    std::vector<QString> logs;
    for (const NoticedChange &noticed : months.noticed) {
        const auto isIt = [&](const PlannedChange &planned) {
            const bool isOfStorefront =
                planned.storefront.isEmpty() || planned.storefront == noticed.change.storefront;
            const bool isText = planned.kind == ListingChangeKind::Icon
                                    ? noticed.change.later.contains(planned.later)
                                    : noticed.change.later == planned.later;
            return planned.trackId == noticed.trackId && planned.kind == noticed.change.kind &&
                   isOfStorefront && isText && noticed.day >= planned.day &&
                   noticed.day < planned.day + mostDelay;
        };
        EXPECT_EQ(std::ranges::count_if(months.planned, isIt), 1)
            << qPrintable(noticed.app) << " on day " << noticed.day << ": "
            << qPrintable(noticed.change.earlier) << " to " << qPrintable(noticed.change.later);
        if (std::ranges::find(logs, noticed.app) == logs.end())
            logs.push_back(noticed.app);
    }
    for (const QString &log : logs) {
        const auto ofLog = [&](const NoticedChange &noticed) {
            return noticed.app == log;
        };
        const auto first = std::ranges::find_if(months.noticed, ofLog);
        const auto ofApp = [&](const PlannedChange &planned) {
            return planned.trackId == first->trackId;
        };
        EXPECT_EQ(std::ranges::count_if(months.noticed, ofLog),
                  std::ranges::count_if(months.planned, ofApp))
            << qPrintable(log);
    }
    // Two own apps, and five competitors, two of which belong to both.
    EXPECT_EQ(logs.size(), 9);
    EXPECT_EQ(months.fewestDaysOfStandings, options.days);
    EXPECT_EQ(months.firstDayOfLateRival, dayOfLateRival);
}

INSTANTIATE_TEST_SUITE_P(Seeds, ComparedMonthsTest, testing::Values(1U));

} // namespace
} // namespace veltrix
