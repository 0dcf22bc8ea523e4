// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/text/shown_text.h"

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

TEST(ShownText, HasNoControlCharactersOfEitherSet)
{
    for (char16_t code = 0; code <= 0x9F; ++code) {
        const bool isControl = code < 0x20 || code >= 0x7F;
        const bool isKept = code == u'\t' || (code >= 0x0A && code <= 0x0D) || code == 0x85;
        const QString shown = shownText(QStringLiteral("a") + QChar(code) + QStringLiteral("b"));
        EXPECT_EQ(shown.size(), isControl && !isKept ? 2 : 3) << int(code);
    }
}

TEST(ShownText, HasNothingThatTurnsTheLettersAroundIt)
{
    for (const char16_t code :
         {0x202A, 0x202B, 0x202C, 0x202D, 0x202E, 0x2066, 0x2067, 0x2068, 0x2069})
        EXPECT_EQ(shownText(QChar(code) + QStringLiteral("abc")), QStringLiteral("abc"))
            << int(code);
    const QString marks = QStringLiteral("a\u200Eb\u200Fc\u061Cd");
    EXPECT_EQ(shownText(marks), marks) << "marks of a direction belong to texts that mix them";
}

TEST(ShownText, EveryLineEndIsALineEnd)
{
    EXPECT_EQ(shownText(QStringLiteral("a\r\nb\rc\nd\u0085e\u2028f\u2029g\vh\fi\n\nj")),
              QStringLiteral("a\nb\nc\nd\ne\nf\ng\nh\ni\n\nj"));
}

TEST(ShownText, LettersOfEveryPlaneStayAsTheyAre)
{
    const QString text = QStringLiteral("日本語 👩‍👩‍👧 é עברית \U0001F5BC");
    EXPECT_EQ(shownText(text), text);
}

TEST(ShownLine, IsOneLineWithoutSpaceAround)
{
    EXPECT_EQ(shownLine(QStringLiteral("\u2029 Photo\u2028Editor\tPro\r\n ")),
              QStringLiteral("Photo Editor Pro"));
}

TEST(InSentence, ANameFromRightToLeftIsIsolatedAndAnyOtherStaysAsItIs)
{
    EXPECT_EQ(inSentence(QStringLiteral("Foxglove")), QStringLiteral("Foxglove"));
    EXPECT_EQ(inSentence(QStringLiteral("写真")), QStringLiteral("写真"));
    EXPECT_EQ(inSentence(QStringLiteral("عدسة")), QStringLiteral("\u2068عدسة\u2069"));
    EXPECT_EQ(inSentence(QStringLiteral("Pro עורך")), QStringLiteral("\u2068Pro עורך\u2069"));
    EXPECT_EQ(inSentence(QStringLiteral("\u202Eעורך\u2069")), QStringLiteral("\u2068עורך\u2069"))
        << "a name cannot end its isolation";
}

} // namespace
} // namespace veltrix
