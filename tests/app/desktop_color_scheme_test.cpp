// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/desktop_color_scheme.h"

#include <QApplication>
#include <QDBusVariant>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

TEST(DesktopColorScheme, ReadsThePortalsValues)
{
    const auto scheme = [](const QVariant &value) {
        return DesktopColorScheme::schemeFromPortal(value);
    };
    EXPECT_EQ(scheme(1U), ColorScheme::Dark);
    EXPECT_EQ(scheme(2U), ColorScheme::Light);
    EXPECT_EQ(scheme(0U), std::nullopt);
    EXPECT_EQ(scheme(7U), std::nullopt);
    EXPECT_EQ(scheme(QVariant()), std::nullopt);
    const auto wrapped = QVariant::fromValue(QDBusVariant(QVariant::fromValue(QDBusVariant(1U))));
    EXPECT_EQ(scheme(wrapped), ColorScheme::Dark);
}

TEST(DesktopColorScheme, WithoutAPortalTheDesktopsPaletteDecides)
{
    const QPalette before = QApplication::palette();
    QApplication::setPalette(paletteFor(ColorScheme::Dark));
    EXPECT_EQ(DesktopColorScheme().colorScheme(), ColorScheme::Dark);
    QApplication::setPalette(paletteFor(ColorScheme::Light));
    EXPECT_EQ(DesktopColorScheme().colorScheme(), ColorScheme::Light);
    QApplication::setPalette(before);
}

} // namespace
} // namespace veltrix
