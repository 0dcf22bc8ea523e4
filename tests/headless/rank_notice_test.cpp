// SPDX-License-Identifier: GPL-3.0-or-later
#include "headless/rank_notice.h"

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

using Rank = std::optional<std::int64_t>;

RankChange change(const char *keyword, Rank before, Rank now, bool isNewBest = false)
{
    RankChange made;
    made.keyword = QString::fromUtf8(keyword);
    made.storefront = QStringLiteral("US");
    made.app = QStringLiteral("Tideline");
    made.before = before;
    made.now = now;
    made.isNewBest = isNewBest;
    made.wasInTopTen = isInTopTen(before, false);
    made.isInTopTen = isInTopTen(now, made.wasInTopTen);
    return made;
}

/// The title and the lines of the text.
QStringList told(const QList<RankChange> &changes, const DigestChoice &choice = {})
{
    const auto notice = noticeOf(changes, choice);
    return notice ? QStringList{notice->title} + notice->text.split(u'\n') : QStringList();
}

QStringList lines(std::initializer_list<const char *> texts)
{
    QStringList result;
    for (const char *text : texts)
        result.append(QString::fromUtf8(text));
    return result;
}

constexpr DigestChoice nothing{false, 3, false, false, false};

TEST(RankNotice, IsNoneWhenNothingOfItHappened)
{
    EXPECT_EQ(told({}), QStringList());
    EXPECT_EQ(told({change("moon", 14, 12), change("tide", 20, 20), change("sea", {}, {})}),
              QStringList());
    EXPECT_EQ(told({change("moon", 40, 2, true), change("sea", 5, {})}, nothing), QStringList());
}

TEST(RankNotice, NamesTheOneKeywordThatMoved)
{
    EXPECT_EQ(told({change("moon", 25, 21), change("tide", 30, 29)}),
              lines({"1 keyword rose", "“moon” (Tideline, US): 25 → 21"}));
    EXPECT_EQ(told({change("moon", 21, 25)}),
              lines({"1 keyword fell", "“moon” (Tideline, US): 21 → 25"}));
}

TEST(RankNotice, CountsAFewPlacesOnlyFromAsManyAsAreChosen)
{
    DigestChoice ten = nothing;
    ten.movements = true;
    ten.leastPlaces = 10;
    EXPECT_EQ(told({change("moon", 40, 31)}, ten), QStringList());
    EXPECT_EQ(told({change("moon", 40, 30)}, ten).constFirst(), QStringLiteral("1 keyword rose"));
}

TEST(RankNotice, SumsUpAllThatHappened)
{
    EXPECT_EQ(told({change("a", 14, 9), change("b", 30, 22, true), change("c", 8, 13),
                    change("d", {}, 50, true), change("e", 60, {}), change("f", 11, 10),
                    change("g", {}, 3)}),
              lines({"2 keywords rose, 1 fell", "3 keywords entered the top 10, 1 left it",
                     "2 keywords entered the results, 1 left them", "2 new best ranks",
                     "“g” (Tideline, US): entered at 3", "“d” (Tideline, US): entered at 50",
                     "“e” (Tideline, US): left the results", "and 4 more"}));
}

TEST(RankNotice, BeginsWithWhatThereIs)
{
    EXPECT_EQ(told({change("e", 60, {})}).constFirst(),
              QStringLiteral("1 keyword left the results"));
    EXPECT_EQ(told({change("e", 11, 10)}).constFirst(),
              QStringLiteral("1 keyword entered the top 10"));
    EXPECT_EQ(told({change("e", 30, 29, true)}),
              lines({"1 new best rank", "“e” (Tideline, US): 30 → 29"}));
}

TEST(RankNotice, TheTopTenIsLeftSomePlacesBelowWhereItIsEntered)
{
    EXPECT_TRUE(isInTopTen(10, false));
    EXPECT_FALSE(isInTopTen(11, false));
    EXPECT_TRUE(isInTopTen(12, true));
    EXPECT_FALSE(isInTopTen(13, true));
    EXPECT_FALSE(isInTopTen({}, true));
}

TEST(RankNotice, TellsOnlyTheKindsThatAreChosen)
{
    const QList<RankChange> changes{change("a", 14, 9, true), change("e", 60, {})};
    const auto only = [&](bool DigestChoice::*kind) {
        DigestChoice choice = nothing;
        choice.*kind = true;
        const QStringList said = told(changes, choice);
        EXPECT_EQ(said.size(), 2);
        return said.constFirst().toStdString();
    };
    EXPECT_EQ(only(&DigestChoice::movements), "1 keyword rose");
    EXPECT_EQ(only(&DigestChoice::topTen), "1 keyword entered the top 10");
    EXPECT_EQ(only(&DigestChoice::results), "1 keyword left the results");
    EXPECT_EQ(only(&DigestChoice::bests), "1 new best rank");
}

TEST(RankNotice, ShortensLongNamesAndDropsWhatTurnsATextAround)
{
    RankChange long1 = change("", 25, 21);
    long1.keyword = QString(100, u'k');
    long1.app = QString(200, u'a');
    const QString line1 = told({long1}).constLast();
    EXPECT_EQ(line1, QStringLiteral("“") + QString(39, u'k') + QStringLiteral("…” (") +
                         QString(29, u'a') + QStringLiteral("…, US): 25 → 21"));
    RankChange hostile = change("moon\n\x1b[2J", 25, 21);
    hostile.app = QStringLiteral("Evil\u202e\u200b <b>&</b>");
    EXPECT_EQ(told({hostile}).constLast(),
              QStringLiteral("“moon[2J” (Evil <b>&</b>, US): 25 → 21"));
}

} // namespace
} // namespace veltrix
