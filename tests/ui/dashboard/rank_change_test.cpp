// SPDX-License-Identifier: GPL-3.0-or-later
// Change over time in the keyword table: what its columns say, and how they follow the store.
#include "ui/support/ui_test.h"

#include "ui/support/painted_texts.h"
#include "ui_kit/text/date_texts.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>

namespace veltrix
{
namespace
{

// As values

constexpr std::int64_t today = 9'456;

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

TEST(RankChange, NoChangeIsZeroAndNoEarlierCheckIsADash)
{
    EXPECT_EQ(changeText(RankMovement::improved(6)), text("↑ 6"));
    EXPECT_EQ(changeText(RankMovement::declined(4)), text("↓ 4"));
    EXPECT_EQ(changeText(RankMovement::unchanged()), text("0"));
    EXPECT_EQ(changeText(RankMovement::stillUnranked()), text("0"));
    EXPECT_EQ(changeText(RankMovement::entered()), text("Entered"));
    EXPECT_EQ(changeText(RankMovement::left()), text("Left"));
    EXPECT_EQ(changeText(std::nullopt), text("—"));
}

TEST(RankChange, IsCopiedAsANumberThatCanBeCalculatedWith)
{
    EXPECT_EQ(changeValue(RankMovement::improved(6)), text("6"));
    EXPECT_EQ(changeValue(RankMovement::declined(4)), text("-4"));
    EXPECT_EQ(changeValue(RankMovement::unchanged()), text("0"));
    EXPECT_EQ(changeValue(RankMovement::left()), text("Left"));
    EXPECT_EQ(changeValue(std::nullopt), QString());
}

TEST(RankChange, IsReadAsWords)
{
    EXPECT_EQ(changeSentence(RankMovement::improved(6), 7), text("up 6 in 7 days"));
    EXPECT_EQ(changeSentence(RankMovement::declined(2), 30), text("down 2 in 30 days"));
    EXPECT_EQ(changeSentence(RankMovement::unchanged(), 7), text("no change in 7 days"));
    EXPECT_EQ(changeSentence(RankMovement::entered(), 7), text("entered the results in 7 days"));
    EXPECT_EQ(changeSentence(RankMovement::left(), 7), text("left the results in 7 days"));
    EXPECT_EQ(changeSentence(std::nullopt, 30), text("no check 30 days ago"));
}

TEST(RankChange, SortsDeparturesThenFallsThenRisesThenEntriesAndWhatIsUnknownLast)
{
    const std::vector<std::optional<RankMovement>> order{
        RankMovement::left(),      RankMovement::declined(99), RankMovement::declined(1),
        RankMovement::unchanged(), RankMovement::improved(1),  RankMovement::improved(99),
        RankMovement::entered()};
    for (size_t i = 1; i < order.size(); ++i)
        EXPECT_LT(compare(changeKey(order[i - 1]), changeKey(order[i]), Qt::AscendingOrder), 0)
            << i;
    for (const Qt::SortOrder direction : {Qt::AscendingOrder, Qt::DescendingOrder})
        EXPECT_GT(compare(changeKey(std::nullopt), changeKey(order.back()), direction), 0);
}

TEST(RankChange, TheDayOfTheBestHasItsYearWhenThatIsAnother)
{
    const Date day = startOfUtcDay(today);
    const auto year = calendarDay(day).year();
    EXPECT_FALSE(bestDayText({today, 3}, today).contains(QString::number(year)));
    EXPECT_TRUE(bestDayText({today - 400, 3}, today)
                    .contains(QString::number(calendarDay(startOfUtcDay(today - 400)).year())));
}

TEST(RankChange, ABestOfWhichOlderMeasurementsMayKnowMoreIsNotTold)
{
    RankDays days(today);
    days.add({today, 12});
    EXPECT_EQ(RankChanges::of(days).best, (RankCheck{today, 12}));
    EXPECT_EQ(changeHint(RankChanges::of(days)), QString());
    days.setWhole(false);
    EXPECT_EQ(RankChanges::of(days).best, std::nullopt);
    EXPECT_NE(changeHint(RankChanges::of(days)), QString());
}

// In the window

/// Days ago and rank; 0 for a check that found nothing.
using Past = std::vector<std::pair<int, int>>;

class RankChangeWindowTest : public UiTest
{
protected:
    RankChangeWindowTest()
    {
        PersistedState state = sampleState(VirtualClock().now(), FakePopularity().version);
        addPast(state, "collage maker", {{7, 15}, {30, 34}, {20, 8}});
        addPast(state, "retro photo", {{8, 4}, {31, 0}});
        addPast(state, "passport photo booth", {{7, 50}});
        addPast(state, "photo editor", {{9, 30}});
        open(state);
        for (const KeywordColumn column : changes)
            table().setColumnVisible(column, true);
        settle();
    }

