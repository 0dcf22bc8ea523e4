// SPDX-License-Identifier: GPL-3.0-or-later
#include "scoring/text_tokens.h"
#include "support/json_printers.h"

#include <QLocale>

#include <gtest/gtest.h>

#include <string_view>

namespace veltrix
{
namespace
{

QStringList texts(const QList<QStringView> &views)
{
    QStringList list;
    for (const QStringView view : views)
        list.append(view.toString());
    return list;
}

/// The tokens of a text, joined by "/".
QString tokens(QStringView text, TokenRule rule)
{
    const TextTokens list(text, rule);
    return texts({list.begin(), list.end()}).join(u'/');
}

QString relevanceTokens(QStringView text)
{
    return tokens(text, TokenRule::Relevance);
}

TEST(RelevanceTokens, AreLowerCasedAndSplitAtEverythingThatIsNoLetterOrDigit)
{
    EXPECT_EQ(relevanceTokens(u"Stock-Options Trading!"), QStringLiteral("stock/option/trading"));
    EXPECT_EQ(relevanceTokens(u"  Photo_Editor+3D ²  "), QStringLiteral("photo/editor/3d/²"));
    EXPECT_EQ(relevanceTokens(u"don’t"), QStringLiteral("don/t"));
}

TEST(RelevanceTokens, KeepOrderAndDuplicates)
{
    EXPECT_EQ(relevanceTokens(u"b a b"), QStringLiteral("b/a/b"));
}

TEST(RelevanceTokens, OfATextWithoutWordsAreNone)
{
    EXPECT_TRUE(TextTokens(u"", TokenRule::Relevance).isEmpty());
    EXPECT_TRUE(TextTokens(u" –!☕ ", TokenRule::Relevance).isEmpty());
}

TEST(RelevanceTokens, MapExactlyFourPlurals)
{
    EXPECT_EQ(relevanceTokens(u"Options STOCKS signals Markets"),
              QStringLiteral("option/stock/signal/market"));
    EXPECT_EQ(relevanceTokens(u"calls photos option optionss"),
              QStringLiteral("calls/photos/option/optionss"));
}

TEST(RelevanceTokens, KeepMarksInsideWords)
{
    EXPECT_EQ(relevanceTokens(u"ที่นี่ แผนที่"), QStringLiteral("ที่นี่/แผนที่"));
    EXPECT_EQ(relevanceTokens(u"हिन्दी कीबोर्ड"), QStringLiteral("हिन्दी/कीबोर्ड"));
    EXPECT_EQ(relevanceTokens(u"cafe\u0301!bar"), QStringLiteral("cafe\u0301/bar"));
}

TEST(RelevanceTokens, ReadCharactersBeyondTheBasicPlane)
{
    // Mathematical letters are letters, an emoji and half a surrogate pair are not.
    EXPECT_EQ(relevanceTokens(u"𝒜𝓑 x😀y"), QStringLiteral("𝒜𝓑/x/y"));
    const char16_t half[] = {u'a', char16_t(0xD83D), u'b', 0};
    EXPECT_EQ(relevanceTokens(QStringView(half, 3)), QStringLiteral("a/b"));
}

TEST(DifficultyTokens, TurnHyphensIntoSpacesAndKeepPunctuationAttached)
{
    EXPECT_EQ(tokens(u"Photo-Editor: Pro!", TokenRule::Difficulty),
              QStringLiteral("photo/editor:/pro!"));
    EXPECT_EQ(tokens(u"--\u00A0a\u3000b\n--", TokenRule::Difficulty), QStringLiteral("a/b"));
    EXPECT_EQ(tokens(u"options", TokenRule::Difficulty), QStringLiteral("options"));
}

TEST(LowerCasedText, IsUnicodesMappingForEveryCodePointWhateverTheLocale)
{
    QLocale::setDefault(QLocale(QLocale::Turkish));
    int different = 0;
    for (char32_t c = 0; c <= 0x10FFFF; ++c) {
        if (c >= 0xD800 && c <= 0xDFFF)
            continue;
        const QString text = QString::fromUcs4(&c, 1);
        different += LowerCasedText(text).view() == text.toLower() ? 0 : 1;
    }
    EXPECT_EQ(different, 0);
    EXPECT_EQ(LowerCasedText(u"TITLE").view(), u"title");
    EXPECT_EQ(LowerCasedText(u"İI").view(), u"i\u0307i");
    QLocale::setDefault(QLocale::c());
}

TEST(Characters, LettersMarksAndDigitsMakeWords)
{
    for (const char32_t c : std::u32string_view(U"aZ09éßジ٣²½ⅧªıӐ\u0301ा𝒜"))
        EXPECT_TRUE(isWordCharacter(c)) << std::hex << unsigned(c);
    for (const char32_t c : std::u32string_view(U" -_'’+#™☕😀๏\u00A0\u200D"))
        EXPECT_FALSE(isWordCharacter(c)) << std::hex << unsigned(c);
    EXPECT_TRUE(isLetter(U'é'));
    EXPECT_FALSE(isLetter(U'5'));
    EXPECT_FALSE(isLetter(U'\u0301'));
}

TEST(Characters, WhiteSpaceIsTheUnicodeProperty)
{
    QList<unsigned> found;
    for (char32_t c = 0; c <= 0x10FFFF; ++c) {
        if (isWhiteSpace(c))
            found.append(unsigned(c));
    }
    EXPECT_EQ(found, (QList<unsigned>{0x09,   0x0A,   0x0B,   0x0C,   0x0D,   0x20,   0x85,
                                      0xA0,   0x1680, 0x2000, 0x2001, 0x2002, 0x2003, 0x2004,
                                      0x2005, 0x2006, 0x2007, 0x2008, 0x2009, 0x200A, 0x2028,
                                      0x2029, 0x202F, 0x205F, 0x3000}));
}

TEST(Characters, TrimmingTakesTheSameWhiteSpace)
{
    for (char32_t c = 0; c <= 0xFFFF; ++c) {
        EXPECT_EQ(QChar::isSpace(c), isWhiteSpace(c)) << std::hex << unsigned(c);
    }
}

TEST(Words, AreCountedBetweenWhiteSpaceOfEveryKind)
{
    EXPECT_EQ(whiteSpaceWordCount(u""), 0);
    EXPECT_EQ(whiteSpaceWordCount(u" \n\t"), 0);
    EXPECT_EQ(whiteSpaceWordCount(u"photo-editor"), 1);
    EXPECT_EQ(whiteSpaceWordCount(u" a\u00A0b\u2003c  d\n"), 4);
    EXPECT_EQ(texts(whiteSpaceWords(u" a\u00A0b: \n c")),
              (QStringList{QStringLiteral("a"), QStringLiteral("b:"), QStringLiteral("c")}));
}

TEST(CodePoints, CountSurrogatePairsOnce)
{
    EXPECT_EQ(codePointCount(u"a😀é"), 3);
    EXPECT_EQ(codePointCount(u""), 0);
}

TEST(Segments, KeepTheirSurroundingSpaces)
{
    const auto segments =
        textSegments(u"Photo Editor: Collage & Filters", unlimitedSplits, EmptyPieces::Drop);
    EXPECT_EQ(texts(segments),
              (QStringList{QStringLiteral("Photo Editor"), QStringLiteral(" Collage "),
                           QStringLiteral(" Filters")}));
}

TEST(Segments, MayKeepOrDropEmptyPieces)
{
    EXPECT_EQ(texts(textSegments(u"!a--b", unlimitedSplits, EmptyPieces::Drop)),
              (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
    EXPECT_EQ(texts(textSegments(u"!a--b", unlimitedSplits, EmptyPieces::Keep)),
              (QStringList{QString(), QStringLiteral("a"), QString(), QStringLiteral("b")}));
    EXPECT_EQ(texts(textSegments(u"a!", unlimitedSplits, EmptyPieces::Keep)),
              (QStringList{QStringLiteral("a"), QString()}));
    EXPECT_TRUE(textSegments(u"", unlimitedSplits, EmptyPieces::Drop).isEmpty());
    EXPECT_EQ(textSegments(u"", unlimitedSplits, EmptyPieces::Keep).size(), 1);
}

TEST(Segments, AreAtMostOneMoreThanTheSplits)
{
    EXPECT_EQ(texts(textSegments(u"a:b:c", 1, EmptyPieces::Drop)),
              (QStringList{QStringLiteral("a"), QStringLiteral("b:c")}));
    EXPECT_EQ(texts(textSegments(u"a:b", 0, EmptyPieces::Drop)),
              QStringList{QStringLiteral("a:b")});
    // A cut that only gives an empty piece does not count when those are dropped.
    EXPECT_EQ(texts(textSegments(u"::a:b:c", 1, EmptyPieces::Drop)),
              (QStringList{QStringLiteral("a"), QStringLiteral("b:c")}));
    EXPECT_EQ(texts(textSegments(u"::a", 1, EmptyPieces::Keep)),
              (QStringList{QString(), QStringLiteral(":a")}));
}

TEST(Segments, KeepMarksInsideThem)
{
    EXPECT_EQ(texts(textSegments(u"แผนที่: ที่นี่", unlimitedSplits, EmptyPieces::Drop)),
              (QStringList{QStringLiteral("แผนที่"), QStringLiteral(" ที่นี่")}));
}

TEST(Texts, OfAbsentFieldsAreEmpty)
{
    EXPECT_TRUE(viewOf(std::nullopt).isEmpty());
    const std::optional<QString> text = QStringLiteral("a");
    EXPECT_EQ(viewOf(text), u"a");
}

} // namespace
} // namespace veltrix
