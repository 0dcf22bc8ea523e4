// SPDX-License-Identifier: GPL-3.0-or-later
// Research pages over each other, and the same page for another app of the user's.
#include "ui/competitors/competitors_view.h"

#include "ui/competitors/keyword_check_table.h"
#include "ui/support/research_test.h"
#include "ui_kit/widgets/app_row.h"
#include "ui_kit/widgets/storefront_picker.h"

#include <QApplication>
#include <QScrollArea>
#include <QScrollBar>

namespace veltrix
{
namespace
{

class ResearchStackTest : public ResearchTest
{
protected:
    CompetitorsView &view() { return window->competitors(); }
    void openFoxglove()
    {
        window->showWorkspace(Workspace::Competitors);
        settle();
        view().openResearch(201, text("US"), text("Foxglove Film Camera"));
        settle();
        window->grab();
    }
    /// Holds back what is asked once that many searches were made.
    void holdAfter(qsizetype searches)
    {
        appStore().fails = [this, searches](const QString &) {
            appStore().holds = appStore().searches.size() > searches;
            return false;
        };
    }
    void goOn()
    {
        appStore().fails = nullptr;
        appStore().holds = false;
        appStore().release();
        settle();
    }
    std::int64_t shownId()
    {
        return view().research() ? view().research()->selection().trackId : 0;
    }
    KeywordCheckTable *checks() { return view().research()->findChild<KeywordCheckTable *>(); }
    QString ownRanks()
    {
        QStringList ranks;
        for (int row = 0; row < checks()->model()->rowCount(); ++row)
            ranks << checks()->model()->index(row, int(CheckColumn::OwnRank)).data().toString();
        return ranks.join(text(", "));
    }
    /// Opens a similar app of the page on top with the keyboard.
    void openSimilar(const char *row)
    {
        view().research()->findChild<QWidget *>(text(row))->setFocus();
        press(Qt::Key_Return);
        settle();
        window->grab();
    }
};

TEST_F(ResearchStackTest, AnotherAppKeepsAPageWhoseSearchesRunAndRepeatsNone)
{
    holdAfter(4);
    openFoxglove();
    ASSERT_EQ(appStore().inFlight, 1);
    const CompetitorResearchDetail *page = view().research();
    for (int i = 1; i <= 5; ++i) {
        window->selectApp(store().apps()[i % 3].id);
        settle();
        EXPECT_EQ(view().research(), page);
    }
    EXPECT_EQ(appStore().inFlight, 1);
    goOn();
    EXPECT_EQ(checks()->model()->rowCount(), 10);
    EXPECT_EQ(appStore().searches.size(), 11);
    EXPECT_EQ(appStore().lookups.count(text("201/US")), 1);
}

TEST_F(ResearchStackTest, TheFirstAppFindsItsPageAsItWas)
{
    ITunesAppResult own = rankedApps(1).constFirst();
    own.trackId = 101;
    appStore().resultsOf.insert(text("foxglove film"), {foxglove(), own});
    openFoxglove();
    const QString ranks = ownRanks();
    EXPECT_TRUE(ranks.startsWith(text("2nd, Not ranked")));
    auto *bar = find<QScrollArea>("researchPage")->verticalScrollBar();
    window->resize(900, 500);
    window->grab();
    checks()->setFocus();
    press(Qt::Key_Down);
    press(Qt::Key_Space);
    const auto chosen = static_cast<KeywordCheckModel *>(checks()->model())->chosen();
    bar->setValue(90);
    window->selectApp(store().apps()[1].id);
    settle();
    EXPECT_FALSE(ownRanks().contains(text("2nd"))) << "the other app's ranks are its own";
    window->selectApp(store().apps()[0].id);
    settle();
    EXPECT_EQ(ownRanks(), ranks);
    EXPECT_EQ(bar->value(), 90);
    EXPECT_EQ(static_cast<KeywordCheckModel *>(checks()->model())->chosen(), chosen);
    EXPECT_EQ(appStore().searches.size(), 11);
}

TEST_F(ResearchStackTest, KeywordsAreTrackedForTheAppThatIsSelectedNow)
{
    openFoxglove();
    const QUuid other = store().apps()[1].id;
    window->selectApp(other);
    settle();
    checks()->setFocus();
    press(Qt::Key_Down);
    press(Qt::Key_Space);
    click("trackKeywords");
    EXPECT_EQ(store().keywordsOfApp(other).size(), 1);
    EXPECT_TRUE(isShown("coverageOutcome"));
    window->selectApp(store().apps()[0].id);
    EXPECT_FALSE(isShown("coverageOutcome")) << "it was said of the other app";
}

TEST_F(ResearchStackTest, EscapeAndAltLeftGoBackToTheAppASimilarOneCameFrom)
{
    openFoxglove();
    openSimilar("similarApp2");
    EXPECT_EQ(shownId(), 1002);
    openSimilar("similarApp3");
    EXPECT_EQ(shownId(), 1004);
    openSimilar("similarApp1");
    EXPECT_EQ(shownId(), 1001);
    const QStringList searches = appStore().searches;
    const QStringList lookups = appStore().lookups;
    press(Qt::Key_Escape);
    EXPECT_EQ(shownId(), 1004);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), text("similarApp1"));
    press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(shownId(), 1002);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), text("similarApp3"));
    press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(shownId(), 201);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), text("similarApp2"));
    EXPECT_EQ(checks()->model()->rowCount(), 10);
    press(Qt::Key_Escape);
    EXPECT_EQ(shownId(), 0);
    EXPECT_EQ(appStore().searches, searches) << "what was found is still there";
    EXPECT_EQ(appStore().lookups, lookups);
}

