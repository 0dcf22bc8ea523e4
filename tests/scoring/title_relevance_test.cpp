// SPDX-License-Identifier: GPL-3.0-or-later
#include "scoring/title_relevance.h"

#include <gtest/gtest.h>

#include <ostream>

namespace veltrix
{

void PrintTo(const TitleRelevance &result, std::ostream *out)
{
    *out << result.relevance << (result.exactPhrase ? " exact phrase" : "")
         << (result.allTokens ? " all tokens" : "");
}

namespace
{

constexpr TitleRelevance nothing{};
constexpr TitleRelevance phrase{.relevance = 1, .exactPhrase = true, .allTokens = false};

TitleRelevance allTokens(double relevance)
{
    return {.relevance = relevance, .exactPhrase = false, .allTokens = true};
}

TitleRelevance partly(double relevance)
{
    return {.relevance = relevance, .exactPhrase = false, .allTokens = false};
}

TitleRelevance test(QStringView keyword, QStringView title, QStringView genre = {})
{
    return KeywordRelevance(keyword).against(title, genre);
}

TEST(TitleRelevance, OfAnEmptyKeywordOrTitleIsNothing)
{
    EXPECT_EQ(test(u"", u"Photo Editor"), nothing);
    EXPECT_EQ(test(u"!!", u"Photo Editor"), nothing);
    EXPECT_EQ(test(u"photo", u""), nothing);
    EXPECT_EQ(test(u"photo", u" – "), nothing);
}

TEST(TitleRelevance, OfThePhraseIsOne)
{
    EXPECT_EQ(test(u"photo editor", u"Photo Editor Pro"), phrase);
    EXPECT_EQ(test(u"PHOTO  editor!", u"My photo editor"), phrase);
}

TEST(TitleRelevance, ThePhraseMayBeginOrEndInsideAWord)
{
    EXPECT_EQ(test(u"art", u"Party"), phrase);
    EXPECT_EQ(test(u"photos", u"Photos"), phrase);
    EXPECT_EQ(test(u"photo edit", u"Photo Editor"), phrase);
}

TEST(TitleRelevance, ThePhraseIsJoinedBySingleSpacesInTheTitleAsItStands)
{
    // The hyphen of the title is no space: the tokens are there side by side, the phrase is not.
    EXPECT_EQ(test(u"photo editor", u"Photo-Editor"), allTokens(0.85 + 0.15 * 1));
    EXPECT_EQ(test(u"photo editor", u"Photo  Editor"), allTokens(0.85 + 0.15 * 1));
}

TEST(TitleRelevance, OfScatteredTokensDependsOnHowCloseTheyStand)
{
    EXPECT_EQ(test(u"photo editor", u"Editor for Photo"), allTokens(0.85 + 0.15 * (2.0 / 3.0)));
    EXPECT_DOUBLE_EQ(test(u"photo editor", u"Editor for Photo").relevance, 0.95);
    EXPECT_EQ(test(u"photo editor", u"Editor Photo"), allTokens(1.0));
    EXPECT_EQ(test(u"photo editor", u"Editor a b c d e f Photo"), allTokens(0.85 + 0.15 * 0.25));
}

TEST(TitleRelevance, CountsTheRunFromTheFirstToTheLastMatchOfAnyToken)
{
    // photo . . photo editor: the whole run of five counts, not the nearest pair of two.
    EXPECT_EQ(test(u"editor photo", u"Photo on a photo: editor"),
              allTokens(0.85 + 0.15 * (2.0 / 5.0)));
}

TEST(TitleRelevance, CountsKeywordTokensWithDuplicates)
{
    EXPECT_EQ(test(u"photo photo editor", u"Editor and Photo"), allTokens(0.85 + 0.15 * 1));
    EXPECT_EQ(test(u"photo photo lab", u"Photo shop"), partly(2.0 / 3.0 * 0.5));
}

TEST(TitleRelevance, OfSomeTokensIsHalfTheirShare)
{
    EXPECT_EQ(test(u"photo editor", u"Photo Lab"), partly(0.25));
    EXPECT_EQ(test(u"photo editor collage", u"Editor photo"), partly(2.0 / 3.0 * 0.5));
    EXPECT_EQ(test(u"photo editor", u"Chess"), nothing);
}

TEST(TitleRelevance, ComparesWholeTokensWhenThePhraseIsNotThere)
{
    EXPECT_EQ(test(u"photo editor", u"Photos and editors"), nothing);
}

TEST(TitleRelevance, ReadsTheFourPluralsAsTheirSingular)
{
    EXPECT_EQ(test(u"traffic signals", u"Signal of traffic"), allTokens(0.85 + 0.15 * (2.0 / 3.0)));
    EXPECT_EQ(test(u"flea markets", u"Flea Market Finder"), phrase);
}

TEST(TitleRelevance, WorksInOtherScripts)
{
    EXPECT_EQ(test(u"фото редактор", u"Редактор для ФОТО"), allTokens(0.85 + 0.15 * (2.0 / 3.0)));
    EXPECT_EQ(test(u"写真", u"写真加工アプリ"), phrase);
    EXPECT_EQ(test(u"แผนที่", u"แผนที่ โลก"), phrase);
}

TEST(TitleRelevance, ATestForOneKeywordServesAnyNumberOfTitles)
{
    const KeywordRelevance relevance(u"Photo Editor");
    EXPECT_EQ(relevance.against(u"Photo Editor Pro", {}), phrase);
    EXPECT_EQ(relevance.against(u"Photo Lab", {}), partly(0.25));
    EXPECT_EQ(relevance.tokens().size(), 2);
}

bool hasTradingIntent(QStringView keyword)
{
    return KeywordRelevance(keyword).hasTradingIntent();
}

TEST(FinanceGuard, TradingIntentIsATradingWordAmongTradingAndFinanceWords)
{
    for (const QStringView keyword :
         {u"options", u"option", u"stock", u"Stocks", u"trading", u"trade", u"signals", u"invest",
          u"investing", u"stock market", u"forex signals", u"call option", u"put options",
          u"futures trading", u"stock broker"})
        EXPECT_TRUE(hasTradingIntent(keyword)) << keyword.toString().toStdString();
}

TEST(FinanceGuard, TradingIntentIsAlsoTwoDistinctTradingWordsAmongOthers)
{
    for (const QStringView keyword :
         {u"stock trading app", u"learn option trading", u"put option for beginners",
          u"call and put options explained"})
        EXPECT_TRUE(hasTradingIntent(keyword)) << keyword.toString().toStdString();
}

TEST(FinanceGuard, EverydayWordsAloneAreNoTradingIntent)
{
    for (const QStringView keyword :
         {u"call", u"put", u"put call", u"video call", u"call put game", u"stock photos",
          u"trade cards", u"traffic signal", u"finance", u"market", u"portfolio", u"", u"photo"})
        EXPECT_FALSE(hasTradingIntent(keyword)) << keyword.toString().toStdString();
}

TEST(FinanceGuard, TheSameWordTwiceOrInItsPluralIsOneWord)
{
    EXPECT_FALSE(hasTradingIntent(u"stock photos stock"));
    EXPECT_FALSE(hasTradingIntent(u"option menu options"));
}

TEST(FinanceGuard, BlocksTitlesWithoutFinanceEvidence)
{
    EXPECT_EQ(test(u"options", u"Options Tracker", u"Productivity"), nothing);
    // Even where the phrase itself is there.
    EXPECT_EQ(test(u"call options", u"Call Options", u"Utilities"), nothing);
}

TEST(FinanceGuard, AFinanceWordOfTheTitleOrTheGenreIsEvidence)
{
    EXPECT_EQ(test(u"options", u"Options Tracker", u"Finance"), phrase);
    EXPECT_EQ(test(u"options", u"Options Trading Tracker", u"Productivity"), phrase);
    EXPECT_EQ(test(u"options", u"Options & Markets", u"Games"), phrase);
    // A word of another kind that only holds a finance word is none.
    EXPECT_EQ(test(u"options", u"Options for Supermarkets", u"Games"), nothing);
}

TEST(FinanceGuard, LeavesKeywordsWithoutTradingIntentAlone)
{
    EXPECT_EQ(test(u"stock photos", u"Stock Photos", u"Photo & Video"), phrase);
    EXPECT_EQ(test(u"video call", u"Video Call", u"Social Networking"), phrase);
    EXPECT_EQ(test(u"call", u"Call Recorder", u"Utilities"), phrase);
}

} // namespace
} // namespace veltrix
