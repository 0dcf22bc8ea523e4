// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/open_research.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

class OpenResearchTest : public testing::Test
{
protected:
    static QString text(const char *words) { return QString::fromUtf8(words); }
    void openFoxglove(const char *country = "US")
    {
        open.open(201, text(country), text("Foxglove"));
    }

    OpenResearch open;
    QSignalSpy pages{&open, &OpenResearch::pageChanged};
    QUuid app = QUuid::createUuid();
};

TEST_F(OpenResearchTest, NothingIsOpenAtFirst)
{
    EXPECT_EQ(open.page(), nullptr);
    EXPECT_EQ(open.pageBelow(), nullptr);
    EXPECT_EQ(open.shownCountry(), text("US"));
    open.close();
    open.back();
    EXPECT_EQ(pages.size(), 0);
}

TEST_F(OpenResearchTest, AnotherAppLeavesThePagesOpen)
{
    QSignalSpy apps(&open, &OpenResearch::appChanged);
    openFoxglove();
    const OpenResearch::Page before = *open.page();
    open.setApp(app);
    EXPECT_EQ(*open.page(), before);
    EXPECT_EQ(pages.size(), 1);
    EXPECT_EQ(apps.size(), 1);
    open.setApp(app);
    EXPECT_EQ(apps.size(), 1) << "the same app changes nothing";
}

TEST_F(OpenResearchTest, BackLeadsToThePageThatAnotherWasOpenedFrom)
{
    openFoxglove();
    open.open(202, text("US"), text("Grainy"));
    open.open(203, text("US"), text("Dovetail"));
    EXPECT_EQ(open.pageBelow()->about.name, text("Grainy"));
    open.back();
    EXPECT_EQ(open.page()->about.trackId, 202);
    open.back();
    EXPECT_EQ(open.page()->about.trackId, 201);
    EXPECT_EQ(open.pageBelow(), nullptr);
    open.back();
    EXPECT_EQ(open.page(), nullptr);
    EXPECT_EQ(pages.size(), 6);
}

TEST_F(OpenResearchTest, TheSameAppOpenedAgainIsAPageOfItsOwn)
{
    openFoxglove();
    openFoxglove();
    EXPECT_NE(open.page()->id, open.pageBelow()->id);
    open.setName(open.pageBelow()->id, text("Foxglove Film Camera"));
    EXPECT_EQ(open.page()->about.name, text("Foxglove"));
    EXPECT_EQ(open.pageBelow()->about.name, text("Foxglove Film Camera"));
}

TEST_F(OpenResearchTest, ClosingClosesAllPagesAtOnce)
{
    openFoxglove();
    open.open(202, text("US"), text("Grainy"));
    open.close();
    EXPECT_EQ(open.page(), nullptr);
    EXPECT_EQ(pages.size(), 3);
}

TEST_F(OpenResearchTest, OfVeryManyPagesTheFirstAreForgotten)
{
    for (int id = 1; id <= 50; ++id)
        open.open(id, text("US"), QString());
    EXPECT_EQ(open.pages().size(), OpenResearch::mostPages);
    EXPECT_EQ(open.page()->about.trackId, 50);
    EXPECT_EQ(open.pages().constFirst().about.trackId, 31);
}

TEST_F(OpenResearchTest, AnotherStorefrontLeavesTheOpenPageWhereItIs)
{
    openFoxglove("DE");
    open.setCountry(text("FR"));
    EXPECT_EQ(open.shownCountry(), text("DE"));
    EXPECT_EQ(pages.size(), 1);
    open.close();
    EXPECT_EQ(open.shownCountry(), text("FR"));
}

TEST_F(OpenResearchTest, AStorefrontThatIsPickedMovesThePageOnTopAlone)
{
    openFoxglove();
    open.open(202, text("US"), text("Grainy"));
    open.pickCountry(text("GB"));
    EXPECT_EQ(open.page()->about, (ResearchSelection{202, text("GB"), text("Grainy")}));
    EXPECT_EQ(open.pageBelow()->about.country, text("US"));
    EXPECT_EQ(open.country(), text("GB"));
    EXPECT_EQ(pages.size(), 3);
    open.pickCountry(text("GB"));
    EXPECT_EQ(pages.size(), 3) << "it is there already";
}

TEST_F(OpenResearchTest, APageThatMovesIsCalledAsItTurnedOutToBe)
{
    openFoxglove();
    open.setName(open.page()->id, text("Foxglove Film Camera"));
    open.pickCountry(text("GB"));
    EXPECT_EQ(open.page()->about.name, text("Foxglove Film Camera"));
}

} // namespace
} // namespace veltrix
