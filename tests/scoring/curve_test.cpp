// SPDX-License-Identifier: GPL-3.0-or-later
#include "scoring/curve.h"
#include "scoring/rating_curves.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace veltrix
{
namespace
{

constexpr CurvePoint points[] = {{10, 4}, {100, 8}, {1000, 20}};
constexpr Curve linear{CurveMode::Linear, points};
constexpr Curve logarithmic{CurveMode::Logarithmic, points};

TEST(Curve, IsZeroAtAndBelowZeroWhenItStartsLater)
{
    EXPECT_EQ(linear.at(0), 0);
    EXPECT_EQ(linear.at(-5), 0);
    EXPECT_EQ(logarithmic.at(0), 0);
}

TEST(Curve, HoldsTheFirstValueAtAndBelowZeroWhenItStartsThere)
{
    constexpr CurvePoint fromZero[] = {{0, 3}, {10, 5}};
    const Curve curve{CurveMode::Linear, fromZero};
    EXPECT_EQ(curve.at(0), 3);
    EXPECT_EQ(curve.at(-1), 3);
    EXPECT_EQ(curve.at(5), 4);
}

TEST(Curve, IsAStraightLineFromTheOriginBelowTheFirstPointInBothModes)
{
    EXPECT_EQ(linear.at(5), 2);
    EXPECT_EQ(logarithmic.at(5), 2);
    EXPECT_EQ(logarithmic.at(10), 4);
}

TEST(Curve, InterpolatesBetweenPointsLinearly)
{
    EXPECT_EQ(linear.at(55), 6);
    EXPECT_EQ(linear.at(100), 8);
    EXPECT_EQ(linear.at(550), 14);
}

TEST(Curve, InterpolatesBetweenPointsByLogarithm)
{
    EXPECT_NEAR(logarithmic.at(std::sqrt(1000.0)), 6, 1e-12);
    EXPECT_EQ(logarithmic.at(100), 8);
    EXPECT_NEAR(logarithmic.at(100 * std::sqrt(10.0)), 14, 1e-12);
}

TEST(Curve, IsFlatBeyondTheLastPoint)
{
    EXPECT_EQ(linear.at(1000), 20);
    EXPECT_EQ(linear.at(1e18), 20);
    EXPECT_EQ(logarithmic.at(std::numeric_limits<double>::infinity()), 20);
    EXPECT_EQ(logarithmic.at(std::numeric_limits<double>::quiet_NaN()), 20);
}

TEST(Curve, OfOnePointIsALineAndThenFlat)
{
    constexpr CurvePoint one[] = {{10, 4}};
    const Curve curve{CurveMode::Logarithmic, one};
    EXPECT_EQ(curve.at(5), 2);
    EXPECT_EQ(curve.at(10), 4);
    EXPECT_EQ(curve.at(11), 4);
}

TEST(RatingCurves, PassThroughTheirPoints)
{
    for (const Curve *curve : {&ratingCountCurve, &ratingMomentumCurve, &starCurve, &ageCurve}) {
        for (const CurvePoint &point : curve->points)
            EXPECT_EQ(curve->at(point.x), point.y) << "at " << point.x;
        EXPECT_EQ(curve->points.back().y, 100);
    }
    EXPECT_EQ(ratingCountCurve.points.size(), 9U);
    EXPECT_EQ(ratingMomentumCurve.points.size(), 8U);
    EXPECT_EQ(starCurve.points.size(), 7U);
    EXPECT_EQ(ageCurve.points.size(), 8U);
}

TEST(RatingCurves, ReadCountsByLogarithmAndStarsAndAgesLinearly)
{
    EXPECT_NEAR(ratingCountCurve.at(100), 5 + 10 * std::log(2.0) / std::log(4.0), 1e-12);
    EXPECT_NEAR(ratingMomentumCurve.at(100), 15 + 15 * std::log(2.0) / std::log(4.0), 1e-12);
    EXPECT_NEAR(starCurve.at(3.25), 27.5, 1e-12);
    EXPECT_NEAR(ageCurve.at(6.5), 77.5, 1e-12);
}

} // namespace
} // namespace veltrix
