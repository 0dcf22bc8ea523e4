// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/competitor_research_detail.h"

#include "ui/competitors/competitors_view.h"
#include "ui/competitors/keyword_check_table.h"
#include "ui/listing/screenshot_strip.h"
#include "ui/listing/screenshot_viewer.h"
#include "ui/support/research_test.h"
#include "ui_kit/widgets/app_row.h"

#include <QClipboard>
#include <QHeaderView>
#include <QScrollArea>
#include <QScrollBar>

namespace veltrix
{
namespace
{

class ResearchPageTest : public ResearchTest
{
protected:
    void openPage(std::int64_t trackId = 201, const char *country = "US")
    {
        window->showWorkspace(Workspace::Competitors);
        window->competitors().openResearch(trackId, text(country), text("Foxglove Film Camera"));
        settle();
        window->grab();
    }
    QWidget *detail() { return window->competitors().research(); }
    KeywordCheckTable *checks() { return find<KeywordCheckTable>("keywordChecks"); }
    KeywordCheckModel *checkModel() { return static_cast<KeywordCheckModel *>(checks()->model()); }
    QString figure(const char *name) { return find(name)->accessibleName(); }
    QString label(const char *name) { return find<QLabel>(name)->text(); }
    void clickRow(int row)
    {
        QTest::mouseClick(checks()->viewport(), Qt::LeftButton, {},
                          checks()->visualRect(checkModel()->index(row, 1)).center());
    }
};

TEST_F(ResearchPageTest, NamesTheAppWhileItLoads)
{
    appStore().holds = true;
    openPage();
    EXPECT_EQ(emptyTitle("researchMessage"), text("Loading Foxglove Film Camera…"));
}

TEST_F(ResearchPageTest, AFailureIsToldWithTwoWaysOn)
{
    appStore().fails = [](const QString &) {
        return true;
    };
    openPage();
    EXPECT_EQ(emptyTitle("researchMessage"), text("Couldn't load app"));
    EXPECT_EQ(emptyText("researchMessage"), text("The network is down."));
    appStore().fails = nullptr;
    click("researchMessageAction");
    EXPECT_TRUE(shows(detail(), text("Foxglove Film Camera")));
}

TEST_F(ResearchPageTest, BackFromAFailureLeavesThePage)
{
    appStore().fails = [](const QString &) {
        return true;
    };
    openPage();
    click("researchFailureBack");
    EXPECT_EQ(detail(), nullptr);
}

TEST_F(ResearchPageTest, AnAppThatIsNotSoldHereIsSaidSo)
{
    openPage(555);
    EXPECT_EQ(emptyText("researchMessage"), text("App unavailable in this storefront."));
}

TEST_F(ResearchPageTest, ShowsTheHeaderAndTheFigures)
{
    openPage();
    EXPECT_TRUE(shows(detail(), text("Foxglove Film Camera")));
    EXPECT_TRUE(shows(detail(), text("Brass Lens Studio · Photo & Video · Free")));
    EXPECT_EQ(figure("figureRating"), text("Rating: 4.7 / 5"));
    EXPECT_EQ(figure("figureRatings"), text("Ratings: 128,402"));
    EXPECT_EQ(figure("figureCoverage"), text("Keyword coverage: 8 / 10"));
    EXPECT_EQ(figure("figureUpdated"), text("Last updated: Nov 12, 2026"));
}

TEST_F(ResearchPageTest, CoverageIsNotCheckedUntilTheFirstCheckIsDone)
{
    appStore().fails = [this](const QString &) {
        appStore().holds = appStore().lookups.size() == 1;
        return false;
    };
    openPage();
    appStore().release();
    settle();
    EXPECT_EQ(figure("figureCoverage"), text("Keyword coverage: Not checked"));
    EXPECT_EQ(label("coverageProgress"), text("Checking “foxglove film” · 1 of 10"));
    appStore().release();
    EXPECT_EQ(figure("figureCoverage"), text("Keyword coverage: 1 / 1"));
    EXPECT_EQ(checkModel()->rowCount(), 1);
}

TEST_F(ResearchPageTest, AMissingListingIsSaidInWords)
{
    ITunesAppResult bare;
    bare.trackId = 201;
    bare.trackName = text("42");
    appStore().apps.insert(201, bare);
    openPage();
    EXPECT_TRUE(shows(detail(), text("Unknown category · Price unavailable")));
    EXPECT_TRUE(shows(detail(), text("No screenshots available in this storefront.")));
    EXPECT_TRUE(shows(detail(), text("No description available.")));
    EXPECT_TRUE(shows(detail(), text("No similar apps found yet.")));
    EXPECT_EQ(figure("figureRating"), text("Rating: Not available"));
    EXPECT_EQ(figure("figureCoverage"), text("Keyword coverage: Not checked"));
    EXPECT_EQ(emptyTitle("coverageEmpty"), text("No keywords found"));
    EXPECT_EQ(emptyText("coverageEmpty"),
              text("This app has no keyword phrases in its public listing."));
    EXPECT_FALSE(window->findChild<ScreenshotStrip *>());
}

TEST_F(ResearchPageTest, SaysWhatTheAppIsAboutInFullWhenAsked)
{
    openPage();
    EXPECT_TRUE(shows(detail(), text("About this app")));
    EXPECT_TRUE(shows(detail(), text("Updated Nov 12, 2026")));
    EXPECT_FALSE(label("aboutText").endsWith(text("No account is needed.")));
    EXPECT_TRUE(find("aboutText")->accessibleName().endsWith(text("No account is needed.")));
    click("aboutToggle");
    EXPECT_TRUE(label("aboutText").endsWith(text("No account is needed.")));
    click("aboutToggle");
    EXPECT_TRUE(label("aboutText").endsWith(text("…")));
}

TEST_F(ResearchPageTest, TracksAndUntracksTheCompetitor)
{
    openPage();
    EXPECT_EQ(find<Button>("trackCompetitor")->text(), text("Track competitor"));
    EXPECT_EQ(find<Button>("trackCompetitor")->kind(), Button::Kind::Primary);
    click("trackCompetitor");
    EXPECT_EQ(find<Button>("trackCompetitor")->kind(), Button::Kind::Standard)
        << "the way back is no main action";
    EXPECT_EQ(store().competitorsOfApp(appId()).constLast().trackId, 201);
    EXPECT_EQ(find<Button>("trackCompetitor")->text(), text("Untrack competitor"));
    click("trackCompetitor");
    EXPECT_NE(store().competitorsOfApp(appId()).constLast().trackId, 201);
    EXPECT_EQ(find<Button>("trackCompetitor")->text(), text("Track competitor"));
}

TEST_F(ResearchPageTest, OpensTheStorePage)
{
    openPage();
    click("openInAppStore");
    EXPECT_EQ(world->openedUrls, QList<QUrl>{QUrl(text("https://apps.apple.com/us/app/id201"))});
}

TEST_F(ResearchPageTest, FindsSimilarAppsWithTheAnswerOfTheFirstCheck)
{
    openPage();
    EXPECT_EQ(appStore().searches.mid(0, 2),
              (QStringList{text("foxglove film/US/100"), text("foxglove film/US/25")}));
    const auto rows = find("similarPanel")->findChildren<AppRow *>();
    ASSERT_EQ(rows.size(), 8);
    EXPECT_EQ(rows[0]->accessibleName(), text("Research Collagely: Photo Grid"));
    EXPECT_EQ(rows[0]->accessibleDescription(), text("Gridworks, rated 4.9"));
}

TEST_F(ResearchPageTest, ASimilarAppOpensItsOwnPage)
{
    openPage();
    QTest::mouseClick(find("similarApp2"), Qt::LeftButton);
    settle();
    EXPECT_TRUE(shows(detail(), text("PicStitch Studio")));
    EXPECT_EQ(appStore().lookups.constLast(), text("1002/US"));
    click("researchBack");
    EXPECT_EQ(detail(), nullptr);
}

TEST_F(ResearchPageTest, SimilarAppsFailOnTheirOwn)
{
    int calls = 0;
    appStore().fails = [&calls](const QString &what) {
        return what == u"foxglove film" && ++calls == 2;
    };
    openPage();
    EXPECT_TRUE(isShown("similarFailure"));
    EXPECT_EQ(checkModel()->rowCount(), 10);
    click("similarFailureAction");
    EXPECT_FALSE(isShown("similarFailure"));
    EXPECT_TRUE(find("similarApp1"));
}

TEST_F(ResearchPageTest, CoverageFillsInRowByRowAndStops)
{
    appStore().fails = [this](const QString &) {
        appStore().holds = appStore().searches.size() > 4;
        return false;
    };
    openPage();
    EXPECT_EQ(checkModel()->rowCount(), 3);
    EXPECT_EQ(label("coverageProgress"), text("Checking “film” · 4 of 10"));
    click("coverageStop");
    EXPECT_EQ(appStore().inFlight, 0);
    EXPECT_EQ(label("coverageProgress"), text("Stopped · 3 of 10 checked"));
    appStore().fails = nullptr;
    appStore().holds = false;
    click("coverageStop");
    EXPECT_EQ(checkModel()->rowCount(), 10);
    EXPECT_FALSE(isShown("coverageProgress"));
}

TEST_F(ResearchPageTest, AFailedCheckCanBeRetried)
{
    appStore().fails = [](const QString &term) {
        return term == u"film";
    };
    openPage();
    EXPECT_EQ(find("coverageFailure")->accessibleName(), text("The network is down."));
    EXPECT_EQ(find<Button>("coverageFailureAction")->text(), text("Retry keyword data"));
    EXPECT_EQ(checkModel()->rowCount(), 3);
    appStore().fails = nullptr;
    click("coverageFailureAction");
    EXPECT_EQ(checkModel()->rowCount(), 10);
    EXPECT_FALSE(isShown("coverageFailure"));
}

TEST_F(ResearchPageTest, LeavingThePageStopsTheChecks)
{
    appStore().fails = [this](const QString &) {
        appStore().holds = appStore().searches.size() > 4;
        return false;
    };
    openPage();
    EXPECT_EQ(appStore().inFlight, 1);
    click("researchBack");
    EXPECT_EQ(appStore().inFlight, 0);
}

TEST_F(ResearchPageTest, RowsAreChosenByAClickOrTheSpaceBar)
{
    openPage();
    EXPECT_FALSE(find<Button>("trackKeywords")->isEnabled());
    clickRow(1);
    EXPECT_EQ(checkModel()->chosen(), QStringList{text("film camera")});
    EXPECT_TRUE(find<Button>("trackKeywords")->isEnabled());
    checks()->setFocus();
    checks()->setCurrentIndex(checkModel()->index(0, 1));
    QTest::keyClick(checks(), Qt::Key_Space);
    EXPECT_EQ(checkModel()->chosen(), (QStringList{text("foxglove film"), text("film camera")}));
    QTest::keyClick(checks(), Qt::Key_Down);
    QTest::keyClick(checks(), Qt::Key_Space);
    EXPECT_EQ(checkModel()->chosen(), QStringList{text("foxglove film")});
    QTest::keyClick(checks(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(checkModel()->chosen().size(), 10);
}

TEST_F(ResearchPageTest, ChecksAreSortedByTheirHeaderAndCopied)
{
    openPage();
    QHeaderView *header = checks()->horizontalHeader();
    const auto clickHeader = [&](CheckColumn column) {
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                          {header->sectionViewportPosition(int(column)) + 20, 10});
    };
    clickHeader(CheckColumn::Rank);
    EXPECT_EQ(checkModel()->entryAt(0).check.keyword, text("foxglove film"));
    EXPECT_EQ(checkModel()->entryAt(1).check.keyword, text("foxglove"));
    EXPECT_EQ(checkModel()->entryAt(9).check.position, std::nullopt);
    clickHeader(CheckColumn::Rank);
    EXPECT_EQ(checkModel()->entryAt(0).check.position, 17);
    clickHeader(CheckColumn::Rank);
    EXPECT_EQ(checkModel()->entryAt(1).check.keyword, text("film camera"));
    QTest::keyClick(checks(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(QGuiApplication::clipboard()->text().startsWith(
        text("Keyword\tRank\tYour rank\tDiff\nfoxglove film\t1st\tNot ranked\t")));
}

TEST_F(ResearchPageTest, ChosenKeywordsAreTrackedAndQueued)
{
    openPage();
    clickRow(0);
    clickRow(1);
    appStore().holds = true;
    click("trackKeywords");
    QStringList tracked;
    for (const TrackedKeyword &keyword : store().keywordsOfApp(appId()))
        tracked << keyword.keyword + u'/' + keyword.country;
    EXPECT_TRUE(tracked.contains(text("foxglove film/US")));
    EXPECT_TRUE(tracked.contains(text("film camera/US")));
    EXPECT_EQ(store().refreshProgress().total(), 2);
    EXPECT_EQ(label("coverageStatus"),
              text("Keywords saved. Metrics will update in the background."));
    EXPECT_TRUE(checkModel()->entryAt(0).isTracked);
    EXPECT_TRUE(checkModel()->chosen().isEmpty());
    EXPECT_FALSE(find<Button>("trackKeywords")->isEnabled());
}

TEST_F(ResearchPageTest, ItTellsHowManyWereAddedAndThatTheyAreSaved)
{
    openPage();
    clickRow(0);
    clickRow(1);
    click("trackKeywords");
    EXPECT_EQ(label("coverageOutcome"), text("2 added"));
}

TEST_F(ResearchPageTest, InAStorefrontThatCannotBeMeasuredKeywordsAreRefusedByNameAndStayChosen)
{
    openPage(201, "UK");
    clickRow(0);
    clickRow(1);
    const auto before = store().trackedKeywords().size();
    click("trackKeywords");
    EXPECT_EQ(store().trackedKeywords().size(), before);
    EXPECT_EQ(label("coverageStatus"), text("None added, 2 refused"));
    EXPECT_EQ(label("coverageOutcome"), text("“foxglove film”: “UK” is not a supported storefront\n"
                                             "“film camera”: “UK” is not a supported storefront"));
    EXPECT_EQ(checkModel()->chosen().size(), 2);
    EXPECT_TRUE(store().refreshProgress().isIdle());
}

TEST_F(ResearchPageTest, SavedIsNotSaidWhenTheDiskRefuses)
{
    openPage();
    clickRow(0);
    world->folder.remove();
    click("trackKeywords");
    EXPECT_EQ(label("coverageStatus"), text("The new keywords are not saved yet."));
    EXPECT_EQ(label("coverageOutcome"), text("1 added"));
}

TEST_F(ResearchPageTest, AnAppThatWasDeletedMeanwhileGetsNoKeywords)
{
    openPage();
    clickRow(0);
    for (const AppProfile &app : QList<AppProfile>(store().apps()))
        store().removeApp(app.id);
    find<Button>("trackKeywords")->click();
    EXPECT_TRUE(store().trackedKeywords().isEmpty());
    EXPECT_FALSE(find<Button>("trackKeywords")->isEnabled());
}

TEST_F(ResearchPageTest, AKeywordThatIsTrackedAlreadyIsMarked)
{
    store().addTrackedKeyword(appId(), text("Film Camera"), text("us"));
    openPage();
    EXPECT_FALSE(checkModel()->entryAt(0).isTracked);
    EXPECT_TRUE(checkModel()->entryAt(1).isTracked);
    clickRow(1);
    EXPECT_TRUE(checkModel()->chosen().isEmpty());
}

TEST_F(ResearchPageTest, WithoutAnAppNothingCanBeTracked)
{
    for (const AppProfile &app : QList<AppProfile>(store().apps()))
        store().removeApp(app.id);
    openPage();
    EXPECT_FALSE(isShown("trackCompetitor"));
    clickRow(0);
    EXPECT_FALSE(find<Button>("trackKeywords")->isEnabled());
    EXPECT_EQ(find("trackKeywords")->toolTip(), text("Select an app first"));
    EXPECT_TRUE(checks()->isColumnHidden(int(CheckColumn::OwnRank)));
}

TEST_F(ResearchPageTest, SelectingAnAppEndsWhatWasMissing)
{
    const QList<AppProfile> apps = store().apps();
    openPage();
    clickRow(0);
    window->competitors().setApp(std::nullopt);
    EXPECT_EQ(find("trackKeywords")->toolTip(), text("Select an app first"));
    window->competitors().setApp(apps[0].id);
    EXPECT_EQ(find("trackKeywords")->toolTip(), QString());
    EXPECT_TRUE(find<Button>("trackKeywords")->isEnabled());
    EXPECT_FALSE(checks()->isColumnHidden(int(CheckColumn::OwnRank)));
}

TEST_F(ResearchPageTest, TheRowsOfTheCoverageMoveThePageAlong)
{
    window->resize(900, 500);
    openPage();
    auto *page = find<QScrollArea>("researchPage");
    checks()->setFocus();
    const auto isInView = [&] {
        const QRect row = checks()->visualRect(checks()->currentIndex());
        const int middle = checks()->viewport()->mapTo(page->viewport(), row.center()).y();
        return middle > 0 && middle < page->viewport()->height();
    };
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Up, Qt::Key_End, Qt::Key_Home}) {
        press(key);
        EXPECT_TRUE(isInView()) << int(key);
    }
    press(Qt::Key_PageDown);
    const int seen = page->viewport()->height() / checks()->rowHeight(0) - 1;
    EXPECT_EQ(checks()->currentIndex().row(), std::min(seen, 9));
    EXPECT_TRUE(isInView());
    press(Qt::Key_PageDown);
    EXPECT_EQ(checks()->currentIndex().row(), 9);
    while (checks()->currentIndex().row() > 0)
        press(Qt::Key_PageUp);
    EXPECT_TRUE(isInView());
    const int atTheTable = page->verticalScrollBar()->value();
    press(Qt::Key_PageUp);
    EXPECT_LT(page->verticalScrollBar()->value(), atTheTable) << "above it the page goes on";
}

TEST_F(ResearchPageTest, OneFailureIsToldOnce)
{
    appStore().fails = [this](const QString &) {
        return appStore().searches.size() > 1;
    };
    openPage();
    EXPECT_TRUE(isShown("coverageFailure"));
    EXPECT_FALSE(isShown("similarFailure"));
    EXPECT_EQ(label("similarMessage"), text("Similar apps couldn't be loaded."));
    EXPECT_EQ(textsIn(detail()).filter(text("The network is down.")).size(), 1);
    appStore().fails = nullptr;
    click("coverageFailureAction");
    EXPECT_FALSE(isShown("coverageFailure"));
    EXPECT_FALSE(isShown("similarMessage"));
    EXPECT_TRUE(isShown("similarApp1"));
    EXPECT_EQ(checkModel()->rowCount(), 10);
}

TEST_F(ResearchPageTest, AnAppWithoutRatingsIconAndSellerSaysSo)
{
    ITunesAppResult bare = foxglove();
    bare.averageUserRating = 0;
    bare.userRatingCount = 0;
    bare.sellerName.reset();
    bare.artworkUrl100.reset();
    bare.artworkUrl512.reset();
    appStore().apps.insert(201, bare);
    openPage();
    EXPECT_EQ(figure("figureRating"), text("Rating: No ratings"));
    EXPECT_EQ(figure("figureRatings"), text("Ratings: 0"));
    EXPECT_TRUE(shows(detail(), text("Photo & Video · Free")));
}

TEST_F(ResearchPageTest, TheOwnAppCarriesYou)
{
    ITunesAppResult own = foxglove();
    own.trackId = 101;
    own.trackName = text("Lumen Photo Editor");
    appStore().apps.insert(101, own);
    openPage(101);
    EXPECT_TRUE(isShown("appOwn"));
    EXPECT_FALSE(isShown("trackCompetitor"));
    window->selectApp(store().apps()[1].id);
    EXPECT_FALSE(isShown("appOwn"));
}

TEST_F(ResearchPageTest, ScreenshotsAreNumberedAndOpenLarge)
{
    openPage();
    QStringList names;
    for (const ScreenshotThumb *thumb : window->findChildren<ScreenshotThumb *>())
        names << thumb->accessibleName();
    EXPECT_EQ(names,
              (QStringList{text("Screenshot 1"), text("Screenshot 2"), text("Screenshot 3"),
                           text("Screenshot 4"), text("Screenshot 5"), text("Screenshot 6")}));
    QTest::mouseClick(find("screenshot2"), Qt::LeftButton);
    settle();
    auto *viewer = window->findChild<ScreenshotViewer *>();
    ASSERT_TRUE(viewer);
    EXPECT_EQ(viewer->index(), 1);
    EXPECT_EQ(find("screenshotLarge")->accessibleName(), text("Screenshot 2"));
    EXPECT_TRUE(shows(viewer, text("2 of 6")));
    press(Qt::Key_Right);
    EXPECT_EQ(viewer->index(), 2);
    press(Qt::Key_Left);
    press(Qt::Key_Left);
    press(Qt::Key_Left);
    EXPECT_EQ(viewer->index(), 0);
    EXPECT_FALSE(find<Button>("screenshotPrevious")->isEnabled());
    click("screenshotNext");
    EXPECT_EQ(viewer->index(), 1);
    press(Qt::Key_Escape);
    EXPECT_FALSE(Overlay::isOpenOver(window.get()));
}

TEST_F(ResearchPageTest, ANarrowWindowPutsTheKeywordsBelow)
{
    openPage();
    const auto topOf = [this](const char *name) {
        return find(name)->mapTo(window.get(), QPoint()).y();
    };
    EXPECT_LT(std::abs(topOf("coveragePanel") - topOf("screenshots")), 60);
    window->resize(900, 700);
    settle();
    window->grab();
    EXPECT_GT(topOf("coveragePanel"), topOf("similarPanel"));
}

} // namespace
} // namespace veltrix
