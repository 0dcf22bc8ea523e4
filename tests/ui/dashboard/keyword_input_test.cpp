// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/keyword_input.h"

#include "support/json_printers.h"

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

QString split(const char *text)
{
    return splitKeywords(QString::fromUtf8(text)).join(u'|');
}

QString imported(const QByteArray &content)
{
    QStringList lines;
    for (const ImportedKeyword &keyword : keywordsFromFile(content))
        lines << keyword.keyword + (keyword.country ? u'@' + *keyword.country : QString());
    return lines.join(u'|');
}

TEST(KeywordInput, SplitsAtCommasAndDropsEmptyPieces)
{
    EXPECT_EQ(split("a, ,b"), QStringLiteral("a|b"));
    EXPECT_EQ(split("photo editor"), QStringLiteral("photo editor"));
    EXPECT_EQ(split(",, ,\t,"), QString());
    EXPECT_EQ(split(""), QString());
}

TEST(KeywordInput, TrimsWhiteSpaceOfEveryKind)
{
    EXPECT_EQ(split("\xC2\xA0 film camera \xE3\x80\x80,\n x "), QStringLiteral("film camera|x"));
}

TEST(KeywordInput, TakesPastedLinesAndTabs)
{
    EXPECT_EQ(split("one\ntwo\r\nthree\tfour,five\n\n"), QStringLiteral("one|two|three|four|five"));
}

TEST(KeywordInput, TheSameKeywordTwiceCountsOnce)
{
    EXPECT_EQ(split("Photo, film, photo\nFILM, grain"), QStringLiteral("Photo|film|grain"));
}

TEST(KeywordInput, KeepsCaseAndInnerSpaces)
{
    EXPECT_EQ(split("Photo  Editor"), QStringLiteral("Photo  Editor"));
}

TEST(KeywordFile, AListMayUseLinesTabsAndCommas)
{
    EXPECT_EQ(imported("one\ntwo, three\tfour\r\n\"five, six\"\n"),
              QStringLiteral("one|two|three|four|five|six"));
}

TEST(KeywordFile, AHeaderNamesTheColumns)
{
    EXPECT_EQ(imported("Position,keyword,Storefront\r\n1,photo editor,de\r\n2,\"x, y\",\r\n3,,US"),
              QStringLiteral("photo editor@DE|x, y"));
    EXPECT_EQ(imported("Keyword\tStorefront\nphoto, video\tjp\n"),
              QStringLiteral("photo, video@JP"));
}

TEST(KeywordFile, WhatIsNoStorefrontStaysAsItIsWrittenSoThatItCanBeNamed)
{
    EXPECT_EQ(imported("Keyword,Country\na,Germany\nb,fr\nc, UK \nd, \ne,usa"),
              QStringLiteral("a@Germany|b@FR|c@UK|d|e@usa"));
}

TEST(KeywordFile, ReadsByteOrderMarks)
{
    EXPECT_EQ(imported("\xEF\xBB\xBFKeyword\nphoto"), QStringLiteral("photo"));
    const QString text = QStringLiteral("\uFEFFKeyword\n写真");
    EXPECT_EQ(imported(QByteArray(reinterpret_cast<const char *>(text.utf16()), text.size() * 2)),
              QStringLiteral("写真"));
}

TEST(KeywordFile, AnEmptyFileHasNoKeywords)
{
    EXPECT_EQ(imported(""), QString());
    EXPECT_EQ(imported("Keyword,Storefront\n"), QString());
}

} // namespace
} // namespace veltrix
