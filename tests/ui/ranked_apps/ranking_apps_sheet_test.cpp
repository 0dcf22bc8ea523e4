// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ranked_apps/ranking_apps_sheet.h"

#include "ui/listing/track_competitor_button.h"
#include "ui/support/research_test.h"
#include "ui_kit/widgets/app_row.h"

#include <QScrollArea>
#include <QScrollBar>

namespace veltrix
{
namespace
{

class RankingAppsSheetTest : public ResearchTest
{
protected:
    QWidget *openFor(const char *keyword)
    {
        Q_EMIT page().rankedAppsRequested(rivals().row(keyword));
        settle();
        window->grab();
        return topSheet();
    }
    QList<AppRow *> rows() { return topSheet()->findChildren<AppRow *>(); }
    TrackCompetitorButton *trackOf(const char *row)
    {
        return find(row)->findChild<TrackCompetitorButton *>();
    }
    QString label(const char *name) { return find<QLabel>(name)->text(); }
    void failAll()
    {
        appStore().fails = [](const QString &) {
            return true;
        };
    }
};

TEST_F(RankingAppsSheetTest, IsTitledWithTheKeywordAndTheStorefront)
{
    QWidget *sheet = openFor("collage maker");
    EXPECT_TRUE(shows(sheet, text("Top Apps “collage maker” in United States")));
}

TEST_F(RankingAppsSheetTest, AsksForAHundredResultsOfTheKeywordsStorefront)
{
    openFor("bildbearbeitung");
    EXPECT_EQ(appStore().searches, QStringList{text("bildbearbeitung/DE/100")});
}

TEST_F(RankingAppsSheetTest, ListsTwentyFiveAndThenMore)
{
    openFor("collage maker");
    EXPECT_EQ(rows().size(), 25);
    EXPECT_EQ(label("rankedAppsCount"), text("Showing 25 of 61 results"));
    click("rankedAppsMore");
    EXPECT_EQ(rows().size(), 50);
    EXPECT_EQ(find<Button>("rankedAppsMore")->text(), text("View more (11)"));
    click("rankedAppsMore");
    EXPECT_EQ(rows().size(), 61);
    EXPECT_FALSE(isShown("rankedAppsMore"));
}

TEST_F(RankingAppsSheetTest, ARefreshChangesRowsWhereTheyStand)
{
    appStore().holds = true;
    openFor("collage maker");
    EXPECT_TRUE(label("rankedAppsSaved").endsWith(text(" · Refreshing…")));
    const auto before = rows();
    auto *scroll = find<QScrollArea>("rankedAppsScroll")->verticalScrollBar();
    scroll->setValue(120);
    before[4]->setFocus();
    appStore().resultsOf.insert(text("collage maker"), rankedWith(1, 60));
    appStore().release();
    settle();
    // The call that was under way had its answer already; a second one brings the new one.
    appStore().holds = false;
    EXPECT_EQ(rows(), before);
    EXPECT_EQ(scroll->value(), 120);
    EXPECT_TRUE(before[4]->hasFocus());
    EXPECT_EQ(label("rankedAppsSaved"), QString());
}

TEST_F(RankingAppsSheetTest, AFailureKeepsTheListAndOffersARetry)
{
    failAll();
    openFor("collage maker");
    EXPECT_EQ(rows().size(), 25);
    EXPECT_EQ(find<Banner>("rankedAppsFailure")->message(),
              text("Showing saved results. The network is down."));
    EXPECT_EQ(find<Button>("rankedAppsFailureAction")->text(), text("Retry refresh"));
    appStore().fails = nullptr;
    click("rankedAppsFailureAction");
    EXPECT_FALSE(isShown("rankedAppsFailure"));
    EXPECT_EQ(label("rankedAppsCount"), text("Showing 25 of 61 results"));
}

TEST_F(RankingAppsSheetTest, WithNothingSavedAFailureIsTheScreen)
{
    failAll();
    openFor("retro photo");
    EXPECT_EQ(emptyTitle("rankedAppsMessage"), text("Couldn't load apps"));
    EXPECT_EQ(emptyText("rankedAppsMessage"), text("The network is down."));
    EXPECT_EQ(find<EmptyState>("rankedAppsMessage")->content().symbol,
              text("wifi.exclamationmark"));
    appStore().fails = nullptr;
    click("rankedAppsMessageAction");
    EXPECT_EQ(rows().size(), 25);
}

TEST_F(RankingAppsSheetTest, LoadingAndNothingFoundAreSaid)
{
    appStore().holds = true;
    openFor("retro photo");
    EXPECT_EQ(emptyTitle("rankedAppsMessage"), text("Loading ranked apps…"));
    appStore().results.clear();
    press(Qt::Key_Escape);
    appStore().holds = false;
    openFor("retro photo");
    EXPECT_EQ(emptyTitle("rankedAppsMessage"), text("No apps found"));
    EXPECT_EQ(emptyText("rankedAppsMessage"),
              text("No results were returned for this keyword and storefront."));
}

TEST_F(RankingAppsSheetTest, ARowIsReadWithItsRank)
{
    openFor("collage maker");
    EXPECT_EQ(find("rankedAppRow1")->accessibleName(),
              text("View details for Collagely: Photo Grid"));
    EXPECT_EQ(find("rankedAppRow1")->accessibleDescription(), text("Rank 1, Gridworks, rated 4.9"));
}

TEST_F(RankingAppsSheetTest, AnAppIsTrackedFromItsRow)
{
    openFor("collage maker");
    const auto before = store().competitorsOfApp(appId()).size();
    EXPECT_EQ(trackOf("rankedAppRow1")->text(), text("Track competitor"));
    QTest::mouseClick(trackOf("rankedAppRow1"), Qt::LeftButton);
    EXPECT_EQ(store().competitorsOfApp(appId()).size(), before + 1);
    EXPECT_EQ(store().competitorsOfApp(appId()).constLast().name, text("Collagely: Photo Grid"));
    EXPECT_EQ(trackOf("rankedAppRow1")->text(), text("Tracking competitor"));
    EXPECT_FALSE(trackOf("rankedAppRow1")->isEnabled());
    EXPECT_EQ(topSheet()->objectName(), text("rankedAppsSheet"));
}

TEST_F(RankingAppsSheetTest, TheUsersOwnAppIsNotOffered)
{
    appStore().resultsOf.insert(text("retro photo"), {appResult(101, "Lumen Photo Editor")});
    openFor("retro photo");
    EXPECT_FALSE(trackOf("rankedAppRow1")->isVisible());
}

TEST_F(RankingAppsSheetTest, ChoosingARowOpensItsDetailsOverTheSheet)
{
    openFor("collage maker");
    QTest::mouseClick(find("rankedAppRow2"), Qt::LeftButton);
    settle();
    EXPECT_EQ(topSheet()->objectName(), text("appDetailsSheet"));
    EXPECT_EQ(appStore().lookups, QStringList{text("1002/US")});
    press(Qt::Key_Escape);
    EXPECT_EQ(topSheet()->objectName(), text("rankedAppsSheet"));
    find("rankedAppRow3")->setFocus();
    press(Qt::Key_Return);
    EXPECT_EQ(topSheet()->objectName(), text("appDetailsSheet"));
}

TEST_F(RankingAppsSheetTest, AResultWithoutAnIdHasNoDetails)
{
    ITunesAppResult nameless;
    appStore().resultsOf.insert(text("retro photo"), {nameless});
    openFor("retro photo");
    EXPECT_EQ(find("rankedAppRow1")->accessibleName(), text("View details for Unknown App"));
    QTest::mouseClick(find("rankedAppRow1"), Qt::LeftButton);
    settle();
    EXPECT_EQ(topSheet()->objectName(), text("rankedAppsSheet"));
}

TEST_F(RankingAppsSheetTest, ClosingStopsTheRefresh)
{
    appStore().holds = true;
    openFor("collage maker");
    EXPECT_EQ(appStore().inFlight, 1);
    EXPECT_EQ(find("rankedAppsClose")->accessibleName(), text("Close ranked apps"));
    click("rankedAppsClose");
    EXPECT_EQ(appStore().inFlight, 0);
    EXPECT_FALSE(Overlay::isOpenOver(window.get()));
}

} // namespace
} // namespace veltrix
