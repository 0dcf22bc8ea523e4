// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/small_line.h"

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

/// Ranks from the first day on; 0 found nothing, -1 is no check.
SmallLineGeometry geometryOf(const std::vector<int> &ranks, double leastSpan = 12)
{
    SmallLine line;
    line.days = int(ranks.size());
    line.leastSpan = leastSpan;
    for (int day = 0; day < line.days; ++day) {
        const int rank = ranks[size_t(day)];
        if (rank >= 0)
            line.checks.push_back({day, rank ? std::optional<double>(rank) : std::nullopt});
    }
    return layoutSmallLine({0, 0, 105, 25}, line);
}

TEST(SmallLine, TheBestRankIsOnTopAndTheLastCheckIsADot)
{
    const SmallLineGeometry line = geometryOf({40, 20, 1});
    ASSERT_EQ(line.parts.size(), 1U);
    ASSERT_EQ(line.parts[0].size(), 3);
    EXPECT_GT(line.parts[0][0].y(), line.parts[0][1].y());
    EXPECT_DOUBLE_EQ(line.parts[0][0].y(), 22.5);
    EXPECT_DOUBLE_EQ(line.parts[0][2].y(), 2.5);
    EXPECT_EQ(line.dot, line.parts[0][2]);
    EXPECT_EQ(line.dot->x(), 102.5);
    EXPECT_FALSE(line.cross);
}

TEST(SmallLine, ACheckThatFoundNothingIsAGapAndADayWithoutACheckIsNone)
{
    const SmallLineGeometry line = geometryOf({40, -1, 20, 0, 30, 0, 10, 11});
    ASSERT_EQ(line.parts.size(), 3U);
    EXPECT_EQ(line.parts[0].size(), 2);
    EXPECT_EQ(line.parts[1].size(), 1) << "alone between two gaps";
    EXPECT_EQ(line.parts[2].size(), 2);
}

TEST(SmallLine, ALastCheckThatFoundNothingIsACrossAtTheBottom)
{
    const SmallLineGeometry line = geometryOf({40, 20, 0, -1});
    EXPECT_FALSE(line.dot);
    ASSERT_TRUE(line.cross);
    EXPECT_EQ(line.cross->y(), 22.5);
    EXPECT_LT(line.cross->x(), 102.5) << "on the day of that check";
}

TEST(SmallLine, AStepOfOnePlaceLooksSmall)
{
    const SmallLineGeometry line = geometryOf({10, 11});
    EXPECT_NEAR(line.parts[0][1].y() - line.parts[0][0].y(), 20.0 / 12, 1e-9);
    const SmallLineGeometry still = geometryOf({10, 10});
    EXPECT_DOUBLE_EQ(still.parts[0][0].y(), 12.5) << "in the middle";
}

TEST(SmallLine, WithoutAnyRankThereIsNoLineAndNoEnd)
{
    EXPECT_TRUE(geometryOf({}).parts.empty());
    EXPECT_TRUE(geometryOf({0, 0}).parts.empty());
    SmallLine line;
    line.checks = {{0, std::nullopt}, {1, 30.0}, {2, 20.0}};
    EXPECT_EQ(line.ends(), std::pair(30.0, 20.0));
    line.checks.resize(1);
    EXPECT_EQ(line.ends(), std::nullopt);
}

} // namespace
} // namespace veltrix
