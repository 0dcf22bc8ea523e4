// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/competitor_overview.h"

#include "ui/support/research_world.h"

namespace veltrix
{
namespace
{

class CompetitorOverviewTest : public testing::Test
{
protected:
    CompetitorOverview overviewOf(const std::optional<QUuid> &appId)
    {
        return CompetitorOverview::of(*world.store, appId);
    }

    ResearchWorld world;
};

TEST_F(CompetitorOverviewTest, HasTheCompetitorsOfTheAppAndCountsThem)
{
    const CompetitorOverview overview = overviewOf(world.appId());
    EXPECT_EQ(overview.competitors, world.store->competitorsOfApp(world.appId()));
    EXPECT_EQ(overview.count, text("5 tracked"));
}

TEST_F(CompetitorOverviewTest, AnAppWithoutCompetitorsSaysWhatToDo)
{
    const CompetitorOverview overview = overviewOf(world.store->apps()[1].id);
    EXPECT_EQ(overview.empty.title, text("No competitors yet"));
    EXPECT_EQ(overview.empty.text, text("Search for an app above, then track it to add it here."));
    EXPECT_EQ(overview.count, QString());
}

TEST_F(CompetitorOverviewTest, WithoutAnAppItSaysWhatTheWorkspaceIsFor)
{
    const QString title = text("Research any app and discover keyword opportunities");
    EXPECT_EQ(overviewOf(std::nullopt).empty.title, title);
    const QUuid gone = world.store->apps()[1].id;
    world.store->removeApp(gone);
    EXPECT_EQ(overviewOf(gone).empty.title, title);
}

} // namespace
} // namespace veltrix
