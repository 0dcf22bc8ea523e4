// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/app_search/app_search_input.h"

#include "support/json_printers.h"

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

/// "42" for an ID, "42?" for one out of collected digits, "“name”" for a name.
QString read(const char *text)
{
    const AppSearchInput input = parseAppSearch(QString::fromUtf8(text));
    if (!input.trackId)
        return QStringLiteral("“%1”").arg(input.name);
    return QString::number(*input.trackId) +
           (input.origin == AppSearchInput::Origin::CollectedDigits ? QStringLiteral("?")
                                                                    : QString());
}

struct Case {
    const char *text;
    const char *meaning;
};

void PrintTo(const Case &tested, std::ostream *out)
{
    *out << tested.text;
}

class AppSearchTexts : public testing::TestWithParam<Case>
{
};

TEST_P(AppSearchTexts, AreReadStepByStep)
{
    EXPECT_EQ(read(GetParam().text), QString::fromUtf8(GetParam().meaning));
}

INSTANTIATE_TEST_SUITE_P(Numbers, AppSearchTexts,
                         testing::Values(Case{"42", "42"}, Case{"  42\n", "42"},
                                         Case{"  ID42  ", "42"}, Case{"id42", "42"},
                                         Case{"id-7", "-7"}, Case{"id 42", "42?"},
                                         Case{"9223372036854775807", "9223372036854775807"},
                                         Case{"9223372036854775808", "“9223372036854775808”"},
                                         Case{"video id99 and 5", "995?"},
                                         Case{"an id99 and 5", "99"}));

INSTANTIATE_TEST_SUITE_P(
    Links, AppSearchTexts,
    testing::Values(Case{"https://apps.apple.com/us/app/lumen/id42?mt=8", "42"},
                    Case{"apps.apple.com/us/app/lumen/id42", "42"},
                    Case{"HTTPS://APPS.APPLE.COM/us/app/x/ID42", "42"},
                    Case{"http://itunes.apple.com/app/id42#top", "42"},
                    // The name in the path holds "id" too; the last component counts.
                    Case{"https://apps.apple.com/us/app/idle-game-3/id1234567890", "1234567890"},
                    Case{"https://apps.apple.com/us/app/id77/idle", "77"},
                    // No such component: the steps for plain text follow.
                    Case{"https://apps.apple.com/us/developer/acme/5", "5?"}));

INSTANTIATE_TEST_SUITE_P(Names, AppSearchTexts,
                         testing::Values(Case{"idle game", "“idle game”"}, Case{"", "“”"},
                                         Case{"   ", "“”"},
                                         Case{"  Lumen Editor ", "“Lumen Editor”"},
                                         Case{"Asphalt 9", "9?"}, Case{"2048 plus 1", "20481?"},
                                         Case{"写真", "“写真”"}, Case{"idea", "“idea”"}));

TEST(AppSearchInput, TheDigitsAfterTheFirstIdCountAndNotALaterOne)
{
    // "idle" comes first and has no digits after it, so all digits are collected.
    EXPECT_EQ(read("idle id5"), QStringLiteral("5?"));
    EXPECT_EQ(read("get id5 now 6"), QStringLiteral("5"));
}

TEST(AppSearchInput, ANameKeepsItsCase)
{
    EXPECT_EQ(parseAppSearch(QStringLiteral(" IDLE Game ")).name, QStringLiteral("IDLE Game"));
}

TEST(AppSearchInput, CollectedDigitsKeepTheNameToo)
{
    const AppSearchInput input = parseAppSearch(QStringLiteral("Asphalt 9"));
    EXPECT_EQ(input.name, QStringLiteral("Asphalt 9"));
    EXPECT_EQ(input.trackId, 9);
}

} // namespace
} // namespace veltrix