TEST_F(ResearchStackTest, AltLeftGoesBackFromAButtonToo)
{
    openFoxglove();
    EXPECT_TRUE(find("researchBack")->hasFocus());
    press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(shownId(), 0);
    press(Qt::Key_Left, Qt::AltModifier);
    press(Qt::Key_Escape);
    EXPECT_TRUE(find("competitorSearch")->isVisible());
}

TEST_F(ResearchStackTest, EscapeOnASheetOverThePageClosesTheSheetAlone)
{
    openFoxglove();
    find("screenshot1")->setFocus();
    press(Qt::Key_Return);
    ASSERT_TRUE(topSheet());
    press(Qt::Key_Escape);
    EXPECT_FALSE(topSheet());
    EXPECT_EQ(shownId(), 201);
}

TEST_F(ResearchStackTest, AButtonNamesThePageBelowAndAnotherLeadsToAllApps)
{
    openFoxglove();
    EXPECT_FALSE(isShown("researchBackBelow"));
    openSimilar("similarApp1");
    EXPECT_EQ(find<Button>("researchBackBelow")->text(), text("Foxglove Film Camera"));
    EXPECT_EQ(find("researchBackBelow")->accessibleName(), text("Back to Foxglove Film Camera"));
    EXPECT_TRUE(find("researchBackBelow")->hasFocus());
    openSimilar("similarApp1");
    openSimilar("similarApp1");
    click("researchBackBelow");
    EXPECT_TRUE(view().research());
    click("researchBack");
    EXPECT_EQ(shownId(), 0);
    EXPECT_FALSE(isShown("researchBackBelow"));
}

TEST_F(ResearchStackTest, ALongNameWithAnAmpersandFitsTheButton)
{
    ITunesAppResult app = foxglove();
    app.trackName = text("Layers & Frames: The Whole Darkroom");
    appStore().apps.insert(201, app);
    openFoxglove();
    openSimilar("similarApp1");
    EXPECT_EQ(find<Button>("researchBackBelow")->text(), text("Layers && Frames: The Who…"));
    EXPECT_EQ(find("researchBackBelow")->accessibleName(),
              text("Back to Layers & Frames: The Whole Darkroom"));
}

TEST_F(ResearchStackTest, APageBelowSearchesNothingNewAndGoesOnAfterwards)
{
    holdAfter(3);
    openFoxglove();
    const QStringList before = appStore().searches;
    ITunesAppResult other = foxglove();
    other.trackId = 202;
    other.trackName = text("42");
    other.subtitle.reset();
    other.primaryGenreName.reset();
    appStore().apps.insert(202, other);
    appStore().fails = nullptr;
    appStore().holds = false;
    view().openResearch(202, text("US"), text("42"));
    goOn();
    EXPECT_EQ(appStore().searches, before) << "the search under way ends, no other begins";
    press(Qt::Key_Escape);
    settle();
    EXPECT_EQ(shownId(), 201);
    EXPECT_EQ(checks()->model()->rowCount(), 10);
    EXPECT_EQ(QSet<QString>(appStore().searches.begin(), appStore().searches.end()).size(),
              appStore().searches.size())
        << "none is made twice";
}

TEST_F(ResearchStackTest, AnotherStorefrontMovesThePageOnTop)
{
    openFoxglove();
    openSimilar("similarApp1");
    Q_EMIT find<StorefrontPicker>("competitorsStorefront")->picked(text("GB"));
    settle();
    EXPECT_EQ(view().research()->selection().country, text("GB"));
    press(Qt::Key_Escape);
    EXPECT_EQ(view().research()->selection().country, text("US"));
    EXPECT_EQ(find<StorefrontPicker>("competitorsStorefront")->code(), text("US"));
}

TEST_F(ResearchStackTest, TheSearchMarksTheOwnApp)
{
    ITunesAppResult own = rankedApps(1).constFirst();
    own.trackId = 101;
    appStore().resultsOf.insert(text("lumen"), {foxglove(), own});
    window->showWorkspace(Workspace::Competitors);
    type("competitorSearch", text("lumen"));
    press(Qt::Key_Return);
    const auto isOwn = [this](const char *row) {
        return static_cast<AppRow *>(find(row))->isOwn();
    };
    EXPECT_FALSE(isOwn("searchResult1"));
    EXPECT_TRUE(isOwn("searchResult2"));
    window->selectApp(store().apps()[1].id);
    EXPECT_FALSE(isOwn("searchResult2"));
}

TEST_F(ResearchStackTest, SimilarAppsMarkTheOwnApp)
{
    ITunesAppResult own = rankedApps(1).constFirst();
    own.trackId = 101;
    appStore().resultsOf.insert(text("foxglove film"), {foxglove(), own});
    openFoxglove();
    EXPECT_TRUE(static_cast<AppRow *>(find("similarApp1"))->isOwn());
}

} // namespace
} // namespace veltrix
