// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/day_span.h"

#include "ui/history/rank_pictures.h"

#include <rapidcheck/gtest.h>

namespace veltrix
{
namespace
{

TEST(DaySpan, BetweenTwoDaysHoldsBothInEitherOrder)
{
    EXPECT_EQ(spanBetween(20, 39, 100), (DaySpan{20, 20}));
    EXPECT_EQ(spanBetween(39, 20, 100), (DaySpan{20, 20}));
    EXPECT_EQ(spanBetween(0, 99, 100), wholeRange(100));
    EXPECT_EQ(spanBetween(90, 500, 100), (DaySpan{90, 10}));
}

TEST(DaySpan, OfTooFewDaysHoldsThoseAround)
{
    EXPECT_EQ(spanBetween(50, 50, 100), (DaySpan{47, 7}));
    EXPECT_EQ(spanBetween(0, 1, 100), (DaySpan{0, 7}));
    EXPECT_EQ(spanBetween(99, 99, 100), (DaySpan{93, 7}));
    EXPECT_EQ(spanBetween(1, 1, 3), wholeRange(3));
    EXPECT_EQ(spanBetween(0, 0, 0), DaySpan());
}

TEST(DaySpan, ZoomingKeepsTheAnchorWhereItIs)
{
    EXPECT_EQ(zoomed({0, 100}, 0.5, 50, 100), (DaySpan{25, 50}));
    EXPECT_EQ(zoomed({0, 100}, 0.5, 0, 100), (DaySpan{0, 50}));
    EXPECT_EQ(zoomed({0, 100}, 0.5, 99, 100), (DaySpan{50, 50}));
    EXPECT_EQ(zoomed({25, 50}, 2, 50, 100), wholeRange(100));
    EXPECT_EQ(zoomed({0, 8}, 2, 0, 100), (DaySpan{0, 16})) << "the range's edge stays";
}

TEST(DaySpan, EveryStepOfAZoomChangesSomethingUntilItsEnd)
{
    DaySpan shown{0, 9};
    shown = zoomed(shown, 0.97, 4, 100);
    EXPECT_EQ(shown.count, 8u);
    shown = zoomed(shown, 0.97, 4, 100);
    shown = zoomed(shown, 0.97, 4, 100);
    EXPECT_EQ(shown.count, fewestShownDays);
    shown = zoomed(shown, 1.01, 4, 100);
    EXPECT_EQ(shown.count, fewestShownDays + 1);
    EXPECT_EQ(zoomed({}, 0.5, 0, 0), DaySpan());
}

TEST(DaySpan, MovesAsFarAsTheRangeAllows)
{
    EXPECT_EQ(moved({50, 10}, -5, 100), (DaySpan{45, 10}));
    EXPECT_EQ(moved({50, 10}, -500, 100), (DaySpan{0, 10}));
    EXPECT_EQ(moved({50, 10}, 500, 100), (DaySpan{90, 10}));
}

RC_GTEST_PROP(DaySpanProperty, StaysInsideTheRangeWhateverIsDone, ())
{
    const auto total = *rc::gen::inRange<size_t>(1, 4000);
    DaySpan shown = wholeRange(total);
    const auto steps = *rc::gen::inRange(1, 30);
    for (int i = 0; i < steps; ++i) {
        const auto day = *rc::gen::inRange<size_t>(0, total);
        switch (*rc::gen::inRange(0, 4)) {
        case 0:
            shown = zoomed(shown, 0.8, day, total);
            break;
        case 1:
            shown = zoomed(shown, 1.25, day, total);
            break;
        case 2:
            shown = moved(shown, std::int64_t(day) - std::int64_t(total / 2), total);
            break;
        default:
            shown = spanBetween(day, *rc::gen::inRange<size_t>(0, total), total);
        }
        RC_ASSERT(shown.count >= std::min(fewestShownDays, total));
        RC_ASSERT(shown.first + shown.count <= total);
    }
}

RC_GTEST_PROP(DaySpanProperty, ADayUnderThePointerStaysUnderItInTheMiddleOfTheRange, ())
{
    const auto count = *rc::gen::inRange<size_t>(20, 400);
    const auto place = *rc::gen::inRange<size_t>(0, count);
    const DaySpan shown{2000, count};
    const DaySpan closer = zoomed(shown, 0.8, 2000 + place, 4000);
    RC_ASSERT(closer.contains(2000 + place));
    const double before = (double(place) + 0.5) / double(count);
    const double after = (double(2000 + place - closer.first) + 0.5) / double(closer.count);
    // A day is as near as it gets.
    RC_ASSERT(std::abs(before - after) <= 0.51 / double(closer.count));
}

TEST(SpanText, NamesTheFirstAndTheLastDayWithTheirYears)
{
    const QLocale english(QLocale::English, QLocale::UnitedStates);
    const auto days = generatedDays(60, 1, 5);
    EXPECT_EQ(spanText({days.begin(), days.begin() + 7}, english), text("Nov 8 – Nov 14, 2026"));
    EXPECT_EQ(spanText(days, english), text("Nov 8, 2026 – Jan 6, 2027"));
    EXPECT_EQ(spanText({}, english), QString());
}

} // namespace
} // namespace veltrix
