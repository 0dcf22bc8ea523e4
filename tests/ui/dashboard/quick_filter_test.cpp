// SPDX-License-Identifier: GPL-3.0-or-later
// The quick filters over the keyword table, as values and in the window.
#include "ui/support/ui_test.h"

#include "ui/dashboard/keyword_filter.h"
#include "ui/dashboard/quick_filter_bar.h"

#include <QAccessible>

namespace veltrix
{
namespace
{

// As values

constexpr std::int64_t today = 9'456;

KeywordEntry measuredEntry()
{
    KeywordEntry entry;
    entry.row.lastUpdate = startOfUtcDay(today) + Seconds(10);
    entry.row.position = 40;
    return entry;
}

QString matchesOf(const KeywordEntry &entry)
{
    QStringList titles;
    for (const QuickFilter filter : quickFilters) {
        if (quickFilterMatches(entry, today).test(size_t(filter)))
            titles << quickFilterTitle(filter);
    }
    return titles.join(u'|');
}

QString afterMovement(RankMovement movement)
{
    KeywordEntry entry = measuredEntry();
    entry.movement = movement;
    return matchesOf(entry);
}

TEST(QuickFilterTest, TheTopTenEndsAtRankTen)
{
    KeywordEntry entry = measuredEntry();
    entry.row.position = 10;
    EXPECT_EQ(matchesOf(entry), QStringLiteral("All|Top 10"));
    entry.row.position = 11;
    EXPECT_EQ(matchesOf(entry), QStringLiteral("All"));
}

TEST(QuickFilterTest, EnteringTheResultsIsARiseAndLeavingThemAFall)
{
    EXPECT_EQ(afterMovement(RankMovement::improved(1)), QStringLiteral("All|Risen"));
    EXPECT_EQ(afterMovement(RankMovement::entered()), QStringLiteral("All|Risen"));
    EXPECT_EQ(afterMovement(RankMovement::declined(1)), QStringLiteral("All|Fallen"));
    EXPECT_EQ(afterMovement(RankMovement::left()), QStringLiteral("All|Fallen"));
    EXPECT_EQ(afterMovement(RankMovement::unchanged()), QStringLiteral("All"));
    EXPECT_EQ(afterMovement(RankMovement::stillUnranked()), QStringLiteral("All"));
}

TEST(QuickFilterTest, OnlyWhatWasMeasuredIsNotRanked)
{
    KeywordEntry entry = measuredEntry();
    entry.row.position.reset();
    EXPECT_EQ(matchesOf(entry), QStringLiteral("All|Not ranked"));
    entry.row.awaitingMetrics = true;
    EXPECT_EQ(matchesOf(entry), QStringLiteral("All|Not measured today"));
}

TEST(QuickFilterTest, TodayIsTheUtcDay)
{
    KeywordEntry entry = measuredEntry();
    entry.row.lastUpdate = startOfUtcDay(today) - Seconds(1);
    EXPECT_EQ(matchesOf(entry), QStringLiteral("All|Not measured today"));
    entry.row.lastUpdate = startOfUtcDay(today);
    EXPECT_EQ(matchesOf(entry), QStringLiteral("All"));
    entry.row.lastUpdate = startOfUtcDay(today + 1) + Seconds(60);
    EXPECT_EQ(matchesOf(entry), QStringLiteral("All")) << "by a clock that is a little ahead";
}

TEST(QuickFilterTest, EveryFilterHasANameOfItsOwnAndSaysThatNothingPassed)
{
    for (const QuickFilter filter : quickFilters) {
        EXPECT_EQ(quickFilterOf(QLatin1String(quickFilterId(filter))), filter);
        if (filter == QuickFilter::All)
            continue;
        EXPECT_FALSE(nothingPassedTitle(filter).isEmpty());
        EXPECT_FALSE(nothingPassedText(filter).isEmpty());
    }
    EXPECT_EQ(quickFilterOf(QStringLiteral("none")), std::nullopt);
    EXPECT_EQ(nothingPassedText(QuickFilter::Fallen),
              QStringLiteral("No keyword fell since the check before."));
}

// In the window

class QuickFilterWindowTest : public UiTest
{
protected:
    QuickFilterWindowTest() { open(); }

