// SPDX-License-Identifier: GPL-3.0-or-later
#include "scoring/app_keyword_check.h"

#include "scoring/app_table.h"
#include "support/json_printers.h"

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

/// The phrases of a listing, joined by " / ".
QString phrases(const QString &name, const QString &subtitle = QStringLiteral("-"),
                const QString &genre = QStringLiteral("-"))
{
    const auto apps = appTable(QStringLiteral("name | subtitle | genre\n") + name + u'|' +
                               subtitle + u'|' + genre);
    return keywordPhrases(apps.front()).join(QStringLiteral(" / "));
}

TEST(KeywordPhrases, DoNotBeginOrEndWithAStopWord)
{
    EXPECT_EQ(phrases(QStringLiteral("The Photo Editor")),
              QStringLiteral("photo editor / photo / editor"));
    EXPECT_EQ(phrases(QStringLiteral("Recipes for Kids")),
              QStringLiteral("recipes / kids / recipes for kids"));
}

TEST(KeywordPhrases, AllStopWordsAreRejected)
{
    EXPECT_EQ(
        phrases(QStringLiteral("A An The And Or For Of To In With Your My App Apps Free Pro By")),
        QString());
}

TEST(KeywordPhrases, ComeAsPairsThenSingleWordsThenTriples)
{
    EXPECT_EQ(phrases(QStringLiteral("Alpha Beta Gamma")),
              QStringLiteral("alpha beta / beta gamma / alpha / beta / gamma / alpha beta gamma"));
}

TEST(KeywordPhrases, NeverCrossASegment)
{
    EXPECT_EQ(phrases(QStringLiteral("Photo Editor: Collage")),
              QStringLiteral("photo editor / photo / editor / collage"));
    EXPECT_EQ(phrases(QStringLiteral("Alpha&Beta")), QStringLiteral("alpha / beta"));
}

TEST(KeywordPhrases, AreTakenTextByTextAndSegmentBySegment)
{
    EXPECT_EQ(phrases(QStringLiteral("One Two: Three Four"), QStringLiteral("Five"),
                      QStringLiteral("Games")),
              QStringLiteral("one two / one / two / three four / three / four / five / games"));
}

TEST(KeywordPhrases, OfTwoLettersOrWithoutALetterAreRejected)
{
    EXPECT_EQ(phrases(QStringLiteral("Go")), QString());
    EXPECT_EQ(phrases(QStringLiteral("2024")), QString());
    EXPECT_EQ(phrases(QStringLiteral("2048 3D")), QStringLiteral("2048 3d"));
    EXPECT_EQ(phrases(QStringLiteral("ab c")), QStringLiteral("ab c"));
}

TEST(KeywordPhrases, HaveAtMostOneHundredCharacters)
{
    EXPECT_EQ(phrases(QString(100, u'x')), QString(100, u'x'));
    EXPECT_EQ(phrases(QString(101, u'x')), QString());
    // A character beyond the basic plane is one character.
    EXPECT_EQ(phrases(QStringLiteral("𝒜𝒜")), QString());
    EXPECT_EQ(phrases(QStringLiteral("𝒜𝒜𝒜")), QStringLiteral("𝒜𝒜𝒜"));
}

TEST(KeywordPhrases, ThatRepeatAddNothing)
{
    EXPECT_EQ(phrases(QStringLiteral("Photo Editor"), QStringLiteral("photo EDITOR"),
                      QStringLiteral("Photo")),
              QStringLiteral("photo editor / photo / editor"));
}

TEST(KeywordPhrases, OfAnEmptyListingAreNone)
{
    EXPECT_TRUE(keywordPhrases(ITunesAppResult{}).isEmpty());
    EXPECT_EQ(phrases(QString(), QStringLiteral("!!"), QStringLiteral("My App")), QString());
}

TEST(KeywordPhrases, AreAtMostThirty)
{
    ITunesAppResult app;
    QStringList words;
    for (int i = 0; i < 40; ++i)
        words.append(QStringLiteral("word%1").arg(i));
    app.trackName = words.join(u' ');
    const auto found = keywordPhrases(app);
    EXPECT_EQ(found.size(), 30);
    EXPECT_EQ(found.last(), QStringLiteral("word29 word30"));
}

TEST(KeywordPhrases, KeepWordsOfOtherScriptsWhole)
{
    EXPECT_EQ(phrases(QStringLiteral("แผนที่ โลก")), QStringLiteral("แผนที่ โลก / แผนที่ / โลก"));
    EXPECT_EQ(phrases(QStringLiteral("Фото–Редактор")), QStringLiteral("фото / редактор"));
}

} // namespace
} // namespace veltrix
