// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/competitors_view.h"

#include "ui/competitors/tracked_competitor_card.h"
#include "ui/dashboard/keyword_filter.h"
#include "ui/support/research_test.h"
#include "ui_kit/widgets/app_row.h"
#include "ui_kit/widgets/card_grid.h"
#include "ui_kit/widgets/storefront_picker.h"

namespace veltrix
{
namespace
{

class CompetitorsViewTest : public ResearchTest
{
protected:
    CompetitorsViewTest() { showWorkspace(); }

    void showWorkspace()
    {
        window->showWorkspace(Workspace::Competitors);
        settle();
        window->grab();
    }
    CompetitorsView &view() { return window->competitors(); }
    void search(const char *term)
    {
        type("competitorSearch", text(term));
        press(Qt::Key_Return);
    }
    QList<AppRow *> results()
    {
        QList<AppRow *> rows;
        for (AppRow *row : view().findChildren<AppRow *>()) {
            if (row->objectName().startsWith(text("searchResult")) && row->isVisible())
                rows << row;
        }
        return rows;
    }
    QList<TrackedCompetitorCard *> cards()
    {
        QList<TrackedCompetitorCard *> shown;
        for (QWidget *card : view().findChild<CardGrid *>()->cards())
            shown << static_cast<TrackedCompetitorCard *>(card);
        return shown;
    }
    static QString developerOf(TrackedCompetitorCard *card)
    {
        return card->findChild<QLabel *>(text("competitorDeveloper"))->text();
    }
    QString label(const char *name) { return find<QLabel>(name)->text(); }
};

TEST_F(CompetitorsViewTest, ShowsTheCompetitorsOfTheSelectedApp)
{
    QStringList names;
    for (const TrackedCompetitorCard *card : cards())
        names << card->accessibleName();
    EXPECT_EQ(names, (QStringList{text("Research Grainy"), text("Research Dovetail Cam"),
                                  text("Research Quiet Aperture"), text("Research Hazel Presets"),
                                  text("Research Lumière Film Lab")}));
    EXPECT_EQ(developerOf(cards()[0]), text("Northlight Labs"));
    EXPECT_TRUE(shows(&view(), text("5 tracked")));
}

TEST_F(CompetitorsViewTest, AnAppWithoutCompetitorsSaysWhatToDo)
{
    window->selectApp(store().apps()[1].id);
    settle();
    EXPECT_EQ(emptyTitle("competitorsEmpty"), text("No competitors yet"));
    EXPECT_EQ(emptyText("competitorsEmpty"),
              text("Search for an app above, then track it to add it here."));
    EXPECT_EQ(find<EmptyState>("competitorsEmpty")->content().symbol, text("person.2"));
    EXPECT_TRUE(isShown("competitorsEmpty"));
}

TEST_F(CompetitorsViewTest, WithoutAnAppItStillSearches)
{
    for (const AppProfile &app : QList<AppProfile>(store().apps()))
        store().removeApp(app.id);
    settle();
    EXPECT_EQ(emptyTitle("competitorsEmpty"),
              text("Research any app and discover keyword opportunities"));
    search("film camera");
    EXPECT_EQ(results().size(), 20);
}

TEST_F(CompetitorsViewTest, SearchesInTheStorefront)
{
    search("film camera");
    EXPECT_EQ(appStore().searches, QStringList{text("film camera/US/20")});
    EXPECT_EQ(results().size(), 20);
    EXPECT_EQ(results()[3]->accessibleName(), text("Research Foxglove Film Camera"));
    EXPECT_EQ(results()[3]->accessibleDescription(), text("Brass Lens Studio, rated 4.7"));
    EXPECT_EQ(label("competitorResultsTitle"),
              text("20 results for “film camera” in United States"));
}

TEST_F(CompetitorsViewTest, SaysThatItSearchesThatNothingWasFoundAndThatItFailed)
{
    appStore().holds = true;
    search("film camera");
    EXPECT_EQ(emptyTitle("competitorSearchMessage"), text("Searching apps…"));
    appStore().holds = false;
    appStore().resultsOf.insert(text("zzzz"), {});
    search("zzzz");
    EXPECT_EQ(emptyTitle("competitorSearchMessage"), text("No apps found"));
    appStore().fails = [](const QString &) {
        return true;
    };
    search("film camera");
    EXPECT_EQ(emptyTitle("competitorSearchMessage"), text("Couldn't load app"));
    EXPECT_EQ(find<EmptyState>("competitorSearchMessage")->content().symbol,
              text("wifi.exclamationmark"));
    EXPECT_EQ(find<EmptyState>("competitorSearchMessage")->content().action, text("Retry search"));
    appStore().fails = nullptr;
    click("competitorSearchMessageAction");
    EXPECT_EQ(results().size(), 20);
    EXPECT_FALSE(isShown("competitorSearchMessage"));
}

TEST_F(CompetitorsViewTest, ShowsAllResultsWhenAsked)
{
    search("film camera");
    const auto before = results();
    click("competitorShowAll");
    EXPECT_EQ(appStore().searches.constLast(), text("film camera/US/100"));
    EXPECT_EQ(results().size(), 61);
    EXPECT_EQ(results().mid(0, 20), before);
    EXPECT_FALSE(isShown("competitorShowAll"));
}

TEST_F(CompetitorsViewTest, AFailureToShowAllStandsAboveTheResults)
{
    search("film camera");
    appStore().fails = [](const QString &) {
        return true;
    };
    click("competitorShowAll");
    EXPECT_EQ(results().size(), 20);
    EXPECT_EQ(find("competitorSearchFailure")->accessibleName(), text("The network is down."));
    appStore().fails = nullptr;
    click("competitorSearchFailureAction");
    EXPECT_EQ(results().size(), 61);
    EXPECT_FALSE(isShown("competitorSearchFailure"));
}

TEST_F(CompetitorsViewTest, ClosingTheResultsGivesTheirPlaceBack)
{
    search("film camera");
    click("competitorResultsClose");
    EXPECT_TRUE(results().isEmpty());
    EXPECT_FALSE(isShown("competitorResultsTitle"));
    EXPECT_EQ(find<TextField>("competitorSearch")->text(), QString());
}

TEST_F(CompetitorsViewTest, AResultOpensItsResearchAndBackReturnsToIt)
{
    search("film camera");
    results()[3]->setFocus();
    press(Qt::Key_Return);
    ASSERT_TRUE(view().research());
    EXPECT_EQ(view().research()->selection().trackId, 201);
    EXPECT_TRUE(isShown("researchBack"));
    click("researchBack");
    EXPECT_EQ(view().research(), nullptr);
    EXPECT_TRUE(results()[3]->hasFocus());
    EXPECT_FALSE(isShown("researchBack"));
}

TEST_F(CompetitorsViewTest, ACardOpensItsResearch)
{
    QTest::mouseClick(cards()[1], Qt::LeftButton, {}, QPoint(60, 20));
    settle();
    ASSERT_TRUE(view().research());
    EXPECT_EQ(view().research()->selection().trackId, 901);
    click("researchBack");
    cards()[2]->setFocus();
    press(Qt::Key_Space);
    ASSERT_TRUE(view().research());
    EXPECT_EQ(view().research()->selection().trackId, 902);
}

TEST_F(CompetitorsViewTest, ACardsMenuRemovesTheCompetitor)
{
    auto *manage = cards()[0]->findChild<Button *>(text("competitorManage"));
    EXPECT_EQ(manage->accessibleName(), text("Manage Grainy"));
    QTest::mouseClick(manage, Qt::LeftButton);
    choose("competitorMenu", text("Remove competitor"));
    EXPECT_EQ(cards().size(), 4);
    EXPECT_EQ(store().competitorsOfApp(appId()).size(), 4);
    EXPECT_EQ(cards()[0]->accessibleName(), text("Research Dovetail Cam"));
}

TEST_F(CompetitorsViewTest, AMissingDeveloperIsLookedUpAndSaid)
{
    appStore().holds = true;
    ITunesAppResult tracked = rankedApps(1).constFirst();
    tracked.sellerName.reset();
    store().addCompetitor(tracked, appId(), text("US"));
    settle();
    TrackedCompetitorCard *card = cards().constLast();
    EXPECT_EQ(developerOf(card), text("Loading developer…"));
    EXPECT_EQ(appStore().lookups, QStringList{text("1001/US")});
    appStore().release();
    settle();
    EXPECT_EQ(developerOf(card), text("Gridworks"));
    EXPECT_EQ(cards().constLast(), card) << "the card stays where it is";
}

TEST_F(CompetitorsViewTest, ADeveloperThatCannotBeHadIsUnavailable)
{
    appStore().fails = [](const QString &) {
        return true;
    };
    ITunesAppResult tracked = rankedApps(1).constFirst();
    tracked.sellerName.reset();
    store().addCompetitor(tracked, appId(), text("US"));
    settle();
    EXPECT_EQ(developerOf(cards().constLast()), text("Developer unavailable"));
}

TEST_F(CompetitorsViewTest, ACardRemovedWhileItsDeveloperIsLookedUpGoesQuietly)
{
    appStore().holds = true;
    ITunesAppResult tracked = rankedApps(1).constFirst();
    tracked.sellerName.reset();
    store().addCompetitor(tracked, appId(), text("US"));
    settle();
    store().removeCompetitor(cards().constLast()->competitor().id);
    settle();
    EXPECT_EQ(appStore().inFlight, 0);
    appStore().release();
    EXPECT_EQ(cards().size(), 5);
}

TEST_F(CompetitorsViewTest, ACompetitorOfAnotherStorefrontSaysWhich)
{
    store().addCompetitor(rankedApps(1).constFirst(), appId(), text("DE"));
    settle();
    EXPECT_EQ(developerOf(cards().constLast()), text("Gridworks · Germany"));
    QTest::mouseClick(cards().constLast(), Qt::LeftButton, {}, QPoint(60, 20));
    settle();
    EXPECT_EQ(appStore().lookups.constLast(), text("1001/DE"));
    EXPECT_EQ(find<StorefrontPicker>("competitorsStorefront")->code(), text("DE"));
    click("researchBack");
    EXPECT_EQ(find<StorefrontPicker>("competitorsStorefront")->code(), text("US"));
}

TEST_F(CompetitorsViewTest, AnotherStorefrontSearchesAgainAndIsRemembered)
{
    search("film camera");
    Q_EMIT find<StorefrontPicker>("competitorsStorefront")->picked(text("FR"));
    settle();
    EXPECT_EQ(appStore().searches.constLast(), text("film camera/FR/20"));
    EXPECT_EQ(window->searchStorefront(), text("FR"));
    EXPECT_EQ(view().country(), text("FR"));
}

TEST_F(CompetitorsViewTest, TheFilterOfTheKeywordsIsItsStorefrontToo)
{
    Q_EMIT find<StorefrontPicker>("storefrontFilter")->picked(text("GB"));
    find<StorefrontPicker>("storefrontFilter")->setCode(text("GB"));
    EXPECT_EQ(page().filter().storefrontOfNewKeywords(), text("GB"));
}

TEST_F(CompetitorsViewTest, AnotherStorefrontReloadsTheResearchPage)
{
    view().openResearch(201, text("US"), text("Foxglove"));
    settle();
    Q_EMIT find<StorefrontPicker>("competitorsStorefront")->picked(text("GB"));
    settle();
    EXPECT_EQ(appStore().lookups, (QStringList{text("201/US"), text("201/GB")}));
    EXPECT_EQ(view().research()->selection().country, text("GB"));
}

TEST_F(CompetitorsViewTest, AnotherAppKeepsThePageAndTracksForThatApp)
{
    view().openResearch(201, text("US"), text("Foxglove"));
    settle();
    window->selectApp(store().apps()[1].id);
    settle();
    window->grab();
    click("trackCompetitor");
    EXPECT_EQ(store().competitorsOfApp(store().apps()[1].id).size(), 1);
}

TEST_F(CompetitorsViewTest, CtrlFGoesToItsSearch)
{
    view().openResearch(201, text("US"), text("Foxglove"));
    settle();
    QTest::keyClick(window.get(), Qt::Key_F, Qt::ControlModifier);
    settle();
    EXPECT_EQ(view().research(), nullptr);
    EXPECT_TRUE(find("competitorSearch")->hasFocus());
}

TEST_F(CompetitorsViewTest, ClosingTheWindowStopsEverything)
{
    appStore().holds = true;
    search("film camera");
    EXPECT_EQ(appStore().inFlight, 1);
    window.reset();
    settle();
    EXPECT_EQ(appStore().inFlight, 0);
    appStore().release();
}

TEST(CardLayout, FillsRowsWithAsManyColumnsAsFit)
{
    const auto places = layoutCards(800, 5, 250, 64, 12);
    ASSERT_EQ(places.size(), 5u);
    EXPECT_EQ(places[0], QRect(0, 0, 258, 64));
    EXPECT_EQ(places[2].right(), 797);
    EXPECT_EQ(places[3], QRect(0, 76, 258, 64));
    EXPECT_TRUE(layoutCards(800, 0, 250, 64, 12).empty());
}

TEST(CardLayout, ANarrowPlaceHasOneColumn)
{
    const auto places = layoutCards(200, 2, 250, 64, 12);
    EXPECT_EQ(places[0], QRect(0, 0, 200, 64));
    EXPECT_EQ(places[1], QRect(0, 76, 200, 64));
}

} // namespace
} // namespace veltrix
