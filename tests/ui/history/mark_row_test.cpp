// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/mark_row.h"

#include "ui/history/compared_pictures.h"

#include <rapidcheck/gtest.h>

namespace veltrix
{
namespace
{

QFontMetricsF metricsOf(int pixels)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(pixels);
    return QFontMetricsF(font);
}

std::vector<PlacedMark> placedIn(qreal width, size_t days, const std::vector<DayMark> &marks,
                                 int pixels = 12)
{
    const QFontMetricsF metrics = metricsOf(pixels);
    const RankPlot plot{QRectF(40, 0, width - 40, 200), days, 30};
    const QRectF row(0, 202, width, markRowHeight(metrics));
    return placedMarks(marks, generatedDays(days, 1, 2), plot, row, metrics);
}

std::vector<DayMark> marksOn(std::initializer_list<std::int64_t> days)
{
    QList<AppNote> notes;
    for (const std::int64_t day : days)
        notes.append(noteOn(firstPictureDay + day, "New subtitle"));
    return marksOfNotes(notes, ownLine);
}

TEST(MarkRow, MarksStandUnderTheirDaysWithTheirTexts)
{
    const auto placed = placedIn(800, 90, marksOn({30, 60}));
    ASSERT_EQ(placed.size(), 2U);
    for (const PlacedMark &mark : placed) {
        EXPECT_EQ(mark.text, text("New subtitle"));
        EXPECT_EQ(mark.symbol, text("flag"));
        EXPECT_NEAR(mark.rect.center().x(), mark.days.front(), 1);
    }
}

TEST(MarkRow, MarksThatWouldTouchKeepTheirSymbolOnly)
{
    const auto placed = placedIn(800, 90, marksOn({30, 34, 70}));
    ASSERT_EQ(placed.size(), 3U);
    EXPECT_EQ(placed[0].text, QString());
    EXPECT_EQ(placed[1].text, QString());
    EXPECT_EQ(placed[2].text, text("New subtitle"));
}

TEST(MarkRow, WhatTouchesEvenAsASymbolIsOneMark)
{
    const auto placed = placedIn(800, 365, marksOn({100, 101, 102, 300}));
    ASSERT_EQ(placed.size(), 2U);
    EXPECT_EQ(placed[0].marks.size(), 3U);
    EXPECT_EQ(placed[0].days.size(), 3U);
}

TEST(MarkRow, TwoMarksOfADayShareOneWithTheirNumber)
{
    auto marks = marksOn({30, 30});
    const auto placed = placedIn(800, 90, marks);
    ASSERT_EQ(placed.size(), 1U);
    EXPECT_EQ(placed[0].text, text("New subtitle +1"));
}

TEST(MarkRow, AMarkAtTheEndStaysInsideTheRow)
{
    const auto placed = placedIn(800, 90, marksOn({89}));
    ASSERT_EQ(placed.size(), 1U);
    EXPECT_LE(placed[0].rect.right(), 800);
    EXPECT_EQ(placed[0].text, text("New subtitle"));
}

RC_GTEST_PROP(MarkRow, KeepsAllMarksInsideAndApart, ())
{
    const auto days = *rc::gen::inRange<size_t>(1, 3654);
    const auto width = *rc::gen::inRange(300, 1600);
    const auto pixels = *rc::gen::element(12, 18, 24);
    auto dates = *rc::gen::container<std::vector<std::int64_t>>(
        rc::gen::inRange<std::int64_t>(0, std::int64_t(days)));
    std::ranges::sort(dates);
    QList<AppNote> notes;
    for (const std::int64_t day : dates)
        notes.append(noteOn(firstPictureDay + day, "New subtitle and more"));
    const auto placed = placedIn(width, days, marksOfNotes(notes, ownLine), pixels);
    size_t kept = 0;
    for (size_t i = 0; i < placed.size(); ++i) {
        kept += placed[i].marks.size();
        RC_ASSERT(placed[i].rect.left() >= 0 && placed[i].rect.right() <= width);
        // The macro takes an expression apart and evaluates all of it, but for what is in brackets.
        RC_ASSERT((i == 0 || placed[i - 1].rect.right() < placed[i].rect.left()));
        if (!placed[i].text.isEmpty())
            RC_ASSERT(metricsOf(pixels).horizontalAdvance(placed[i].text) <=
                      placed[i].textRect().width());
    }
    RC_ASSERT(kept == dates.size());
}

} // namespace
} // namespace veltrix
