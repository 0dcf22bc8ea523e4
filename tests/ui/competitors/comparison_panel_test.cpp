// SPDX-License-Identifier: GPL-3.0-or-later
// The page of a tracked competitor: where both rank, and what changed.
#include "ui/competitors/comparison_panel.h"

#include "ui/competitors/change_log_view.h"
#include "ui/competitors/competitors_view.h"
#include "ui/competitors/shared_keywords_table.h"
#include "ui/support/rival_test.h"

#include <QClipboard>
#include <QScrollArea>
#include <QScrollBar>

#include <map>

namespace veltrix
{
namespace
{

class ComparisonPanelTest : public RivalTest
{
protected:
    void play()
    {
        rival().playThreeMonths();
        openWindow();
        openPage();
    }
    void openPage()
    {
        window->showWorkspace(Workspace::Competitors);
        window->competitors().openResearch(201, text("US"), text("Foxglove Film Camera"));
        settle();
        waitForRead();
    }
    void waitForRead()
    {
        settleUntil([this] {
            return !isShown("changeLogWaiting") && !shows(page(), text("Reading the kept ranks…"));
        });
    }
    QWidget *page() { return window->competitors().research(); }
    SharedKeywordsTable *shared() { return find<SharedKeywordsTable>("sharedKeywords"); }
    SharedKeywordsModel *rows() { return static_cast<SharedKeywordsModel *>(shared()->model()); }
    QString label(const char *name) { return find<QLabel>(name)->text(); }
    QString sentence(int row)
    {
        QStringList cells;
        for (int column = 0; column < rows()->columnCount(); ++column)
            cells << rows()->index(row, column).data(Qt::AccessibleTextRole).toString();
        return cells.join(text(", "));
    }
    int rowOf(const char *keyword, const char *country = "US")
    {
        for (int row = 0; row < rows()->rowCount(); ++row) {
            if (rows()->entryAt(row).shared.id == rival().idOf(keyword, country))
                return row;
        }
        return -1;
    }
    QStringList log()
    {
        QStringList said;
        for (const QWidget *entry :
             page()->findChildren<QWidget *>(QStringLiteral("changeLogEntry")))
            said << entry->accessibleName();
        return said;
    }
    /// Of which keyword the history is open.
    QString openHistoryOf()
    {
        const QWidget *sheet = topSheet();
        return sheet && sheet->objectName() == text("historySheet") ? sheet->accessibleName()
                                                                    : QString();
    }
};

TEST_F(ComparisonPanelTest, ShowsWhereBothRankAndWhoLeads)
{
    play();
    EXPECT_EQ(label("comparisonLead"), text("You lead on 5 of 11 keywords"));
    EXPECT_EQ(rows()->rowCount(), 11);
    EXPECT_EQ(sentence(0), text("analog camera, United States, your rank 11, their rank 3, "
                                "they lead by 8"));
    EXPECT_EQ(sentence(rowOf("photo editor", "CA")),
              text("photo editor, Canada, your rank 41, their rank 58, you lead by 17"));
    EXPECT_FALSE(isShown("comparisonMessage"));
    EXPECT_FALSE(isShown("comparisonOlder"));
}

TEST_F(ComparisonPanelTest, TheChangeLogGoesDownToTheDayOfTracking)
{
    play();
    EXPECT_EQ(log(),
              (QStringList{text("Nov 19, new version, 5.1.3 to 5.2"),
                           text("Nov 4, new price, $1.99 to Free"),
                           text("Oct 23, new version, 5.1.2 to 5.1.3"),
                           text("Oct 9, new name, Foxglove Camera to Foxglove Film Camera"),
                           text("Oct 9, new icon"),
                           text("Aug 21, tracked, ranks and changes are kept since then.")}));
}

TEST_F(ComparisonPanelTest, TheLogStandsBesideTheTableOrInANarrowWindowBelow)
{
    play();
    window->resize(1280, 800);
    settle();
    const auto top = [this](const char *name) {
        return find(name)->mapTo(window.get(), QPoint()).y();
    };
    EXPECT_LT(top("changeLog"), top("sharedKeywords"));
    window->resize(1100, 800);
    settle();
    window->grab();
    EXPECT_GT(top("changeLog"), top("sharedKeywords") + shared()->height() - 1);
}

TEST_F(ComparisonPanelTest, TheFactsStandAbreastOrInANarrowWindowTwoByTwo)
{
    play();
    const auto rows = [this] {
        window->grab();
        std::map<int, int> count;
        for (const char *fact :
             {"figureRating", "figureRatings", "figureCoverage", "figureUpdated"})
            ++count[find(fact)->y()];
        std::vector<int> inEach;
        for (const auto &[y, facts] : count)
            inEach.push_back(facts);
        return inEach;
    };
    EXPECT_EQ(rows(), std::vector{4});
    window->resize(1100, 800);
    settle();
    EXPECT_EQ(rows(), (std::vector{2, 2}));
    window->resize(800, 500);
    settle();
    EXPECT_EQ(rows(), (std::vector{2, 2}));
}

TEST_F(ComparisonPanelTest, OfACompetitorJustTrackedRanksAreKeptFromTheNextMeasurementOn)
{
    rival().rival.trackName = text("Foxglove Film Camera");
    rival().track();
    openPage();
    EXPECT_EQ(label("comparisonMessage"),
              text("Ranks of Foxglove Film Camera are kept from the next measurement on."));
    EXPECT_EQ(log(), QStringList{text("Aug 21, tracked, ranks and changes are kept since then.")});
    EXPECT_FALSE(isShown("compareOverTime"));
    EXPECT_FALSE(isShown("sharedKeywords"));
}

TEST_F(ComparisonPanelTest, WhereNoKeywordHasBothItSaysSo)
{
    rival().track();
    rival().rank({"retro photo", "US", 4, 0});
    rival().measure("retro photo");
    openPage();
    EXPECT_EQ(label("comparisonMessage"), text("No keyword yet where both rank."));
}

TEST_F(ComparisonPanelTest, AHistoryThatCannotBeReadIsSaidWhereTheTableWouldBe)
{
    rival().playThreeMonths();
    window.reset();
    rival().damageHistory();
    openWindow();
    openPage();
    EXPECT_TRUE(isShown("comparisonFailure"));
    EXPECT_EQ(find<Banner>("comparisonFailure")->message(), text("The kept ranks can't be read."));
    EXPECT_FALSE(find<Banner>("comparisonFailure")->detail().isEmpty());
    EXPECT_TRUE(isShown("changeLogFailure"));
    EXPECT_FALSE(isShown("sharedKeywords"));
    // The rest of the page works.
    EXPECT_TRUE(shows(page(), text("Foxglove Film Camera")));
    EXPECT_TRUE(isShown("keywordChecks"));
    click("trackCompetitor");
    EXPECT_FALSE(isShown("comparisonPanel"));
}

TEST_F(ComparisonPanelTest, ADoubleClickOrEnterOpensTheHistoryOfTheRow)
{
    play();
    QSignalSpy wanted(&window->competitors(), &CompetitorsView::historyRequested);
    const QRect cell = shared()->visualRect(rows()->index(2, 0));
    QTest::mouseDClick(shared()->viewport(), Qt::LeftButton, {}, cell.center());
    ASSERT_EQ(wanted.size(), 1);
    EXPECT_EQ(wanted[0][0].value<DashboardKeywordRow>().keyword, text("film camera filter"));
    EXPECT_EQ(wanted[0][1].value<QUuid>(), store().competitorsOfApp(appId()).constFirst().id);
    EXPECT_TRUE(topSheet());
    press(Qt::Key_Escape);
    shared()->setFocus(Qt::TabFocusReason);
    shared()->setCurrentIndex(rows()->index(4, 0));
    press(Qt::Key_Return);
    ASSERT_EQ(wanted.size(), 2);
    EXPECT_EQ(wanted[1][0].value<DashboardKeywordRow>().country, text("CA"));
}

TEST_F(ComparisonPanelTest, CompareOverTimeDoesSoForTheSelectedRowElseTheFirst)
{
    play();
    QSignalSpy wanted(&window->competitors(), &CompetitorsView::historyRequested);
    click("compareOverTime");
    press(Qt::Key_Escape);
    shared()->QTableView::selectRow(rowOf("vintage filter"));
    click("compareOverTime");
    ASSERT_EQ(wanted.size(), 2);
    EXPECT_EQ(wanted[0][0].value<DashboardKeywordRow>().keyword, text("analog camera"));
    EXPECT_EQ(wanted[1][0].value<DashboardKeywordRow>().keyword, text("vintage filter"));
}

TEST_F(ComparisonPanelTest, ControlCCopiesTheSelectedRows)
{
    play();
    shared()->setFocus();
    shared()->QTableView::selectRow(rowOf("film camera filter"));
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text().trimmed(),
              text("Keyword\tStorefront\tYour rank\tTheir rank\tLeads\n"
                   "film camera filter\tUS\t2nd\t# 5\tYou by 3"));
}

TEST_F(ComparisonPanelTest, AMeasurementChangesItsRowAndNothingElse)
{
    play();
    shared()->QTableView::selectRow(rowOf("retro photo"));
    auto *scroll = find<QScrollArea>("researchPage")->verticalScrollBar();
    scroll->setValue(60);
    const int before = scroll->value();
    rival().goTo(11, 23);
    rival().rank({"retro photo", "US", 2, 6});
    rival().measure("retro photo");
    settleUntil([this] { return sentence(rowOf("retro photo")).contains(text("you lead by 4")); });
    EXPECT_EQ(label("comparisonLead"), text("You lead on 6 of 11 keywords"));
    EXPECT_FALSE(isShown("comparisonOlder")) << "what is kept came behind the measurement";
    EXPECT_EQ(scroll->value(), before);
    EXPECT_EQ(shared()->selectedRows(), std::vector{rowOf("retro photo")});
}

TEST_F(ComparisonPanelTest, ARemovedKeywordGoesAndComesBackWithUndo)
{
    play();
    const RemovedTracking removed = store().removeKeyword(rival().idOf("retro photo"));
    settleUntil([this] { return rows()->rowCount() == 10; });
    EXPECT_EQ(label("comparisonLead"), text("You lead on 5 of 10 keywords"));
    store().restore(removed);
    settleUntil([this] { return rows()->rowCount() == 11; });
}

TEST_F(ComparisonPanelTest, AnUntrackedCompetitorTakesItsRanksWithItAndUndoBringsThemBack)
{
    play();
    const QUuid id = store().competitorsOfApp(appId()).constFirst().id;
    const RemovedTracking removed = store().removeCompetitor(id);
    settle();
    EXPECT_FALSE(isShown("comparisonPanel"));
    EXPECT_TRUE(isShown("keywordChecks"));
    store().restore(removed);
    settleUntil([this] { return isShown("sharedKeywords"); });
    waitForRead();
    EXPECT_EQ(label("comparisonLead"), text("You lead on 5 of 11 keywords"));
    EXPECT_EQ(log().size(), 6);
}

TEST_F(ComparisonPanelTest, TrackedAnewItBeginsAnew)
{
    play();
    click("trackCompetitor");
    settle();
    window.reset();
    rival().restart();
    openWindow();
    openPage();
    EXPECT_FALSE(isShown("comparisonPanel"));
    click("trackCompetitor");
    settle();
    waitForRead();
    EXPECT_EQ(label("comparisonMessage"),
              text("Ranks of Foxglove Film Camera are kept from the next measurement on."));
    EXPECT_EQ(log(), QStringList{text("Nov 22, tracked, ranks and changes are kept since then.")});
    rival().goTo(11, 23);
    rival().measure("retro photo");
    settleUntil([this] { return isShown("sharedKeywords"); });
    EXPECT_EQ(label("comparisonLead"), text("You lead on 0 of 1 keyword"));
}

TEST_F(ComparisonPanelTest, AnAppTrackedInThreeStorefrontsIsOneApp)
{
    rival().track("CA");
    rival().track("GB");
    play();
    EXPECT_EQ(store().competitorsOfApp(appId()).size(), 3);
    EXPECT_EQ(label("comparisonLead"), text("You lead on 5 of 11 keywords"));
    EXPECT_EQ(log().size(), 6) << log().join(u'\n').toStdString();
    EXPECT_TRUE(log().contains(text("Nov 4, new price in United States, $1.99 to Free")));
    // Of two that are untracked nothing is missing.
    store().removeCompetitor(store().competitorsOfApp(appId()).constFirst().id);
    store().removeCompetitor(store().competitorsOfApp(appId()).constFirst().id);
    settle();
    waitForRead();
    EXPECT_EQ(label("comparisonLead"), text("You lead on 5 of 11 keywords"));
}

TEST_F(ComparisonPanelTest, AnotherAppOfTheUsersHasNotTrackedIt)
{
    play();
    window->selectApp(store().apps()[1].id);
    settle();
    EXPECT_FALSE(isShown("comparisonPanel"));
    window->selectApp(appId());
    settle();
    waitForRead();
    EXPECT_EQ(label("comparisonLead"), text("You lead on 5 of 11 keywords"));
}

TEST_F(ComparisonPanelTest, ANameFromRightToLeftTurnsNothingAroundIt)
{
    rival().track();
    rival().measure("retro photo");
    rival().goTo(8, 25);
    rival().rival.trackName = text("\u202Eעורך\u0007 תמונות\n");
    rival().measure("retro photo");
    openPage();
    EXPECT_EQ(log().constFirst(),
              text("Aug 25, new name, Foxglove Camera to \u2068עורך תמונות\u2069"));
}

TEST_F(ComparisonPanelTest, OfALongLogTheNewestShowUntilAllAreWanted)
{
    rival().track();
    for (int day = 1; day <= 14; ++day) {
        rival().goTo(9, day);
        rival().rival.version = QStringLiteral("6.%1").arg(day);
        rival().measure("retro photo");
    }
    openPage();
    EXPECT_EQ(log().size(), qsizetype(ChangeLogView::firstEntries));
    EXPECT_EQ(find<Button>("changeLogMore")->text(), text("Show all 14 entries"));
    click("changeLogMore");
    EXPECT_EQ(log().size(), 14);
    EXPECT_FALSE(isShown("changeLogMore"));
    EXPECT_EQ(log().constLast(), text("Aug 21, tracked, ranks and changes are kept since then."));
}

} // namespace
} // namespace veltrix
