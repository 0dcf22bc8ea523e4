// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/column_layout.h"

#include "support/json_printers.h"

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

/// "keyword 279, target 175 hidden; sorted by keyword" and so on.
QString picture(const ColumnLayout &layout)
{
    QStringList columns;
    for (const auto &column : layout.columns)
        columns << QLatin1String(keywordColumnInfo(column.column).id) +
                       (column.isVisible ? QString() : QStringLiteral("-"));
    return columns.join(u' ');
}

TEST(KeywordColumns, AreTheTenInTheirDefinedOrder)
{
    QStringList headers;
    QStringList ids;
    for (const KeywordColumnInfo &info : keywordColumns()) {
        headers << info.headerText();
        ids << QLatin1String(info.id);
        EXPECT_EQ(&keywordColumnInfo(info.column), &info);
        EXPECT_EQ(keywordColumnOf(QLatin1String(info.id)), info.column);
    }
    EXPECT_EQ(headers.join(u'|'),
              QStringLiteral("Keyword|Tags|Target|Popularity (est.)|"
                             "Difficulty (est.)|Ranking|7 days|30 days|Best|Apps"));
    EXPECT_EQ(ids.join(u'|'), QStringLiteral("keyword|tags|target|popularity|difficulty|position|"
                                             "change7|change30|best|apps"));
    EXPECT_EQ(keywordColumnInfo(KeywordColumn::Popularity).helpText(),
              QStringLiteral("Estimated search popularity from the Quorvin model, not official "
                             "Apple data. Its calibration used US data; unavailable does not mean "
                             "low demand."));
}

TEST(ColumnLayout, ComesBackAsItWas)
{
    ColumnLayout layout = ColumnLayout::standard();
    std::swap(layout.columns[1], layout.columns[4]);
    layout.columns[2].width = 222;
    layout.columns[3].isVisible = false;
    layout.sortedBy = KeywordColumn::Popularity;
    layout.sortOrder = Qt::DescendingOrder;
    EXPECT_EQ(ColumnLayout::fromText(layout.toText()), layout);
}

TEST(ColumnLayout, TagsFollowUntilTheUserShowsOrHidesThem)
{
    ColumnLayout layout = ColumnLayout::standard();
    EXPECT_TRUE(layout.doTagsFollow);
    EXPECT_TRUE(layout.toText().contains(QStringLiteral("tags 116 auto;")));
    EXPECT_TRUE(ColumnLayout::fromText(layout.toText()).doTagsFollow);
    layout.doTagsFollow = false;
    EXPECT_EQ(ColumnLayout::fromText(layout.toText()), layout);
    layout.columns[1].isVisible = false;
    EXPECT_EQ(ColumnLayout::fromText(layout.toText()), layout);
}

TEST(ColumnLayout, NothingSavedIsTheStandard)
{
    EXPECT_EQ(ColumnLayout::fromText(QString()), ColumnLayout::standard());
    EXPECT_EQ(ColumnLayout::fromText(QStringLiteral("\x01 garbage ;;; 7 8 9")),
              ColumnLayout::standard());
}

TEST(ColumnLayout, AnUnknownColumnIsSkipped)
{
    EXPECT_EQ(picture(ColumnLayout::fromText(QStringLiteral(
                  "keyword 200 shown; trend 90 shown; apps 100 hidden; target 120 shown; "
                  "popularity 100 shown; difficulty 100 shown; position 100 shown"))),
              QStringLiteral(
                  "keyword tags apps- target popularity difficulty position change7- change30- "
                  "best-"));
}

TEST(ColumnLayout, ALayoutFromBeforeTheChangesComesBackWithThemHiddenBesideTheRanking)
{
    // As a version without them has written it, word for word.
    const ColumnLayout layout = ColumnLayout::fromText(QStringLiteral(
        "keyword 300 shown; position 160 shown; target 175 hidden; popularity 134 shown; "
        "difficulty 134 shown; apps 134 shown; sort popularity descending; excess 12"));
    EXPECT_EQ(picture(layout),
              QStringLiteral("keyword tags position change7- change30- best- target- "
                             "popularity difficulty apps"));
    EXPECT_EQ(layout.sortedBy, KeywordColumn::Popularity);
    EXPECT_EQ(layout.sortOrder, Qt::DescendingOrder);
    EXPECT_EQ(layout.columns.front().width, 300);
    EXPECT_EQ(layout.excess, 12);
    EXPECT_EQ(layout.quickFilter, QuickFilter::All);
}

TEST(ColumnLayout, AColumnThatIsNewComesInAtItsPlaceAndIsShown)
{
    // Written by a version that knew neither popularity nor position.
    EXPECT_EQ(picture(ColumnLayout::fromText(QStringLiteral(
                  "apps 100 shown; keyword 200 shown; target 120 hidden; difficulty 100 shown"))),
              QStringLiteral(
                  "apps keyword tags target- popularity difficulty position change7- change30- "
                  "best-"));
}

TEST(ColumnLayout, AColumnThatIsNamedTwiceIsThereOnce)
{
    EXPECT_EQ(ColumnLayout::fromText(QStringLiteral("target 120 shown; target 130 hidden"))
                  .columns.size(),
              10U);
}

TEST(ColumnLayout, WidthsStayWithinReason)
{
    const ColumnLayout layout =
        ColumnLayout::fromText(QStringLiteral("target -5 shown; apps 999999999 shown"));
    for (const auto &column : layout.columns) {
        EXPECT_GE(column.width, keywordColumnInfo(column.column).minimumWidth);
        EXPECT_LE(column.width, 4000);
    }
}

TEST(ColumnLayout, TheKeywordsAreNeverHidden)
{
    EXPECT_TRUE(ColumnLayout::fromText(QStringLiteral("keyword 200 hidden")).columns[0].isVisible);
}

TEST(ColumnLayout, TheWidthBeyondTheTableComesBack)
{
    ColumnLayout layout = ColumnLayout::standard();
    layout.excess = -37;
    EXPECT_EQ(ColumnLayout::fromText(layout.toText()), layout);
    EXPECT_EQ(ColumnLayout::fromText(QStringLiteral("excess wide")), ColumnLayout::standard());
}

TEST(ColumnLayout, TheQuickFilterComesBack)
{
    ColumnLayout layout = ColumnLayout::standard();
    EXPECT_FALSE(layout.toText().contains(QStringLiteral("filter")));
    layout.quickFilter = QuickFilter::NotMeasuredToday;
    EXPECT_EQ(ColumnLayout::fromText(layout.toText()), layout);
    EXPECT_EQ(ColumnLayout::fromText(QStringLiteral("filter tagged")), ColumnLayout::standard());
}

} // namespace
} // namespace veltrix
