// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/theme/chosen_color_scheme.h"

#include "ui/support/ui_world.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

TEST(ChosenColorScheme, FollowsTheDesktopUntilTheUserChooses)
{
    FakeColorScheme desktop;
    ChosenColorScheme chosen(desktop, ThemeChoice::System);
    const QSignalSpy changed(&chosen, &ColorSchemeSource::colorSchemeChanged);
    desktop.set(ColorScheme::Dark);
    EXPECT_EQ(chosen.colorScheme(), ColorScheme::Dark);
    EXPECT_EQ(changed.size(), 1);
    chosen.setChoice(ThemeChoice::Light);
    EXPECT_EQ(chosen.colorScheme(), ColorScheme::Light);
    EXPECT_EQ(changed.size(), 2);
}

TEST(ChosenColorScheme, StaysLightWhileTheDesktopChanges)
{
    FakeColorScheme desktop;
    const ChosenColorScheme chosen(desktop, ThemeChoice::Light);
    const QSignalSpy changed(&chosen, &ColorSchemeSource::colorSchemeChanged);
    desktop.set(ColorScheme::Dark);
    desktop.set(ColorScheme::Light);
    desktop.set(ColorScheme::Dark);
    EXPECT_EQ(chosen.colorScheme(), ColorScheme::Light);
    EXPECT_EQ(changed.size(), 0);
}

TEST(ChosenColorScheme, FindsTheDesktopAsItIsNowWhenTheChoiceEnds)
{
    FakeColorScheme desktop;
    ChosenColorScheme chosen(desktop, ThemeChoice::Light);
    desktop.set(ColorScheme::Dark);
    const QSignalSpy changed(&chosen, &ColorSchemeSource::colorSchemeChanged);
    chosen.setChoice(ThemeChoice::System);
    EXPECT_EQ(chosen.colorScheme(), ColorScheme::Dark);
    EXPECT_EQ(changed.size(), 1);
    chosen.setChoice(ThemeChoice::Dark);
    EXPECT_EQ(changed.size(), 1) << "nothing to repaint";
}

} // namespace
} // namespace veltrix
