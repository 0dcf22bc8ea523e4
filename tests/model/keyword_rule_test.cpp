// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/keyword_rule.h"
#include "model/storefront_codes.h"

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

const QString us = QStringLiteral("US");

TEST(KeywordRuleTest, OneToAHundredCharactersWithoutTheSpaceAroundThemCanBeMeasured)
{
    EXPECT_EQ(keywordRefusal(QStringLiteral("a"), us), std::nullopt);
    EXPECT_EQ(keywordRefusal(QString(100, u'x'), us), std::nullopt);
    EXPECT_EQ(keywordRefusal(u' ' + QString(100, u'x') + u'\n', us), std::nullopt);
    EXPECT_EQ(keywordRefusal(QString(101, u'x'), us), KeywordRefusal::TooLong);
    EXPECT_EQ(keywordRefusal(QString(), us), KeywordRefusal::Empty);
    EXPECT_EQ(keywordRefusal(QStringLiteral(" \t\n"), us), KeywordRefusal::Empty);
}

TEST(KeywordRuleTest, CharactersAreCountedNotCodeUnits)
{
    EXPECT_EQ(keywordRefusal(QStringLiteral("📷").repeated(100), us), std::nullopt);
    EXPECT_EQ(keywordRefusal(QStringLiteral("📷").repeated(101), us), KeywordRefusal::TooLong);
}

TEST(KeywordRuleTest, ATextThatGrowsInLowerCaseIsCountedAsItIsSearched)
{
    // The dotted capital I becomes two characters.
    EXPECT_EQ(keywordRefusal(QStringLiteral("İ").repeated(50), us), std::nullopt);
    EXPECT_EQ(keywordRefusal(QStringLiteral("İ").repeated(51), us), KeywordRefusal::TooLong);
}

TEST(KeywordRuleTest, ControlCharactersInsideATextAreRefused)
{
    for (const QChar control : {u'\0', u'\t', u'\n', u'\x1b', u'\x7f', u'\x85'}) {
        const QString text = QStringLiteral("photo%1editor").arg(control);
        EXPECT_EQ(keywordRefusal(text, us), KeywordRefusal::ControlCharacter)
            << int(control.unicode());
    }
    EXPECT_EQ(keywordRefusal(QStringLiteral("photo editor"), us), std::nullopt);
}

TEST(KeywordRuleTest, OnlyStorefrontsThatCanBeChosenAreMeasured)
{
    const QString text = QStringLiteral("photo editor");
    for (const QString &code : storefrontCodes())
        EXPECT_EQ(keywordRefusal(text, code.toLower()), std::nullopt) << code.toStdString();
    for (const char *code : {"UK", "", "U", "USA", "ZZ"})
        EXPECT_EQ(keywordRefusal(text, QString::fromLatin1(code)),
                  KeywordRefusal::UnknownStorefront)
            << code;
}

} // namespace
} // namespace veltrix