    QAbstractButton *button(QuickFilter filter)
    {
        return find<QAbstractButton>(qPrintable(QStringLiteral("quickFilter%1").arg(int(filter))));
    }
    void choose(QuickFilter filter) { QTest::mouseClick(button(filter), Qt::LeftButton); }
    QuickFilter chosen() { return find<QuickFilterBar>("quickFilterBar")->chosen(); }
    QString counts()
    {
        QStringList texts;
        for (const int count : model().quickFilterCounts())
            texts << QString::number(count);
        return texts.join(u' ');
    }
    QString shown() { return shownKeywords().join(u'|'); }
    QStringList visibleFilters()
    {
        QStringList titles;
        for (const QuickFilter filter : quickFilters) {
            if (button(filter)->isVisible())
                titles << button(filter)->text();
        }
        return titles;
    }
    EmptyState::Content empty() { return find<EmptyState>("keywordsEmpty")->content(); }
    /// Measures all keywords of the app anew, on that rank.
    void measureAll(std::optional<int> rank)
    {
        world->client->results = sampleResults();
        for (qsizetype i = 0; i < world->client->results.size(); ++i)
            world->client->results[i].trackId = 5'000 + i;
        if (rank)
            world->client->results[*rank - 1].trackId = store().apps().first().trackId;
        world->clock->advance(Seconds(secondsPerDay));
        store().queueKeywordRefreshes(store().trackedKeywords());
        settle();
    }
    QAccessibleInterface *seen(QWidget *widget)
    {
        return QAccessible::queryAccessibleInterface(widget);
    }
};

TEST_F(QuickFilterWindowTest, EachShowsItsKeywordsWithTheirCountBesideIt)
{
    EXPECT_EQ(counts(), QStringLiteral("11 4 4 2 1 2"));
    choose(QuickFilter::Top10);
    EXPECT_EQ(shown(),
              QStringLiteral("collage maker|film camera filter|light leak effect|retro photo"));
    choose(QuickFilter::Risen);
    EXPECT_EQ(shown(),
              QStringLiteral("bildbearbeitung|collage maker|light leak effect|photo editor"));
    choose(QuickFilter::Fallen);
    EXPECT_EQ(shown(), QStringLiteral("passport photo booth|remove background"));
    choose(QuickFilter::NotRanked);
    EXPECT_EQ(shown(), QStringLiteral("passport photo booth"));
    choose(QuickFilter::NotMeasuredToday);
    EXPECT_EQ(shown(), QStringLiteral("grain filter|polaroid frame"));
    choose(QuickFilter::All);
    EXPECT_EQ(model().rowCount(), 11);
}

TEST_F(QuickFilterWindowTest, WorksTogetherWithSearchAndStorefrontWhichItsCountsFollow)
{
    choose(QuickFilter::Risen);
    page().filter().setSearch(QStringLiteral("photo"));
    EXPECT_EQ(shown(), QStringLiteral("photo editor"));
    EXPECT_EQ(counts(), QStringLiteral("4 1 1 1 1 0"));
    page().filter().setSearch(QString());
    page().filter().setStorefront(QStringLiteral("DE"));
    EXPECT_EQ(shown(), QStringLiteral("bildbearbeitung"));
    EXPECT_EQ(counts(), QStringLiteral("1 0 1 0 0 0"));
}

TEST_F(QuickFilterWindowTest, IsOneTabStopInWhichArrowsChoose)
{
    find("moreButton")->setFocus(Qt::TabFocusReason);
    press(Qt::Key_Tab);
    ASSERT_EQ(QApplication::focusWidget(), button(QuickFilter::All));
    press(Qt::Key_Right);
    press(Qt::Key_Right);
    EXPECT_EQ(QApplication::focusWidget(), button(QuickFilter::Risen));
    EXPECT_EQ(chosen(), QuickFilter::Risen);
    EXPECT_EQ(model().rowCount(), 4);
    press(Qt::Key_End);
    EXPECT_EQ(chosen(), QuickFilter::NotMeasuredToday);
    press(Qt::Key_Left);
    EXPECT_EQ(chosen(), QuickFilter::NotRanked);
    press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), find("tagFilter"));
    press(Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), button(QuickFilter::NotRanked));
}

TEST_F(QuickFilterWindowTest, EscapeInTheTableReturnsToAll)
{
    choose(QuickFilter::Fallen);
    selectKeywords({QStringLiteral("remove background")});
    press(Qt::Key_Escape);
    EXPECT_EQ(chosen(), QuickFilter::All);
    EXPECT_EQ(model().rowCount(), 11);
    EXPECT_EQ(table().selectedIds().size(), 1) << "and the row is still chosen";
    EXPECT_EQ(QApplication::focusWidget(), &table());
}

TEST_F(QuickFilterWindowTest, EscapeInTheSearchFieldLeavesItAlone)
{
    choose(QuickFilter::Fallen);
    type("keywordSearch", QString());
    press(Qt::Key_Escape);
    EXPECT_EQ(chosen(), QuickFilter::Fallen);
}

