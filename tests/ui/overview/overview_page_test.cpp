// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/overview/overview_page.h"

#include "ui/dashboard/keyword_filter.h"
#include "ui/history/ranking_history_sheet.h"
#include "ui/overview/movers_table.h"
#include "ui/overview/overview_card.h"
#include "ui/overview/rank_overview.h"
#include "ui/support/overview_state.h"
#include "ui/support/ui_test.h"
#include "ui_kit/widgets/card_grid.h"
#include "ui_kit/widgets/segmented_control.h"

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QScrollArea>
#include <QScrollBar>

namespace veltrix
{
namespace
{

class OverviewTest : public UiTest
{
protected:
    static Date now() { return VirtualClock().now(); }
    void show(const PersistedState &state)
    {
        open(state);
        window->resize(1280, 800);
        window->show();
        window->showWorkspace(Workspace::Overview);
        settle();
    }
    void show(const std::vector<RankedApp> &apps)
    {
        show(stateOf(apps, now(), FakePopularity().version));
    }
    OverviewPage &overview() { return window->overview(); }
    MoversModel &movers() { return overview().movers(); }
    MoversTable &moversTable() { return overview().table(); }
    QList<OverviewCard *> cards()
    {
        QList<OverviewCard *> shown;
        for (QWidget *card : overview().findChild<CardGrid *>()->cards())
            shown.append(qobject_cast<OverviewCard *>(card));
        return shown;
    }
    QStringList names()
    {
        QStringList texts;
        for (const OverviewCard *card : cards())
            texts << card->standing().name;
        return texts;
    }
    /// "keyword before now change" of each mover.
    QStringList rows()
    {
        QStringList lines;
        for (int row = 0; row < movers().rowCount(); ++row) {
            QStringList cells;
            for (const MoverColumn column :
                 {MoverColumn::Keyword, MoverColumn::Before, MoverColumn::Now, MoverColumn::Change})
                cells << movers().index(row, int(column)).data().toString();
            lines << cells.join(QStringLiteral(" | "));
        }
        return lines;
    }
    QString textOf(const char *label)
    {
        auto *found = find<QLabel>(label);
        return found->isVisibleTo(&overview()) ? found->text() : QString();
    }
    void search(const QString &text)
    {
        type("overviewSearch", text);
        QTest::keyClick(find<TextField>("overviewSearch"), Qt::Key_Return);
        settle();
    }
    void choosePeriod(int index)
    {
        find<SegmentedControl>("overviewPeriod")->choose(index);
        settle();
    }
    void rankAt(int position)
    {
        world->client->results.clear();
        for (int i = 1; i <= 100; ++i)
            world->client->results.append(appResult(i == position ? 101 : 5'000 + i, "Another"));
    }
    TrackedKeyword keyword(const char *text)
    {
        for (const TrackedKeyword &tracked : store().trackedKeywords()) {
            if (tracked.keyword == QString::fromUtf8(text))
                return tracked;
        }
        ADD_FAILURE() << text;
        return {};
    }
};

/// One app with a riser, a faller, one that entered, one that left, and one that stayed.
std::vector<RankedApp> oneApp()
{
    return {{"Lumen",
             "US",
             {{"riser", "US", {30, 25}},
              {"faller", "US", {5, 15}},
              {"newcomer", "DE", {0, 44}},
              {"leaver", "US", {88, 0}},
              {"stayer", "US", {7, 7}}}}};
}

TEST_F(OverviewTest, TheWindowOpensOnKeywordsAndCtrl0LeadsHere)
{
    open(stateOf(oneApp(), now(), FakePopularity().version));
    window->show();
    EXPECT_EQ(window->workspace(), Workspace::Keywords);
    QTest::keyClick(window.get(), Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(window->workspace(), Workspace::Overview);
    EXPECT_TRUE(overview().isVisible());
    EXPECT_TRUE(find<QAbstractButton>("workspaceOverview")->isChecked());
    QTest::keyClick(window.get(), Qt::Key_1, Qt::ControlModifier);
    EXPECT_EQ(window->workspace(), Workspace::Keywords);
}

TEST_F(OverviewTest, EntriesAndDeparturesLeadTheMoversThenTheLargest)
{
    show(oneApp());
    EXPECT_EQ(rows(), (QStringList{QStringLiteral("newcomer | Not ranked | # 44 | Entered results"),
                                   QStringLiteral("leaver | # 88 | Not ranked | Left results"),
                                   QStringLiteral("faller | # 5 | # 15 | ↓ 10"),
                                   QStringLiteral("riser | # 30 | # 25 | ↑ 5")}));
    EXPECT_EQ(textOf("moversCount"), QStringLiteral("4 keywords moved since yesterday"));
    EXPECT_EQ(cards().constFirst()->standing().movesIn(Period::Yesterday),
              (AppStanding::Moves{5, 2, 2}));
}

TEST_F(OverviewTest, CardsStandInTheOrderOfTheAppList)
{
    show(fourRankedApps());
    EXPECT_EQ(
        names(),
        (QStringList{QStringLiteral("Lumen Photo Editor"), QStringLiteral("Tidewater Journal"),
                     QStringLiteral("Orchard Budget"), QStringLiteral("Juniper Sleep Sounds")}));
    EXPECT_TRUE(cards()[3]->accessibleName().contains(QStringLiteral("2 of 13 not measured today")))
        << qPrintable(cards()[3]->accessibleName());
}

TEST_F(OverviewTest, ThePeriodRulesCardsMoversAndTheTitleOfTheirThirdColumn)
{
    show(fourRankedApps());
    const auto title = [this] {
        return movers().headerData(int(MoverColumn::Before), Qt::Horizontal, Qt::DisplayRole);
    };
    EXPECT_EQ(title(), QStringLiteral("Yesterday"));
    const int sinceYesterday = movers().rowCount();
    choosePeriod(2);
    EXPECT_EQ(title(), QStringLiteral("30 days ago"));
    EXPECT_GT(movers().rowCount(), sinceYesterday);
    EXPECT_TRUE(cards().constFirst()->accessibleName().contains(QStringLiteral("in 30 days")));
    moversTable().selectRow(0);
    QTest::keyClick(&moversTable(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(QGuiApplication::clipboard()->text().startsWith(
        QStringLiteral("Keyword\tStorefront\tApp\t30 days ago\tNow\tChange\n")));
}

TEST_F(OverviewTest, TheFieldNarrowsCardsAndMoversAtOnce)
{
    show(fourRankedApps());
    search(QStringLiteral("BUDGET"));
    EXPECT_EQ(names(), QStringList{QStringLiteral("Orchard Budget")});
    for (int row = 0; row < movers().rowCount(); ++row)
        EXPECT_EQ(movers().entryAt(row).appName, QStringLiteral("Orchard Budget"));
    search(QStringLiteral("mood"));
    EXPECT_EQ(names(), QStringList{QStringLiteral("Tidewater Journal")}) << "by its keyword";
    EXPECT_EQ(movers().rowCount(), 1);
    search(QStringLiteral("zzz"));
    EXPECT_EQ(find<EmptyState>("overviewEmpty")->content().title, QStringLiteral("No matches"));
    press(Qt::Key_Escape);
    settle();
    EXPECT_EQ(cards().size(), 4);
}

TEST_F(OverviewTest, ACardOpensTheKeywordsOfItsApp)
{
    show(fourRankedApps());
    const QSignalSpy wanted(&overview(), &OverviewPage::keywordsRequested);
    QTest::mouseClick(cards()[2], Qt::LeftButton, {}, QPoint(60, 20));
    EXPECT_EQ(window->workspace(), Workspace::Keywords);
    EXPECT_EQ(window->selectedApp(), store().apps()[2].id);
    window->showWorkspace(Workspace::Overview);
    QTest::mouseClick(cards()[0]->findChild<QWidget *>(QStringLiteral("fallenButton")),
                      Qt::LeftButton);
    ASSERT_EQ(wanted.size(), 2);
    EXPECT_EQ(wanted[1][1].value<QuickFilter>(), QuickFilter::Fallen);
    EXPECT_EQ(page().filter().quick(), QuickFilter::Fallen);
    EXPECT_EQ(window->selectedApp(), store().apps()[0].id);
}

TEST_F(OverviewTest, ArrowsMoveAmongCardsAndEnterOpensOne)
{
    show(fourRankedApps());
    overview().focusContent();
    press(Qt::Key_Right);
    EXPECT_TRUE(cards()[1]->hasFocus());
    press(Qt::Key_Return);
    EXPECT_EQ(window->selectedApp(), store().apps()[1].id);
    EXPECT_EQ(window->workspace(), Workspace::Keywords);
}

TEST_F(OverviewTest, AMoverIsSelectedByAClickAndItsHistoryOpenedByTwoOrByEnter)
{
    show(oneApp());
    const QPoint row =
        moversTable().visualRect(movers().index(1, int(MoverColumn::Keyword))).center();
    QTest::mouseClick(moversTable().viewport(), Qt::LeftButton, {}, row);
    EXPECT_EQ(moversTable().selectedRows(), std::vector{1});
    EXPECT_FALSE(Overlay::isOpenOver(window.get()));
    QTest::mouseDClick(moversTable().viewport(), Qt::LeftButton, {}, row);
    settle();
    ASSERT_TRUE(Overlay::isOpenOver(window.get()));
    EXPECT_TRUE(window->findChild<RankingHistorySheet *>());
    QTest::keyClick(window.get(), Qt::Key_Escape);
    settle();
    moversTable().setFocus();
    press(Qt::Key_Return);
    EXPECT_TRUE(Overlay::isOpenOver(window.get()));
}

TEST_F(OverviewTest, HeadersSort)
{
    show(oneApp());
    moversTable().horizontalHeader()->setSortIndicator(int(MoverColumn::Now), Qt::AscendingOrder);
    EXPECT_EQ(rows().constFirst(), QStringLiteral("faller | # 5 | # 15 | ↓ 10"));
    EXPECT_EQ(rows().constLast(), QStringLiteral("leaver | # 88 | Not ranked | Left results"))
        << "what does not rank comes last";
}

TEST_F(OverviewTest, OfMoreThanEightAppsTwoRowsOfCardsShow)
{
    show(manyRankedApps(100, 2, 3, now(), FakePopularity().version));
    EXPECT_EQ(cards().size(), 8);
    EXPECT_EQ(find<Button>("showAllApps")->text(), QStringLiteral("Show all 100 apps"));
    click("showAllApps");
    settle();
    EXPECT_EQ(cards().size(), 100);
    EXPECT_FALSE(isShown("showAllApps"));
    EXPECT_TRUE(cards()[0]->hasFocus());
}

TEST_F(OverviewTest, OneAppKeepsTheWidthOfACard)
{
    show(oneApp());
    EXPECT_EQ(cards().size(), 1);
    EXPECT_LT(cards()[0]->width(), 300);
    EXPECT_GE(cards()[0]->width(), 220);
}

TEST_F(OverviewTest, WithoutAnAppItInvitesToAddOne)
{
    show(PersistedState());
    EXPECT_EQ(find<EmptyState>("overviewEmpty")->content().action, QStringLiteral("Add App"));
    Q_EMIT find<EmptyState>("overviewEmpty")->actionTriggered();
    EXPECT_TRUE(Overlay::isOpenOver(window.get()));
    // Its card comes as soon as it is there.
    QTest::keyClick(window.get(), Qt::Key_Escape);
    store().addApp(appResult(101, "Tideline"), QStringLiteral("US"));
    settle();
    EXPECT_EQ(names(), QStringList{QStringLiteral("Tideline")});
    EXPECT_EQ(textOf("nothingMoved"), QStringLiteral("No checks to compare since yesterday."));
}

TEST_F(OverviewTest, SaysWhenNothingMoved)
{
    show({{"Lumen", "US", {{"stayer", "US", {7, 7}}}}});
    EXPECT_EQ(textOf("nothingMoved"), QStringLiteral("Nothing moved since yesterday."));
    EXPECT_FALSE(moversTable().isVisible());
}

TEST_F(OverviewTest, WhatWasNotMeasuredIsNotShownAsZero)
{
    show({{"Lumen", "US", {{"stayer", "US", {}}}}});
    EXPECT_EQ(cards()[0]->accessibleName(), QStringLiteral("Lumen, 1 keyword, not measured yet"));
    EXPECT_EQ(cards()[0]->findChild<QWidget *>(QStringLiteral("risenButton"))->accessibleName(),
              QStringLiteral("Lumen, — risen since yesterday"));
}

TEST_F(OverviewTest, InANarrowWindowWithALargeFontThePeriodsStandBelowTheToolbar)
{
    show(oneApp());
    EXPECT_TRUE(isShown("overviewPeriod"));
    QFont font = window->font();
    font.setPixelSize(qRound(font.pixelSize() * 1.5));
    window->setFont(font);
    window->resize(800, 500);
    settle();
    EXPECT_FALSE(isShown("overviewPeriod"));
    find<SegmentedControl>("overviewPeriodBelow")->choose(1);
    EXPECT_EQ(movers().period(), Period::Week);
    EXPECT_EQ(find<SegmentedControl>("overviewPeriod")->chosen(), 1);
}

TEST_F(OverviewTest, WhenMidnightPassesNothingHasMovedSinceYesterday)
{
    show(oneApp());
    ASSERT_EQ(movers().rowCount(), 4);
    world->clock->advance(Seconds(secondsPerDay));
    settle();
    EXPECT_EQ(movers().rowCount(), 0);
    EXPECT_EQ(textOf("nothingMoved"), QStringLiteral("No checks to compare since yesterday."));
    EXPECT_TRUE(cards()[0]->accessibleName().contains(QStringLiteral("not measured today")))
        << qPrintable(cards()[0]->accessibleName());
}

TEST_F(OverviewTest, MeasuringChangesCardsAndRowsInPlace)
{
    show(fourRankedApps());
    moversTable().selectRow(4);
    const QUuid selected = movers().entryAt(4).id;
    auto *scroll = find<QScrollArea>("overviewScroll");
    scroll->verticalScrollBar()->setValue(120);
    OverviewCard *card = cards()[0];
    const AppStanding before = card->standing();
    const QSignalSpy resets(&movers(), &QAbstractItemModel::modelReset);
    world->clock->advance(ASOStore::keywordRefreshTTL);
    rankAt(1);
    store().queueKeywordRefreshes({keyword("retro photo"), keyword("remove background")});
    settle();
    EXPECT_EQ(cards()[0], card);
    EXPECT_EQ(card->standing().inTop[0], before.inTop[0] + 1);
    EXPECT_EQ(moversTable().selectedRows().size(), 1U);
    EXPECT_EQ(movers().rowOf(selected), moversTable().selectedRows().front());
    EXPECT_EQ(scroll->verticalScrollBar()->value(), 120);
    EXPECT_EQ(resets.size(), 0);
    EXPECT_EQ(movers().entryAt(movers().rowOf(keyword("remove background").id)).movement,
              RankMovement::improved(11));
}

TEST_F(OverviewTest, RowsThatComeAboveLeaveWhatIsInViewWhereItIs)
{
    show(fourRankedApps());
    window->resize(1280, 500);
    settle();
    auto *scroll = find<QScrollArea>("overviewScroll");
    const int bottom = scroll->verticalScrollBar()->maximum();
    scroll->verticalScrollBar()->setValue(bottom);
    const int last = movers().rowCount() - 1;
    const QUuid id = movers().entryAt(last).id;
    const auto place = [&] {
        const QRect rect = moversTable().visualRect(movers().index(movers().rowOf(id), 0));
        return moversTable().viewport()->mapTo(window.get(), rect.topLeft()).y();
    };
    const int before = place();
    world->clock->advance(ASOStore::keywordRefreshTTL);
    rankAt(0);
    // It leaves the results, and so comes above all rows in view.
    store().queueKeywordRefreshes({keyword("retro photo")});
    settle();
    EXPECT_LT(movers().rowOf(keyword("retro photo").id), 3);
    EXPECT_EQ(place(), before);
}

TEST_F(OverviewTest, OnlyTheAppOfAMeasuredKeywordIsWorkedOutAgain)
{
    show(manyRankedApps(100, 2, 3, now(), FakePopularity().version));
    const QSignalSpy all(overview().findChild<RankOverview *>(), &RankOverview::appsChanged);
    const QSignalSpy one(overview().findChild<RankOverview *>(), &RankOverview::standingChanged);
    world->clock->advance(ASOStore::keywordRefreshTTL);
    store().queueKeywordRefreshes({store().trackedKeywords().constFirst()});
    settle();
    EXPECT_EQ(all.size(), 0);
    ASSERT_EQ(one.size(), 1);
    EXPECT_EQ(one[0][0].value<QUuid>(), store().apps().constFirst().id);
}

TEST_F(OverviewTest, AppsAndKeywordsComeAndGo)
{
    show(fourRankedApps());
    RemovedTracking removed = store().removeApp(store().apps()[2].id);
    settle();
    EXPECT_EQ(cards().size(), 3);
    EXPECT_EQ(movers().rowOf(keyword("mood journal").id) >= 0, true);
    for (int row = 0; row < movers().rowCount(); ++row)
        EXPECT_NE(movers().entryAt(row).appName, QStringLiteral("Orchard Budget"));
    store().restore(std::move(removed));
    settle();
    EXPECT_EQ(names()[2], QStringLiteral("Orchard Budget"));
    EXPECT_GE(movers().rowOf(keyword("haushaltsbuch").id), 0);
    store().removeKeyword(keyword("haushaltsbuch").id);
    settle();
    EXPECT_EQ(cards()[2]->standing().keywords, 26);
}

TEST_F(OverviewTest, F5MeasuresTheKeywordsOfAllApps)
{
    show(fourRankedApps());
    world->clock->advance(Seconds(secondsPerDay));
    world->client->searches.clear();
    QTest::keyClick(window.get(), Qt::Key_F5);
    settle();
    EXPECT_EQ(world->client->searches.size(), store().trackedKeywords().size());
}

TEST_F(OverviewTest, NothingIsWorkedOutWhileItIsHidden)
{
    open(stateOf(fourRankedApps(), now(), FakePopularity().version));
    window->show();
    settle();
    auto *standings = overview().findChild<RankOverview *>();
    EXPECT_TRUE(standings->apps().isEmpty());
    window->showWorkspace(Workspace::Overview);
    EXPECT_EQ(standings->apps().size(), 4);
    window->showWorkspace(Workspace::Keywords);
    store().removeApp(store().apps()[1].id);
    settle();
    EXPECT_EQ(standings->apps().size(), 4);
    window->showWorkspace(Workspace::Overview);
    EXPECT_EQ(standings->apps().size(), 3);
}

TEST_F(OverviewTest, MoversGiveUpTheSmallLineFirstThenTheEarlierRank)
{
    show(fourRankedApps());
    const auto isHidden = [this](MoverColumn column) {
        return moversTable().isColumnHidden(int(column));
    };
    EXPECT_FALSE(isHidden(MoverColumn::Line));
    window->resize(1080, 600);
    settle();
    EXPECT_TRUE(isHidden(MoverColumn::Line));
    EXPECT_FALSE(isHidden(MoverColumn::Before));
    window->resize(800, 500);
    settle();
    EXPECT_TRUE(isHidden(MoverColumn::Before));
    EXPECT_EQ(cards()[0]->y(), cards()[1]->y());
    EXPECT_GT(cards()[2]->y(), cards()[1]->y()) << "two abreast";
}

TEST_F(OverviewTest, TheRowsOfMoversAreReadCellByCell)
{
    show(oneApp());
    const auto read = [this](MoverColumn column) {
        return movers().index(0, int(column)).data(Qt::AccessibleTextRole).toString();
    };
    EXPECT_EQ(read(MoverColumn::Keyword), QStringLiteral("newcomer, Germany"));
    EXPECT_EQ(read(MoverColumn::Change), QStringLiteral("Entered results"));
    EXPECT_EQ(read(MoverColumn::Now), QStringLiteral("Rank 44"));
}

} // namespace
} // namespace veltrix
