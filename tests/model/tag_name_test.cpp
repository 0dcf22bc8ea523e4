// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/tag_name.h"

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

TEST(TagName, IsTrimmedAndHasOneSpaceWhereThereWasMore)
{
    EXPECT_EQ(usableTagName(QStringLiteral("  long \t tail\n")), QStringLiteral("long tail"));
    EXPECT_EQ(tagRefusal(QStringLiteral("core")), std::nullopt);
}

TEST(TagName, HasFortyCharactersAtMost)
{
    EXPECT_TRUE(usableTagName(QString(mostTagLength, u'x')));
    EXPECT_FALSE(usableTagName(QString(mostTagLength + 1, u'x')));
    EXPECT_TRUE(usableTagName(QString(mostTagLength, u'x') + QStringLiteral("   ")));
}

TEST(TagName, CannotBeWhatAListOrAFileWouldTakeApart)
{
    for (const char *text : {"", "  ", "a,b", "a;b", "a\u200eb", "a\x01"}) {
        EXPECT_FALSE(usableTagName(QString::fromUtf8(text))) << text;
        EXPECT_TRUE(tagRefusal(QString::fromUtf8(text))) << text;
    }
}

TEST(TagName, MayBeInAnyScript)
{
    for (const char *text : {"größer", "長い", "מילה", "🚀"})
        EXPECT_EQ(usableTagName(QString::fromUtf8(text)), QString::fromUtf8(text));
}

} // namespace
} // namespace veltrix
