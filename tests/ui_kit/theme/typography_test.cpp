// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/theme/typography.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

QFont bodyOf(int pixels)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(pixels);
    return font;
}

TEST(Typography, SizesAreProportionsOfTheBodyFont)
{
    const QFont body = bodyOf(13);
    EXPECT_EQ(fontFor(TextStyle::Title, body).pixelSize(), 17);
    EXPECT_EQ(fontFor(TextStyle::Body, body).pixelSize(), 13);
    EXPECT_EQ(fontFor(TextStyle::Secondary, body).pixelSize(), 12);
    EXPECT_EQ(fontFor(TextStyle::Figure, body).pixelSize(), 22);
    const QFont large = bodyOf(26);
    EXPECT_EQ(fontFor(TextStyle::Title, large).pixelSize(), 34);
    EXPECT_EQ(fontFor(TextStyle::Secondary, large).pixelSize(), 24);
}

TEST(Typography, RowsAndControlsGrowWithTheFont)
{
    EXPECT_EQ(controlHeight(bodyOf(13)), 30);
    EXPECT_EQ(twoLineRowHeight(bodyOf(13)), 52);
    EXPECT_EQ(oneLineRowHeight(bodyOf(13)), 36);
    EXPECT_EQ(twoLineRowHeight(bodyOf(26)), 104);
}

TEST(BodyFont, IsNeverSmallerThanThirteenPixels)
{
    EXPECT_EQ(QFontInfo(bodyFont(bodyOf(9))).pixelSize(), 13);
    EXPECT_EQ(QFontInfo(bodyFont(bodyOf(16))).pixelSize(), 16);
}

TEST(BodyFont, KeepsTheFamilyThatTheDesktopNames)
{
    EXPECT_EQ(bodyFont(bodyOf(13)).families().value(0), QStringLiteral("DejaVu Sans"));
}

TEST(BodyFont, ReplacesTheAliasWhereAGoodFaceIsInstalled)
{
    if (!QFontDatabase::families().contains(QStringLiteral("Inter")))
        GTEST_SKIP() << "the font Inter is not installed";
    EXPECT_EQ(bodyFont(QFont(QStringLiteral("Sans Serif"))).families().value(0),
              QStringLiteral("Inter"));
}

TEST(TabularText, GivesEveryDigitTheSameWidth)
{
    const QFontMetricsF metrics(fontFor(TextStyle::BodySemibold, bodyOf(13)));
    EXPECT_DOUBLE_EQ(tabularWidth(metrics, QStringLiteral("111")),
                     tabularWidth(metrics, QStringLiteral("888")));
    EXPECT_GT(tabularWidth(metrics, QStringLiteral("# 1")),
              tabularWidth(metrics, QStringLiteral("1")));
}

TEST(TabularText, PaintsSomethingForEveryCharacter)
{
    QImage image(80, 30, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setFont(bodyOf(20));
    drawTabularText(painter, {2, 24}, QStringLiteral("81"));
    painter.end();
    const auto inked = [&](int left, int right) {
        for (int x = left; x < right; ++x)
            for (int y = 0; y < image.height(); ++y)
                if (image.pixelColor(x, y).lightness() < 128)
                    return true;
        return false;
    };
    const int cell = int(tabularWidth(QFontMetricsF(bodyOf(20)), QStringLiteral("8")));
    EXPECT_TRUE(inked(2, 2 + cell));
    EXPECT_TRUE(inked(2 + cell, 2 + 2 * cell));
    EXPECT_FALSE(inked(2 + 2 * cell + 3, 80));
}

} // namespace
} // namespace veltrix
