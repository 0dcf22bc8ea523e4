// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/support/ui_test.h"

#include "ui/dashboard/keyword_actions.h"
#include "ui/dashboard/keyword_filter.h"
#include "ui_kit/widgets/storefront_checklist.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QListView>

namespace veltrix
{
namespace
{

class DashboardPageTest : public UiTest
{
protected:
    QStringList tracked()
    {
        QStringList keywords;
        for (const TrackedKeyword &keyword : store().trackedKeywords())
            keywords << keyword.keyword + u'@' + keyword.country;
        return keywords;
    }
    QString emptyTitle() { return find<EmptyState>("keywordsEmpty")->content().title; }
    void pickStorefront(const char *picker, const QString &code)
    {
        click(picker);
        type("storefrontSearch", code);
        press(Qt::Key_Return);
    }
};

TEST_F(DashboardPageTest, WithoutAnAppItOffersToAddOne)
{
    open(PersistedState{});
    EXPECT_EQ(emptyTitle(), QStringLiteral("Add keywords to discover your next opportunity"));
    EXPECT_TRUE(isShown("keywordsEmpty"));
    click("keywordsEmptyAction");
    EXPECT_TRUE(isShown("appSearchSheet"));
}

TEST_F(DashboardPageTest, WithoutKeywordsItOffersToAddThem)
{
    PersistedState state = sampleState(VirtualClock().now(), {});
    state.trackedKeywords.clear();
    state.snapshots.clear();
    open(state);
    const auto &content = find<EmptyState>("keywordsEmpty")->content();
    EXPECT_EQ(content.title, QStringLiteral("No keyword data yet"));
    EXPECT_EQ(content.symbol, QStringLiteral("magnifyingglass"));
    EXPECT_EQ(content.text, QStringLiteral("Add keywords to run live ranking analysis and discover "
                                           "your next opportunity."));
    EXPECT_EQ(content.action, QStringLiteral("Add keywords"));
    click("keywordsEmptyAction");
    EXPECT_TRUE(isShown("addKeywordsCard"));
}

TEST_F(DashboardPageTest, WithKeywordsItShowsTheTable)
{
    open();
    EXPECT_TRUE(isShown("keywordTable"));
    EXPECT_FALSE(isShown("keywordsEmpty"));
    EXPECT_EQ(model().rowCount(), 11);
}

TEST_F(DashboardPageTest, AFilterThatHidesAllSaysSoAndOffersTheWayBack)
{
    open();
    type("keywordSearch", QStringLiteral("zzz"));
    press(Qt::Key_Return);
    EXPECT_EQ(emptyTitle(), QStringLiteral("No matching keywords"));
    click("keywordsEmptyAction");
    EXPECT_TRUE(isShown("keywordTable"));
    EXPECT_EQ(model().rowCount(), 11);
    EXPECT_TRUE(find<TextField>("keywordSearch")->text().isEmpty());
}

TEST_F(DashboardPageTest, SearchWaitsUntilTypingRests)
{
    open();
    type("keywordSearch", QStringLiteral("collage"));
    EXPECT_EQ(model().rowCount(), 11);
    EXPECT_TRUE(QTest::qWaitFor([&] { return model().rowCount() == 1; }, 5000));
}

TEST_F(DashboardPageTest, EscapeClearsTheSearch)
{
    open();
    type("keywordSearch", QStringLiteral("collage"));
    press(Qt::Key_Return);
    EXPECT_EQ(model().rowCount(), 1);
    press(Qt::Key_Escape);
    EXPECT_EQ(model().rowCount(), 11);
    EXPECT_TRUE(find<TextField>("keywordSearch")->text().isEmpty());
}

TEST_F(DashboardPageTest, TabGoesThroughTheToolbarIntoTheTable)
{
    open();
    find("keywordSearch")->setFocus();
    QStringList stops;
    for (int i = 0; i < 9; ++i) {
        stops << QApplication::focusWidget()->objectName();
        press(Qt::Key_Tab);
    }
    EXPECT_EQ(stops.join(u' '),
              QStringLiteral("keywordSearch storefrontFilter refreshButton addKeywordsButton "
                             "settingsButton moreButton quickFilter0 tagFilter keywordTable"));
}

TEST_F(DashboardPageTest, AddsTheKeywordsOfTheFieldAndMeasuresThem)
{
    open();
    world->client->holds = true;
    click("addKeywordsButton");
    type("keywordInput", QStringLiteral("a, ,b"));
    click("addKeywordsSubmit");
    EXPECT_FALSE(isShown("addKeywordsCard"));
    EXPECT_EQ(status(), QStringLiteral("Keywords saved. Metrics will update in the background."));
    EXPECT_EQ(tracked().mid(11), (QStringList{QStringLiteral("a@US"), QStringLiteral("b@US")}));
    world->client->release();
    world->client->release();
    settle();
    EXPECT_EQ(status(), QStringLiteral("2 added")) << "what was announced has come to pass";
    EXPECT_EQ(cell("b", KeywordColumn::Popularity), QStringLiteral("42"));
}

TEST_F(DashboardPageTest, CommasAndSpacesAloneAddNothing)
{
    open();
    click("addKeywordsButton");
    type("keywordInput", QStringLiteral(" , ,, "));
    EXPECT_FALSE(find("addKeywordsSubmit")->isEnabled());
    press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(tracked().size(), 11);
    EXPECT_TRUE(isShown("addKeywordsCard"));
}

TEST_F(DashboardPageTest, ManyKeywordsCanBePasted)
{
    open();
    click("addKeywordsButton");
    QGuiApplication::clipboard()->setText(QStringLiteral("one\ntwo\r\nthree\tfour, five\n"));
    find("keywordInput")->setFocus();
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(find<TextLabel>("addKeywordsNote")->text(), QStringLiteral("5 keywords"));
    press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(tracked().mid(11).join(u'|'),
              QStringLiteral("one@US|two@US|three@US|four@US|five@US"));
}

TEST_F(DashboardPageTest, CancelAndEscapeCloseThePopover)
{
    open();
    click("addKeywordsButton");
    click("addKeywordsCancel");
    EXPECT_FALSE(isShown("addKeywordsCard"));
    press(Qt::Key_N, Qt::ControlModifier);
    EXPECT_TRUE(isShown("addKeywordsCard"));
    press(Qt::Key_Escape);
    EXPECT_FALSE(isShown("addKeywordsCard"));
    EXPECT_EQ(tracked().size(), 11);
}

TEST_F(DashboardPageTest, WithoutAnAppAddingIsRefused)
{
    open(PersistedState{});
    press(Qt::Key_N, Qt::ControlModifier);
    type("keywordInput", QStringLiteral("a"));
    press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(find<TextLabel>("addKeywordsNote")->text(), QStringLiteral("Select an app first"));
    EXPECT_EQ(status(), QStringLiteral("Select an app first"));
    EXPECT_TRUE(isShown("addKeywordsCard"));
}

TEST_F(DashboardPageTest, NewKeywordsGoToTheFilteredStorefrontElseToTheOneOfSearches)
{
    open();
    const auto checked = [this] {
        return find<StorefrontChecklist>("")
            ->findChild<QListView *>()
            ->model()
            ->index(0, 0)
            .data(StorefrontCheckModel::codeRole)
            .toString();
    };
    window->selectApp(store().apps().first().id);
    page().filter().setSearchStorefront(QStringLiteral("GB"));
    click("addKeywordsButton");
    EXPECT_EQ(checked(), QStringLiteral("GB"));
    click("addKeywordsCancel");
    pickStorefront("storefrontFilter", QStringLiteral("DE"));
    EXPECT_EQ(shownKeywords(), QStringList{QStringLiteral("bildbearbeitung")});
    click("addKeywordsButton");
    EXPECT_EQ(checked(), QStringLiteral("DE"));
    type("keywordInput", QStringLiteral("retouche"));
    press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(tracked().last(), QStringLiteral("retouche@DE"));
}

TEST_F(DashboardPageTest, AFailureOfTheBackgroundQueueShowsTheStoresMessage)
{
    open();
    world->client->fails = [](const QString &) {
        return true;
    };
    click("addKeywordsButton");
    type("keywordInput", QStringLiteral("a"));
    press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(find<Banner>("refreshBanner")->message(),
              QStringLiteral("Keywords are saved. Metrics couldn't be loaded; use Refresh to "
                             "retry."));
    EXPECT_TRUE(isShown("refreshBanner"));
    EXPECT_EQ(status(), QStringLiteral("1 added")) << "it no longer says that metrics will update";
}

TEST_F(DashboardPageTest, TheBannersRefreshTriesAgainAndClearsIt)
{
    open();
    world->client->fails = [](const QString &) {
        return true;
    };
    press(Qt::Key_F5);
    EXPECT_EQ(find<Banner>("refreshBanner")->message(),
              QStringLiteral("Some rankings couldn't be updated. Try again later."));
    EXPECT_EQ(find<Banner>("refreshBanner")->detail(),
              QStringLiteral("“polaroid frame”: The network is down."));
    world->client->fails = nullptr;
    click("refreshBannerAction");
    EXPECT_FALSE(isShown("refreshBanner"));
    EXPECT_EQ(cell("grain filter", KeywordColumn::Popularity), QStringLiteral("42"));
}

TEST_F(DashboardPageTest, RefreshMeasuresWhatIsStaleAndIsOffMeanwhile)
{
    open();
    world->client->holds = true;
    click("refreshButton");
    EXPECT_FALSE(find("refreshButton")->isEnabled());
    EXPECT_EQ(work(), QStringLiteral("Measuring “polaroid frame” · 1 of 2"));
    world->client->release();
    settle();
    EXPECT_EQ(work(), QStringLiteral("Measuring “grain filter” · 2 of 2"));
    for (int i = 0; i < 5; ++i) {
        world->client->release();
        settle();
    }
    EXPECT_TRUE(find("refreshButton")->isEnabled());
    EXPECT_EQ(work(), QString());
    EXPECT_EQ(world->client->searches.size(), 2) << "only the two that were never measured";
    EXPECT_EQ(status(), QStringLiteral("Rankings are up to date."));
}

TEST_F(DashboardPageTest, RefreshWithNothingStaleSaysSo)
{
    open();
    click("refreshButton");
    type("keywordSearch", QStringLiteral("x"));
    world->client->searches.clear();
    click("refreshButton");
    EXPECT_EQ(status(), QStringLiteral("Rankings are up to date."));
    EXPECT_TRUE(world->client->searches.isEmpty());
}

TEST_F(DashboardPageTest, TheStatusLineTellsHowFarTheQueueIsAndStopStopsIt)
{
    open();
    world->client->holds = true;
    QList<TrackedKeyword> stale;
    for (const TrackedKeyword &keyword : store().trackedKeywords()) {
        if (!store().newestSnapshot(keyword.id))
            stale << keyword;
    }
    stale << store().addTrackedKeyword(*window->selectedApp(), QStringLiteral("third"),
                                       QStringLiteral("US"));
    store().queueKeywordRefreshes(stale);
    settle();
    EXPECT_EQ(work(), QStringLiteral("Measuring “polaroid frame” · 1 of 3"));
    world->client->release();
    settle();
    EXPECT_EQ(work(), QStringLiteral("Measuring “grain filter” · 2 of 3"));
    EXPECT_NEAR(*find<StatusBar>("statusBar")->work()->fraction, 1.0 / 3, 1e-9);
    click("stopButton");
    EXPECT_EQ(work(), QString());
    EXPECT_EQ(status(), QStringLiteral("Stopped. Refresh measures what is left."));
    EXPECT_TRUE(store().refreshProgress().isIdle());
    EXPECT_FALSE(isShown("refreshBanner"));
    EXPECT_EQ(tracked().size(), 12);
}

TEST_F(DashboardPageTest, RefreshKeywordMeasuresOneRow)
{
    open();
    selectKeywords({QStringLiteral("grain filter")});
    world->client->holds = true;
    Q_EMIT table().menuRequested(window->mapToGlobal(QPoint(400, 300)));
    choose("rowMenu", QStringLiteral("Refresh Keyword"));
    EXPECT_TRUE(cell("grain filter", KeywordColumn::Keyword, Qt::AccessibleTextRole)
                    .contains(QStringLiteral("Refreshing…")));
    world->client->release();
    settle();
    EXPECT_EQ(world->client->searches, QStringList{QStringLiteral("grain filter/US/100")});
    EXPECT_EQ(status(), QStringLiteral("“grain filter” is up to date."));
    EXPECT_EQ(cell("grain filter", KeywordColumn::Popularity), QStringLiteral("42"));
}

TEST_F(DashboardPageTest, DeletingOneOfSeveralRowsDoesNotEndTheRefreshOfTheRest)
{
    open();
    world->client->holds = true;
    QList<QUuid> ids;
    for (const char *keyword : {"polaroid frame", "grain filter"}) {
        for (const TrackedKeyword &one : store().trackedKeywords()) {
            if (one.keyword == QString::fromUtf8(keyword))
                ids.append(one.id);
        }
    }
    page().actions().refresh(ids);
    EXPECT_EQ(work(), QStringLiteral("Measuring “polaroid frame” · 1 of 2"));
    store().removeKeyword(ids[0]);
    world->client->release();
    EXPECT_EQ(work(), QStringLiteral("Measuring “grain filter” · 1 of 1"));
    world->client->release();
    settle();
    EXPECT_EQ(cell("grain filter", KeywordColumn::Popularity), QStringLiteral("42"));
    EXPECT_EQ(work(), QString());
}

TEST_F(DashboardPageTest, AFailedRefreshOfOneKeywordSaysWhy)
{
    open();
    world->client->fails = [](const QString &) {
        return true;
    };
    page().actions().refresh(
        {model().entryAt(model().rowOf(store().trackedKeywords().last().id)).row.id});
    settle();
    EXPECT_EQ(status(), QStringLiteral("The network is down."));
}

TEST_F(DashboardPageTest, RemovingOneKeywordAsksByItsName)
{
    open();
    selectKeywords({QStringLiteral("photo editor")});
    press(Qt::Key_Delete);
    EXPECT_EQ(find("confirmSheet")->accessibleName(), QStringLiteral("Delete Keyword?"));
    EXPECT_EQ(find<TextLabel>("confirmMessage")->text(),
              QStringLiteral("This will delete photo editor and its saved ranking snapshot "
                             "history.\nThis action cannot be undone."));
    EXPECT_EQ(find<Button>("confirmAccept")->text(), QStringLiteral("Delete Keyword"));
    click("confirmCancel");
    EXPECT_EQ(tracked().size(), 11);
    press(Qt::Key_Delete);
    click("confirmAccept");
    EXPECT_EQ(tracked().size(), 10);
    EXPECT_FALSE(shownKeywords().contains(QStringLiteral("photo editor")));
}

TEST_F(DashboardPageTest, RemovingSeveralAsksOnceAndCountsThem)
{
    open();
    selectKeywords({QStringLiteral("photo editor"), QStringLiteral("photo journal"),
                    QStringLiteral("retro photo")});
    Q_EMIT table().menuRequested(window->mapToGlobal(QPoint(400, 300)));
    choose("rowMenu", QStringLiteral("Remove 3 Keywords…"));
    EXPECT_EQ(find("confirmSheet")->accessibleName(), QStringLiteral("Delete 3 Keywords?"));
    click("confirmAccept");
    EXPECT_EQ(tracked().size(), 8);
}

TEST_F(DashboardPageTest, TimesStayCurrentWhileTheWindowIsOpen)
{
    open();
    const QSignalSpy changed(&model(), &QAbstractItemModel::dataChanged);
    EXPECT_TRUE(cell("photo editor", KeywordColumn::Keyword, Qt::AccessibleTextRole)
                    .contains(QStringLiteral("Updated just now")));
    world->clock->advance(Seconds(60));
    EXPECT_GE(changed.size(), 1);
    EXPECT_TRUE(cell("photo editor", KeywordColumn::Keyword, Qt::AccessibleTextRole)
                    .contains(QStringLiteral("Updated 1 min. ago")));
}

TEST_F(DashboardPageTest, SortingAndColumnsAreInTheMenuToo)
{
    open();
    QMenu sort;
    page().fillSortMenu(&sort);
    sort.actions().at(3)->trigger();
    EXPECT_EQ(model().sortedBy(), KeywordColumn::Popularity);
    page().fillSortMenu(&sort);
    sort.actions().last()->trigger();
    EXPECT_EQ(model().sortOrder(), Qt::DescendingOrder);
    QMenu columns;
    page().fillColumnMenu(&columns);
    EXPECT_FALSE(columns.actions().first()->isEnabled());
    columns.actions().at(4)->trigger();
    EXPECT_EQ(table().shownColumns().size(), 5U);
    columns.actions().last()->trigger();
    EXPECT_EQ(table().shownColumns().size(), 6U);
}

TEST_F(DashboardPageTest, ClosingItWhileKeywordsAreRefreshedStopsThem)
{
    open();
    world->client->holds = true;
    page().actions().refresh({store().trackedKeywords().last().id});
    page().refreshAll();
    window.reset();
    world->client->release();
    settle();
    EXPECT_FALSE(store().isRefreshingHistory());
    EXPECT_FALSE(store().newestSnapshot(store().trackedKeywords().last().id));
}

} // namespace
} // namespace veltrix