TEST_F(QuickFilterWindowTest, WithoutRowsItSaysWhichItIsAndOffersAll)
{
    choose(QuickFilter::NotRanked);
    measureAll(1);
    EXPECT_TRUE(isShown("keywordsEmpty"));
    EXPECT_EQ(empty().title, QStringLiteral("No unranked keywords"));
    choose(QuickFilter::Fallen);
    EXPECT_EQ(empty().text, QStringLiteral("No keyword fell since the check before."));
    EXPECT_EQ(empty().action, QStringLiteral("Show all keywords"));
    click("keywordsEmptyAction");
    EXPECT_EQ(chosen(), QuickFilter::All);
    EXPECT_TRUE(isShown("keywordTable"));
}

TEST_F(QuickFilterWindowTest, WithoutRowsForASearchItNamesBoth)
{
    page().filter().setSearch(QStringLiteral("collage"));
    choose(QuickFilter::Fallen);
    EXPECT_EQ(empty().text, QStringLiteral("No keyword fell since the check before. Search and "
                                           "storefront filter count, too."));
    page().filter().setSearch(QStringLiteral("zzz"));
    EXPECT_EQ(empty().title, QStringLiteral("No matching keywords"))
        << "the search alone leaves nothing";
}

TEST_F(QuickFilterWindowTest, IsThereAgainAfterARestart)
{
    choose(QuickFilter::Risen);
    reopen();
    EXPECT_EQ(chosen(), QuickFilter::Risen);
    EXPECT_EQ(model().rowCount(), 4);
    choose(QuickFilter::All);
    reopen();
    EXPECT_EQ(chosen(), QuickFilter::All);
    EXPECT_EQ(model().rowCount(), 11);
}

TEST_F(QuickFilterWindowTest, TabStopsAtTheChosenOneBeforeAnyHasHadTheFocus)
{
    choose(QuickFilter::Risen);
    reopen();
    find("moreButton")->setFocus(Qt::TabFocusReason);
    press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), button(QuickFilter::Risen));
    press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), find("tagFilter"));
}

TEST_F(QuickFilterWindowTest, AStartDoesNotSaveWhatItHasReadOnlyJustNow)
{
    choose(QuickFilter::Risen);
    reopen();
    const QString before = std::exchange(world->preferences.columns, QStringLiteral("as it was"));
    world->clock->advance(Seconds(2));
    settle();
    EXPECT_EQ(world->preferences.columns, QStringLiteral("as it was"));
    world->preferences.columns = before;
}

TEST_F(QuickFilterWindowTest, ResettingTheColumnsLeavesIt)
{
    choose(QuickFilter::Risen);
    QMenu menu;
    page().fillColumnMenu(&menu);
    menu.actions().last()->trigger();
    EXPECT_EQ(chosen(), QuickFilter::Risen);
    EXPECT_TRUE(world->preferences.columns.contains(QStringLiteral("filter risen")));
}

TEST_F(QuickFilterWindowTest, AnotherPartOfTheWindowOpensItWithoutTheOtherFilters)
{
    type("keywordSearch", QStringLiteral("collage"));
    press(Qt::Key_Return);
    page().filter().setStorefront(QStringLiteral("US"));
    page().showOnly(QuickFilter::Fallen);
    EXPECT_EQ(shown(), QStringLiteral("passport photo booth|remove background"));
    EXPECT_TRUE(find<TextField>("keywordSearch")->text().isEmpty());
    EXPECT_EQ(chosen(), QuickFilter::Fallen);
}

TEST_F(QuickFilterWindowTest, ACountFollowsAMeasurementAtOnceAndTheRowsWhenMeasuringEnds)
{
    choose(QuickFilter::NotMeasuredToday);
    world->client->holds = true;
    QList<TrackedKeyword> unmeasured;
    for (int row = 0; row < model().rowCount(); ++row)
        unmeasured << *store().trackedKeyword(model().entryAt(row).row.id);
    store().queueKeywordRefreshes(unmeasured);
    settle();
    world->client->release();
    settle();
    EXPECT_EQ(model().quickFilterCounts()[size_t(QuickFilter::NotMeasuredToday)], 1);
    EXPECT_EQ(model().rowCount(), 2) << "nothing moves under the user's hand";
    world->client->release();
    settle();
    EXPECT_EQ(model().rowCount(), 0);
    EXPECT_EQ(empty().text, QStringLiteral("Every keyword has been measured today."));
}

TEST_F(QuickFilterWindowTest, AKeywordThatPassesComesAtOnceIntoAnEmptyTable)
{
    measureAll(1);
    choose(QuickFilter::Fallen);
    ASSERT_EQ(model().rowCount(), 0);
    world->clock->advance(Seconds(secondsPerDay));
    world->client->results[0].trackId = 7;
    world->client->holds = true;
    store().queueKeywordRefreshes(store().trackedKeywords());
    world->client->release();
    settle();
    EXPECT_EQ(model().rowCount(), 1);
    EXPECT_TRUE(isShown("keywordTable"));
    world->client->holds = false;
    store().stopKeywordRefreshes();
    settle();
}

