// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/dashboard_placeholder.h"

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

using WayOn = DashboardPlaceholder::WayOn;

TEST(DashboardPlaceholder, StandsOnlyWhereThereIsNoKeywordToShow)
{
    EXPECT_FALSE(dashboardPlaceholder({.hasApp = true, .tracked = 3, .shown = 1}));
    EXPECT_TRUE(dashboardPlaceholder({.hasApp = true, .tracked = 3, .shown = 0}));
}

TEST(DashboardPlaceholder, ItsButtonLeadsToWhatIsMissing)
{
    const auto wayOn = [](const DashboardState &state) {
        return dashboardPlaceholder(state)->wayOn;
    };
    EXPECT_EQ(wayOn({}), WayOn::AddApp);
    EXPECT_EQ(wayOn({.hasApp = true}), WayOn::AddKeywords);
    EXPECT_EQ(wayOn({.hasApp = true, .tracked = 3}), WayOn::ShowAllKeywords);
}

TEST(DashboardPlaceholder, DataThatIsNotLoadedIsNotTakenForNone)
{
    const auto placeholder = dashboardPlaceholder({.isStateRead = false});
    EXPECT_EQ(placeholder->content.title, QStringLiteral("Saved data not loaded"));
    EXPECT_EQ(placeholder->wayOn, WayOn::None);
    EXPECT_EQ(placeholder->content.action, QString());
}

TEST(DashboardPlaceholder, EveryWayOnHasAButton)
{
    for (const DashboardState &state :
         {DashboardState{}, {.hasApp = true}, {.hasApp = true, .tracked = 1}}) {
        const auto placeholder = dashboardPlaceholder(state);
        EXPECT_NE(placeholder->content.action, QString());
        EXPECT_NE(placeholder->content.title, QString());
        EXPECT_NE(placeholder->content.text, QString());
    }
}

} // namespace
} // namespace veltrix
