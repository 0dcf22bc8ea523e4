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
    EXPECT_EQ(open.page(), std::nullopt);
    EXPECT_EQ(open.shownCountry(), text("US"));
    open.close();
    EXPECT_EQ(pages.size(), 0);
}

TEST_F(OpenResearchTest, APageIsForTheUsersApp)
{
    open.setApp(app);
    openFoxglove();
    EXPECT_EQ(open.page(), (ResearchSelection{201, text("US"), app, text("Foxglove")}));
    EXPECT_EQ(pages.size(), 1);
}

TEST_F(OpenResearchTest, AnotherAppMakesTheOpenPageAnew)
{
    openFoxglove();
    open.setApp(app);
    EXPECT_EQ(open.page()->appId, app);
    EXPECT_EQ(pages.size(), 2);
    open.setApp(app);
    EXPECT_EQ(pages.size(), 2) << "the same app changes nothing";
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

TEST_F(OpenResearchTest, AStorefrontThatIsPickedMovesTheOpenPage)
{
    openFoxglove();
    open.pickCountry(text("GB"));
    EXPECT_EQ(open.page()->country, text("GB"));
    EXPECT_EQ(open.country(), text("GB"));
    EXPECT_EQ(pages.size(), 2);
}

TEST_F(OpenResearchTest, APageThatMovesIsCalledAsItTurnedOutToBe)
{
    openFoxglove();
    open.setName(text("Foxglove Film Camera"));
    open.pickCountry(text("GB"));
    EXPECT_EQ(open.page()->name, text("Foxglove Film Camera"));
}

} // namespace
} // namespace veltrix