TEST_F(QuickFilterWindowTest, AtMidnightUtcNothingHasBeenMeasuredToday)
{
    choose(QuickFilter::NotMeasuredToday);
    EXPECT_EQ(model().rowCount(), 2);
    // The clock of these windows starts at noon.
    world->clock->advance(Seconds(12 * 3'600 - 60));
    EXPECT_EQ(model().rowCount(), 2);
    world->clock->advance(Seconds(120));
    EXPECT_EQ(counts(), QStringLiteral("11 4 4 2 1 11"));
    EXPECT_EQ(model().rowCount(), 11);
}

TEST_F(QuickFilterWindowTest, CountsFollowWhatIsAddedRemovedAndPutBack)
{
    store().addTrackedKeyword(*window->selectedApp(), QStringLiteral("new"), QStringLiteral("US"));
    settle();
    EXPECT_EQ(counts(), QStringLiteral("12 4 4 2 1 3"));
    const QUuid id = model().entryAt(model().rowCount() - 1).row.id;
    const RemovedTracking removed = store().removeKeyword(id);
    settle();
    EXPECT_EQ(counts().left(2), QStringLiteral("11"));
    store().restore(removed);
    settle();
    EXPECT_EQ(counts(), QStringLiteral("12 4 4 2 1 3"));
}

TEST_F(QuickFilterWindowTest, CountsKeptByChangesAreThoseOfAFreshCount)
{
    for (const std::optional<int> rank :
         {std::optional(3), std::optional(1), std::optional<int>()}) {
        measureAll(rank);
        const QString kept = counts();
        KeywordTableModel fresh(store());
        fresh.setApp(window->selectedApp());
        QStringList counted;
        for (const int count : fresh.quickFilterCounts())
            counted << QString::number(count);
        EXPECT_EQ(kept, counted.join(u' '));
    }
}

TEST_F(QuickFilterWindowTest, ReadsAsOneChoiceOfSix)
{
    choose(QuickFilter::Top10);
    QAccessibleInterface *top = seen(button(QuickFilter::Top10));
    EXPECT_EQ(top->text(QAccessible::Name), QStringLiteral("Top 10, 4 keywords, 2 of 6"));
    EXPECT_EQ(top->role(), QAccessible::RadioButton);
    EXPECT_TRUE(top->state().checked);
    EXPECT_FALSE(seen(button(QuickFilter::Risen))->state().checked);
    EXPECT_EQ(seen(button(QuickFilter::NotRanked))->text(QAccessible::Name),
              QStringLiteral("Not ranked, 1 keyword, 5 of 6"));
    EXPECT_EQ(seen(find("quickFilters"))->role(), QAccessible::Grouping);
    // Assistive technology toggles without a key or a click.
    seen(button(QuickFilter::Fallen))
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_EQ(chosen(), QuickFilter::Fallen);
}

TEST_F(QuickFilterWindowTest, WhatDoesNotFitIsBehindMoreAndInReachOfTheArrows)
{
    window->resize(1280, 800);
    settle();
    EXPECT_EQ(visibleFilters().size(), 6);
    EXPECT_FALSE(isShown("moreQuickFilters"));
    window->resize(800, 500);
    settle();
    const QStringList few = visibleFilters();
    EXPECT_LT(few.size(), 6);
    EXPECT_EQ(few.first(), QStringLiteral("All"));
    click("moreQuickFilters");
    auto *menu = find<QMenu>("quickFilterMenu");
    EXPECT_EQ(menu->actions().size(), 6 - few.size());
    EXPECT_EQ(menu->actions().last()->text(), QStringLiteral("Not measured today\t2"));
    menu->actions().last()->trigger();
    menu->close();
    settle();
    EXPECT_EQ(chosen(), QuickFilter::NotMeasuredToday);
    EXPECT_EQ(visibleFilters().last(), QStringLiteral("Not measured today"))
        << "the one that is taken keeps its place";
    const QWidget *bar = find("quickFilterBar");
    EXPECT_LE(find("moreQuickFilters")->geometry().right(), bar->width());
    button(QuickFilter::NotMeasuredToday)->setFocus();
    press(Qt::Key_Left);
    EXPECT_EQ(chosen(), QuickFilter::NotRanked);
    EXPECT_EQ(QApplication::focusWidget(), button(QuickFilter::NotRanked));
    EXPECT_TRUE(button(QuickFilter::NotRanked)->isVisible());
    press(Qt::Key_Home);
    EXPECT_EQ(chosen(), QuickFilter::All);
}

TEST_F(QuickFilterWindowTest, StandsOnlyOverKeywords)
{
    EXPECT_TRUE(isShown("quickFilterBar"));
    window->selectApp(store().apps().last().id);
    settle();
    EXPECT_FALSE(isShown("quickFilterBar")) << "there is none to choose from";
}

} // namespace
} // namespace veltrix
