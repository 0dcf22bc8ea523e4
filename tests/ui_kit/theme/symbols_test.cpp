// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/theme/symbols.h"

#include "support/json_printers.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QRegularExpression>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

/// Names of all symbols there are.
QStringList symbolNames()
{
    QStringList names = QDir(QStringLiteral(":/symbols")).entryList({QStringLiteral("*.svg")});
    for (QString &name : names)
        name.chop(4);
    return names;
}

/// Every symbol that the windows use by name.
const char *const usedSymbols[] = {"magnifyingglass",
                                   "person.2",
                                   "chevron.up",
                                   "chevron.down",
                                   "chevron.left",
                                   "chevron.right",
                                   "checkmark",
                                   "app.fill",
                                   "app.dashed",
                                   "trash",
                                   "plus",
                                   "globe",
                                   "gearshape",
                                   "folder",
                                   "arrow.clockwise",
                                   "wifi.exclamationmark",
                                   "plus.circle",
                                   "checkmark.circle.fill",
                                   "xmark.circle.fill",
                                   "exclamationmark.triangle",
                                   "trophy.fill",
                                   "star.fill",
                                   "square.grid.2x2",
                                   "chart.xyaxis.line",
                                   "lightbulb",
                                   "info.circle",
                                   "arrow.up.right.square",
                                   "person.2.fill",
                                   "key.fill",
                                   "clock.arrow.circlepath",
                                   "photo",
                                   "ellipsis",
                                   "square.and.arrow.up",
                                   "square.and.arrow.down",
                                   "doc.on.doc",
                                   "envelope",
                                   "hand.raised",
                                   "doc.text"};

int inkedPixels(const QImage &image)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            count += qAlpha(image.pixel(x, y)) > 127 ? 1 : 0;
    return count;
}

TEST(Symbols, EveryOneInUseIsThereAndDrawsSomething)
{
    for (const char *name : usedSymbols) {
        const QString symbol = QString::fromLatin1(name);
        EXPECT_TRUE(symbolNames().contains(symbol)) << name;
        const QPixmap pixmap = symbolPixmap(symbol, 16, Qt::red, 1);
        ASSERT_FALSE(pixmap.isNull()) << name;
        EXPECT_GT(inkedPixels(pixmap.toImage()), 8) << name;
    }
}

TEST(Symbols, AreDrawnOnOneGridWithOneStroke)
{
    for (const QString &name : symbolNames()) {
        QFile file(QStringLiteral(":/symbols/%1.svg").arg(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QString svg = QString::fromUtf8(file.readAll());
        EXPECT_TRUE(svg.contains(QStringLiteral("viewBox=\"0 0 16 16\""))) << name.toStdString();
        EXPECT_TRUE(svg.contains(QStringLiteral("stroke-width=\"1.6\""))) << name.toStdString();
        static const QRegularExpression color(QStringLiteral("#[0-9a-fA-F]{3,6}"));
        auto match = color.globalMatch(svg);
        while (match.hasNext())
            EXPECT_EQ(match.next().captured(), QStringLiteral("#000")) << name.toStdString();
    }
}

TEST(Symbols, TakeTheColourThatIsAsked)
{
    const QImage image =
        symbolPixmap(QStringLiteral("app.fill"), 16, QColor(0x12, 0x34, 0x56), 1).toImage();
    EXPECT_EQ(image.pixelColor(8, 8), QColor(0x12, 0x34, 0x56));
}

TEST(Symbols, AreRenderedForTheScaleOfTheScreen)
{
    for (const double scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        const QPixmap pixmap = symbolPixmap(QStringLiteral("plus"), 16, Qt::black, scale);
        EXPECT_EQ(pixmap.width(), int(std::ceil(16 * scale))) << scale;
        EXPECT_NEAR(pixmap.deviceIndependentSize().width(), 16, 1e-9) << scale;
    }
}

TEST(Symbols, AnUnknownNameGivesNothing)
{
    EXPECT_TRUE(symbolPixmap(QStringLiteral("no.such.symbol"), 16, Qt::black, 1).isNull());
}

TEST(SymbolIcon, HasEverySizeThatAMenuAsksFor)
{
    const QIcon icon = symbolIcon(QStringLiteral("trash"));
    const QPixmap pixmap = icon.pixmap(QSize(16, 16), 2.0);
    EXPECT_EQ(pixmap.width(), 32);
    EXPECT_GT(inkedPixels(pixmap.toImage()), 40);
}

} // namespace
} // namespace veltrix
