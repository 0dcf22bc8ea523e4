// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/above_you_sheet.h"

#include "ui/competitors/above_you_table.h"
#include "ui/support/rival_test.h"

namespace veltrix
{
namespace
{

class AboveYouSheetTest : public RivalTest
{
protected:
    void open(const char *keyword, const char *country = "US")
    {
        Q_EMIT window->dashboard().aboveYouRequested(rival().row(keyword, country));
        settleUntil([this] {
            return isShown("aboveYouNote") ||
                   emptyTitle("aboveYouMessage") != text("Reading the kept ranks…");
        });
    }
    AboveYouTable *above() { return find<AboveYouTable>("aboveYou"); }
    AboveYouModel *rows() { return static_cast<AboveYouModel *>(above()->model()); }
    void choose(int row) { above()->setCurrentIndex(rows()->index(row, 0)); }
    const AppAbove &app(int row) { return rows()->entryAt(row).app; }
    QString label(const char *name) { return find<QLabel>(name)->text(); }
};

TEST_F(AboveYouSheetTest, TheMenuOfARowLeadsToIt)
{
    rival().track();
    rival().measure("film camera filter");
    openWindow();
    selectKeywords({text("film camera filter")});
    Q_EMIT table().menuRequested(window->mapToGlobal(QPoint(400, 300)));
    UiTest::choose("rowMenu", text("Who is above you"));
    EXPECT_TRUE(isShown("aboveYouSheet"));
}

TEST_F(AboveYouSheetTest, ListsWhoIsAboveWithWhatBecameOfThemInAWeek)
{
    rival().playThreeMonths();
    rivals().saved->keyword = text("photo editor");
    rivals().saved->saved.results = appStore().resultsOf.value(text("photo editor/US"));
    openWindow();
    open("photo editor");
    EXPECT_TRUE(shows(topSheet(), text("“photo editor” · United States · Your rank 37 on Nov 22")));
    ASSERT_EQ(rows()->rowCount(), 11) << "ten leaders and the competitor below them";
    EXPECT_EQ(app(10).rank, 24);
    EXPECT_EQ(app(10).shownName(), text("Foxglove Film Camera"));
    EXPECT_EQ(app(10).weekAgoText(), text("# 29"));
    EXPECT_EQ(app(10).movementText(), text("↑ 5"));
    EXPECT_EQ(app(10).sinceText(world->clock->now()), text("Nov 15 or earlier"));
    EXPECT_TRUE(app(10).isTracked);
    EXPECT_EQ(label("aboveYouNote"),
              text("Ranks below ten are kept of your tracked competitors alone."));
}

TEST_F(AboveYouSheetTest, WhoeverIsFirstHasNobodyAbove)
{
    rival().playThreeMonths();
    openWindow();
    open("light leak effect");
    EXPECT_EQ(label("aboveYouEmpty"), text("No app is above yours."));
    EXPECT_FALSE(isShown("aboveYou"));
}

TEST_F(AboveYouSheetTest, BeforeTheFirstMeasurementNothingIsKept)
{
    open("photo editor");
    EXPECT_EQ(label("aboveYouEmpty"),
              text("Ranks of others are kept from the next measurement on."));
}

TEST_F(AboveYouSheetTest, AnAppIsLookedUpAndTrackedAsACompetitor)
{
    rival().measure("photo editor");
    open("photo editor");
    EXPECT_FALSE(find<Button>("aboveYouTrack")->isEnabled());
    choose(1);
    const std::int64_t chosen = app(1).trackId;
    click("aboveYouTrack");
    settleUntil([this] { return app(1).isTracked; });
    EXPECT_EQ(store().competitorsOfApp(appId()).constLast().trackId, chosen);
    EXPECT_TRUE(store().competitorsOfApp(appId()).constLast().iconURL);
    EXPECT_FALSE(find<Button>("aboveYouTrack")->isEnabled());
    EXPECT_EQ(label("aboveYouTracking"), QString());
}

TEST_F(AboveYouSheetTest, AnAppThatCannotBeLookedUpIsSaidNotToBeTracked)
{
    rival().measure("photo editor");
    open("photo editor");
    appStore().fails = [](const QString &) {
        return true;
    };
    choose(0);
    click("aboveYouTrack");
    settle();
    EXPECT_EQ(label("aboveYouTracking"),
              text("Collagely: Photo Grid couldn't be tracked. The network is down."));
    EXPECT_TRUE(find<Button>("aboveYouTrack")->isEnabled());
    EXPECT_TRUE(store().competitorsOfApp(appId()).isEmpty());
}

TEST_F(AboveYouSheetTest, EnterOpensTheDetailsOfTheApp)
{
    rival().measure("photo editor");
    open("photo editor");
    above()->setFocus(Qt::TabFocusReason);
    press(Qt::Key_Return);
    EXPECT_EQ(topSheet()->objectName(), text("appDetailsSheet"));
    press(Qt::Key_Escape);
    EXPECT_EQ(topSheet()->objectName(), text("aboveYouSheet"));
}

TEST_F(AboveYouSheetTest, ACheckThatIsKeptWhileItIsOpenIsShown)
{
    rival().track();
    rival().measure("photo editor");
    open("photo editor");
    EXPECT_EQ(rows()->rowCount(), 11);
    rival().goTo(8, 22);
    rival().rank({"photo editor", "US", 3, 1});
    rival().measure("photo editor");
    settleUntil([this] { return rows()->rowCount() == 2; });
    EXPECT_EQ(app(0).shownName(), text("Foxglove Camera"));
}

TEST_F(AboveYouSheetTest, AHistoryThatCannotBeReadIsSaid)
{
    rival().playThreeMonths();
    window.reset();
    rival().damageHistory();
    openWindow();
    open("photo editor");
    EXPECT_EQ(emptyTitle("aboveYouMessage"), text("The kept ranks can't be read"));
    EXPECT_FALSE(emptyText("aboveYouMessage").isEmpty());
}

TEST_F(AboveYouSheetTest, GoesWithItsKeyword)
{
    rival().measure("photo editor");
    open("photo editor");
    store().removeKeyword(rival().idOf("photo editor"));
    settle();
    EXPECT_FALSE(isShown("aboveYouSheet"));
}

} // namespace
} // namespace veltrix
