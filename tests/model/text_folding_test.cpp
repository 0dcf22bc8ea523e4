// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/text_folding.h"

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

bool isFoundAs(const char *one, const char *other)
{
    return foldedForSearch(QString::fromUtf8(one)) == foldedForSearch(QString::fromUtf8(other));
}

TEST(FoldedCase, IgnoresCaseAndNothingElse)
{
    const auto same = [](const char *one, const char *other) {
        return foldedCase(QString::fromUtf8(one)) == foldedCase(QString::fromUtf8(other));
    };
    EXPECT_TRUE(same("Photo", "pHOTO"));
    EXPECT_TRUE(same("ЁЛКА", "ёлка"));
    EXPECT_TRUE(same("ΟΔΟΣ", "οδος"));
    EXPECT_TRUE(same("ΟΔΟΣ", "οδοσ"));
    EXPECT_FALSE(same("café", "cafe"));
    EXPECT_FALSE(same("photo", "photo "));
}

TEST(FoldedForSearch, IgnoresCaseAndAccents)
{
    EXPECT_TRUE(isFoundAs("Café CRÈME", "cafe creme"));
    EXPECT_TRUE(isFoundAs("e\u0301", "\u00e9"));
    EXPECT_TRUE(isFoundAs("ёлка", "ЕЛКА"));
    EXPECT_FALSE(isFoundAs("photo", "photos"));
}

TEST(FoldedForSearch, IgnoresHowALetterIsWritten)
{
    EXPECT_TRUE(isFoundAs("Straße", "STRASSE"));
    EXPECT_TRUE(isFoundAs("ﬁt", "FIT"));
    EXPECT_TRUE(isFoundAs("한국", "\u1112\u1161\u11ab\u1100\u116e\u11a8"));
    EXPECT_EQ(foldedForSearch(QStringLiteral("ＰＨＯＴＯ")), QStringLiteral("photo"));
}

TEST(FoldedForSearch, KeepsTheMarksThatMakeAnotherLetter)
{
    EXPECT_FALSE(isFoundAs("กิน", "กัน"));
    EXPECT_FALSE(isFoundAs("กิน", "กน"));
    EXPECT_FALSE(isFoundAs("कु", "के"));
    EXPECT_FALSE(isFoundAs("か", "が"));
    EXPECT_FALSE(isFoundAs("ハ", "パ"));
}

TEST(FoldedForSearch, FindsASyllableInWhatItGrowsInto)
{
    EXPECT_TRUE(
        foldedForSearch(QStringLiteral("한국")).contains(foldedForSearch(QStringLiteral("하"))));
}

TEST(FoldedForSearch, KeepsAMarkOfByteOrder)
{
    EXPECT_EQ(foldedForSearch(QStringLiteral("\uFEFFa")), QStringLiteral("\uFEFFa"));
    EXPECT_EQ(foldedForSearch(QString()), QString());
}

} // namespace
} // namespace veltrix
