// SPDX-License-Identifier: GPL-3.0-or-later
// Tags as they are painted.
#include "ui_kit/widgets/tag_chip.h"

#include "ui/support/ui_test.h"

#include <QApplication>

#include <set>

namespace veltrix
{
namespace
{

TEST(TagColorTest, FollowsFromTheNameAndIsTheSameInEveryVersion)
{
    // Saved nowhere: what users see of their tags changes with any of these.
    EXPECT_EQ(tagToken(QStringLiteral("core")), tagToken(QStringLiteral("CORE")));
    EXPECT_EQ(tagToken(QStringLiteral("core")), Token::Accent);
    EXPECT_EQ(tagToken(QStringLiteral("title")), Token::Green);
    EXPECT_EQ(tagToken(QStringLiteral("germany")), Token::Orange);
    EXPECT_EQ(tagToken(QStringLiteral("überschrift")), Token::Accent);
    EXPECT_EQ(tagToken(QStringLiteral("ÜBERSCHRIFT")), Token::Accent);
}

TEST(TagColorTest, UsesAllSixColours)
{
    std::set<Token> seen;
    for (int i = 0; i < 60; ++i)
        seen.insert(tagToken(QStringLiteral("tag %1").arg(i)));
    EXPECT_EQ(seen, (std::set{Token::Accent, Token::Teal, Token::Orange, Token::Pink, Token::Blue,
                              Token::Green}));
}

class TagRowTest : public testing::Test
{
protected:
    TagRowTest() { testTheme(); }
    [[nodiscard]] TagRowGeometry layOut(qreal width, const QStringList &tags) const
    {
        return layoutTagRow(QRectF(10, 0, width, 52), TagChip::of(tags), font);
    }
    [[nodiscard]] qreal widthOf(const char *name) const
    {
        return tagChipSize(TagChip::of(QString::fromLatin1(name)), font).width();
    }

    QFont font = QApplication::font();
    QStringList names{QStringLiteral("core"), QStringLiteral("title"), QStringLiteral("germany")};
};

TEST_F(TagRowTest, ShowsAllTagsWhereThereIsRoom)
{
    const TagRowGeometry row = layOut(1000, names);
    ASSERT_EQ(row.chips.size(), 3);
    EXPECT_EQ(row.moreCount, 0);
    EXPECT_TRUE(row.more.isEmpty());
    EXPECT_EQ(row.chips[0].left(), 10);
    EXPECT_GT(row.chips[1].left(), row.chips[0].right());
}

TEST_F(TagRowTest, CountsThoseThatHaveNoRoom)
{
    const TagRowGeometry row = layOut(widthOf("core") + 40, names);
    ASSERT_EQ(row.chips.size(), 1);
    EXPECT_EQ(row.chips[0].width(), widthOf("core"));
    EXPECT_EQ(row.moreCount, 2);
    EXPECT_GT(row.more.left(), row.chips[0].right());
    EXPECT_LE(row.more.right(), 10 + widthOf("core") + 40);
}

TEST_F(TagRowTest, TheLastOneNeedsNoRoomForACountBehindIt)
{
    const qreal both = widthOf("core") + 4 + widthOf("title");
    EXPECT_EQ(layOut(both, names.mid(0, 2)).chips.size(), 2);
    EXPECT_EQ(layOut(both - 1, names.mid(0, 2)).chips.size(), 1);
}

TEST_F(TagRowTest, OneThatIsWiderThanTheCellIsNarrowed)
{
    const TagRowGeometry row = layOut(60, {QString(40, u'W'), QStringLiteral("core")});
    ASSERT_EQ(row.chips.size(), 1);
    EXPECT_LT(row.chips[0].right(), 70);
    EXPECT_EQ(row.moreCount, 1);
    EXPECT_TRUE(layOut(60, {}).chips.isEmpty());
}

} // namespace
} // namespace veltrix