    static constexpr std::array changes{KeywordColumn::In7Days, KeywordColumn::In30Days,
                                        KeywordColumn::Best};

    static void addPast(PersistedState &state, const char *keyword, const Past &past)
    {
        for (size_t i = 0, count = state.snapshots.size(); i < count; ++i) {
            const KeywordSnapshot &newest = *state.snapshots[i];
            // The sample has one of today and perhaps one of the day before.
            if (newest.keyword != QString::fromUtf8(keyword) ||
                utcDay(newest.fetchedAt) != utcDay(VirtualClock().now()))
                continue;
            for (const auto &[daysAgo, rank] : past) {
                auto older = std::make_shared<KeywordSnapshot>(newest);
                older->id = QUuid::createUuidV5(newest.id, QByteArray::number(daysAgo));
                older->fetchedAt = newest.fetchedAt - Seconds(daysAgo * secondsPerDay);
                older->position = rank > 0 ? std::optional<std::int64_t>(rank) : std::nullopt;
                state.snapshots.push_back(std::move(older));
            }
            return;
        }
        FAIL() << keyword;
    }
    QStringList painted(const char *keyword, KeywordColumn column)
    {
        const int row = int(shownKeywords().indexOf(QString::fromUtf8(keyword)));
        const QRect cell = table().visualRect(model().index(row, int(column)));
        QStringList texts;
        for (const PaintedText &found : paintedTexts(table().viewport())) {
            if (cell.contains(found.rect.center().toPoint()))
                texts << found.text;
        }
        return texts;
    }
    QString sentence(const char *keyword)
    {
        return cell(keyword, KeywordColumn::Keyword, Qt::AccessibleTextRole);
    }
    QString first(int count) { return shownKeywords().mid(0, count).join(u'|'); }
};

TEST_F(RankChangeWindowTest, EachColumnTellsItsChangeAndTheBestItsDay)
{
    window->resize(1500, 800);
    settle();
    EXPECT_EQ(painted("collage maker", KeywordColumn::In7Days), QStringList{text("↑ 6")});
    EXPECT_EQ(painted("collage maker", KeywordColumn::In30Days), QStringList{text("↑ 25")});
    EXPECT_EQ(painted("collage maker", KeywordColumn::Best),
              (QStringList{text("#"), text("8"), text("Nov 1")}));
    EXPECT_EQ(painted("retro photo", KeywordColumn::In7Days), QStringList{text("0")})
        << "the check of the day before stands for one that is missing";
    EXPECT_EQ(painted("retro photo", KeywordColumn::In30Days), QStringList{text("Entered")});
    EXPECT_EQ(painted("passport photo booth", KeywordColumn::In7Days), QStringList{text("Left")});
    EXPECT_EQ(painted("photo editor", KeywordColumn::In7Days), QStringList{text("↓ 7")});
    EXPECT_EQ(painted("photo editor", KeywordColumn::In30Days), QStringList{text("—")});
    EXPECT_EQ(painted("grain filter", KeywordColumn::Best), QStringList{text("—")});
}

TEST_F(RankChangeWindowTest, ARowIsReadWithItsChangesWhateverIsShown)
{
    for (const KeywordColumn column : changes)
        table().setColumnVisible(column, false);
    EXPECT_TRUE(sentence("collage maker")
                    .endsWith(text("up 6 in 7 days, up 25 in 30 days, best rank 8 on Nov 1")))
        << sentence("collage maker").toStdString();
    EXPECT_FALSE(sentence("photo editor").contains(text("30 days")))
        << "what there was no check for is not read in every row";
    EXPECT_EQ(cell("photo editor", KeywordColumn::In30Days, Qt::AccessibleTextRole),
              text("no check 30 days ago"));
}

TEST_F(RankChangeWindowTest, TheyAreHiddenAtFirstAndInTheColumnMenu)
{
    table().setColumnLayout(ColumnLayout::standard());
    for (const KeywordColumn column : changes)
        EXPECT_TRUE(table().horizontalHeader()->isSectionHidden(int(column)));
    QMenu menu;
    page().fillColumnMenu(&menu);
    QStringList unchecked;
    for (const QAction *action : menu.actions()) {
        if (action->isCheckable() && !action->isChecked())
            unchecked << action->text();
    }
    EXPECT_EQ(unchecked.join(u'|'), text("Tags|7 days|30 days|Best"));
    menu.actions()[int(KeywordColumn::Best)]->trigger();
    EXPECT_FALSE(table().horizontalHeader()->isSectionHidden(int(KeywordColumn::Best)));
    reopen();
    EXPECT_FALSE(table().horizontalHeader()->isSectionHidden(int(KeywordColumn::Best)));
    EXPECT_TRUE(table().horizontalHeader()->isSectionHidden(int(KeywordColumn::In7Days)));
}

TEST_F(RankChangeWindowTest, TheTableSortsByThem)
{
    model().sort(int(KeywordColumn::In7Days), Qt::DescendingOrder);
    EXPECT_EQ(first(4), text("collage maker|retro photo|photo editor|passport photo booth"));
    model().sort(int(KeywordColumn::Best), Qt::AscendingOrder);
    EXPECT_EQ(first(2), text("light leak effect|film camera filter"));
    reopen();
    EXPECT_EQ(model().sortedBy(), KeywordColumn::Best);
    EXPECT_EQ(first(2), text("light leak effect|film camera filter"));
}

TEST_F(RankChangeWindowTest, AreCopiedWithTheRows)
{
    selectKeywords({text("collage maker"), text("grain filter")});
    press(Qt::Key_C, Qt::ControlModifier);
    const QStringList lines = QGuiApplication::clipboard()->text().split(u'\n');
    EXPECT_TRUE(lines[0].contains(text("Ranking\t7 days\t30 days\tBest\tBest on\tApps")));
    EXPECT_TRUE(lines[1].contains(text("\t9\t6\t25\t8\t2026-11-01\t")));
    EXPECT_TRUE(lines[2].contains(text("\tPending\t\t\t\t\t")));
}

TEST_F(RankChangeWindowTest, FollowACheckAtOnceAndMidnightByThemselves)
{
    world->client->results = sampleResults();
    world->clock->advance(Seconds(7 * 3'600));
    store().queueKeywordRefreshes(store().trackedKeywords());
    settle();
    EXPECT_EQ(cell("collage maker", KeywordColumn::In7Days), text("14")) << "from rank 15 to 1";
    EXPECT_EQ(cell("collage maker", KeywordColumn::Best), text("1"));
    world->clock->advance(Seconds(secondsPerDay));
    EXPECT_EQ(cell("collage maker", KeywordColumn::In7Days), text("14"))
        << "the check of eight days ago stands for a day without one";
    world->clock->advance(Seconds(20 * secondsPerDay));
    EXPECT_EQ(cell("collage maker", KeywordColumn::In7Days), QString())
        << "nothing was checked in the week";
}

TEST_F(RankChangeWindowTest, TellWhatTheChecksOfSevenWeeksSaid)
{
    const TrackedKeyword keyword =
        store().addTrackedKeyword(*window->selectedApp(), text("a month"), text("US"));
    settle();
    const ITunesAppResult some = sampleResults().last();
    // The rank of each day; 0 for a check that found nothing, -1 for a day without one.
    std::vector<int> ranks;
    const auto rankBefore = [&](int days) {
        const int then = int(ranks.size()) - 1 - days;
        for (int day = then; day >= std::max(0, then - 7); --day) {
            if (ranks[size_t(day)] >= 0)
                return ranks[size_t(day)];
        }
        return -1;
    };
    const auto expected = [&](int days) {
        const int before = rankBefore(days);
        const int now = ranks.back();
        if (before < 0)
            return QString();
        if (before == 0 || now == 0)
            return now > 0 ? text("Entered") : before > 0 ? text("Left") : text("0");
        return QString::number(before - now);
    };
    for (int day = 0; day < 49; ++day) {
        const bool isMissed = day % 9 == 4 || (day > 30 && day < 40);
        ranks.push_back(isMissed ? -1 : day % 11 == 5 ? 0 : (day * 37) % 60 + 1);
        if (!isMissed) {
            world->client->results = QList<ITunesAppResult>(60, some);
            if (ranks.back() > 0)
                world->client->results[ranks.back() - 1].trackId = store().apps().first().trackId;
            store().queueKeywordRefreshes({keyword});
            settle();
            EXPECT_EQ(cell("a month", KeywordColumn::In7Days), expected(7)) << day;
            EXPECT_EQ(cell("a month", KeywordColumn::In30Days), expected(30)) << day;
            int best = 100;
            for (const int rank : ranks)
                best = rank > 0 ? std::min(best, rank) : best;
            EXPECT_EQ(cell("a month", KeywordColumn::Best), QString::number(best)) << day;
        }
        world->clock->advance(Seconds(secondsPerDay));
    }
}

} // namespace
} // namespace veltrix
