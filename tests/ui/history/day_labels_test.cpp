// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/day_labels.h"

#include "ui/history/rank_pictures.h"

#include <rapidcheck/gtest.h>

namespace veltrix
{

namespace
{

const QLocale english(QLocale::English, QLocale::UnitedStates);

QFontMetricsF metricsOf(double pixels)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(qRound(pixels));
    return QFontMetricsF(font);
}

/// The labels of a chart whose plot leaves 40 pixels of `width` to the ranks.
std::vector<DayLabel> labelsIn(qreal width, const std::vector<RankingTimeline::Day> &days,
                               double pixels = 12, const QLocale &locale = english)
{
    const RankPlot plot{QRectF(40, 0, width - 40, 200), days.size(), 30};
    return dayLabels(days, plot, {0, width, pixels}, metricsOf(pixels), locale);
}

/// The labels of so many days up to 2026-11-21.
QString labelsOf(size_t count, qreal width, const QLocale &locale = english)
{
    constexpr std::int64_t lastDay = firstPictureDay + 13;
    const auto days = generatedDays(count, 1, 2, lastDay - std::int64_t(count) + 1);
    QStringList texts;
    for (const DayLabel &label : labelsIn(width, days, 12, locale))
        texts.append(label.text);
    return texts.join(QStringLiteral(" | "));
}

} // namespace

TEST(DayLabels, AreThoseOfEveryDayWhereTheyFit)
{
    EXPECT_EQ(labelsOf(3, 640), text("Nov 19 | Nov 20 | Nov 21"));
    EXPECT_EQ(labelsOf(1, 300), text("Nov 21"));
}

TEST(DayLabels, StandAtStepsOfTwoDaysAndWeeksFromTheFirstDayOn)
{
    EXPECT_EQ(labelsOf(14, 640),
              text("Nov 8 | Nov 10 | Nov 12 | Nov 14 | Nov 16 | Nov 18 | Nov 20"));
    EXPECT_EQ(labelsOf(30, 640), text("Oct 23 | Oct 30 | Nov 6 | Nov 13 | Nov 20"));
    EXPECT_EQ(labelsOf(90, 640), text("Aug 24 | Sep 7 | Sep 21 | Oct 5 | Oct 19 | Nov 2 | Nov 16"));
}

TEST(DayLabels, OfLongerRangesStandAtMonthsQuartersAndYears)
{
    EXPECT_EQ(labelsOf(365, 900), text("Dec 1 | Jan 1 | Feb 1 | Mar 1 | Apr 1 | May 1 | Jun 1 | "
                                       "Jul 1 | Aug 1 | Sep 1 | Oct 1 | Nov 1"));
    EXPECT_EQ(labelsOf(365, 480), text("Jan 1 | Mar 1 | May 1 | Jul 1 | Sep 1 | Nov 1"));
    EXPECT_EQ(labelsOf(3650, 640),
              text("2017 | 2018 | 2019 | 2020 | 2021 | 2022 | 2023 | 2024 | 2025 | 2026"));
    EXPECT_EQ(labelsOf(3650, 300), text("2018 | 2020 | 2022 | 2024 | 2026"));
}

TEST(DayLabels, NameEachYearOnceWhereThereIsMoreThanOne)
{
    EXPECT_EQ(labelsOf(731, 640),
              text("Jan 1, 2025 | Apr 1 | Jul 1 | Oct 1 | Jan 1, 2026 | Apr 1 | "
                   "Jul 1 | Oct 1"));
}

TEST(DayLabels, OfTheLastDayIsWhole)
{
    const auto days = generatedDays(57, 1, 2, firstPictureDay + 13 - 56);
    const std::vector<DayLabel> labels = labelsIn(640, days);
    EXPECT_EQ(labels.back().text, text("Nov 21"));
    EXPECT_EQ(labels.back().day, 56U);
    EXPECT_GE(labels.back().width, metricsOf(12).horizontalAdvance(text("Nov 21")));
    EXPECT_LE(labels.back().right(), 640);
}

TEST(DayLabels, AreTheEndsWhereNoStepGivesTwo)
{
    EXPECT_EQ(labelsOf(40, 160), text("Oct 13 | Nov 21"));
}

TEST(DayLabels, AreLeftOutWhereOneWouldBeCut)
{
    EXPECT_EQ(labelsOf(90, 60), text("Aug 24"));
    EXPECT_EQ(labelsOf(90, 41), QString());
    EXPECT_EQ(labelsOf(0, 640), QString());
}

TEST(DayLabels, SpeakTheUsersLanguageInPlainDigits)
{
    EXPECT_EQ(labelsOf(2, 640, QLocale(QLocale::German)), text("Nov. 20 | Nov. 21"));
    const QString arabic = labelsOf(3650, 640, QLocale(QLocale::Arabic, QLocale::Egypt));
    EXPECT_TRUE(arabic.contains(text("2026"))) << arabic.toStdString();
}

RC_GTEST_PROP(DayLabels, AreWholeApartAndUnderTheirDaysAtEveryLength, ())
{
    const auto count = *rc::gen::inRange<size_t>(1, 3654);
    const auto first = *rc::gen::inRange<std::int64_t>(0, 20'000);
    const auto width = *rc::gen::inRange(300, 1601);
    const auto pixels = *rc::gen::element(12, 18, 24);
    const auto days = generatedDays(count, 1, 2, first);
    const std::vector<DayLabel> labels = labelsIn(width, days, pixels);
    const RankPlot plot{QRectF(40, 0, width - 40, 200), count, 30};
    RC_ASSERT(!labels.empty());
    RC_ASSERT(labels.size() >= 2 || count == 1 || width < 20 * pixels);
    for (size_t i = 0; i < labels.size(); ++i) {
        const DayLabel &label = labels[i];
        RC_ASSERT(label.left >= 0 && label.right() <= width);
        RC_ASSERT(label.width >= metricsOf(pixels).horizontalAdvance(label.text));
        RC_ASSERT(label.left <= plot.x(label.day) && plot.x(label.day) <= label.right());
        // The macro takes an expression apart and evaluates all of it, but for what is in brackets.
        RC_ASSERT((i == 0 || labels[i - 1].right() + pixels <= label.left));
        const QString date =
            english.toString(calendarDay(days[label.day].date), QStringLiteral("MMM d, yyyy"));
        RC_ASSERT(date.startsWith(label.text) || date.endsWith(label.text));
    }
}

} // namespace veltrix
