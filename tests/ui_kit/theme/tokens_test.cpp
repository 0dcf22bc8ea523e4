// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/theme/tokens.h"

#include "support/json_printers.h"
#include "ui/support/ui_world.h"
#include "ui_kit/theme/theme_controller.h"

#include <QApplication>
#include <QLabel>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

/// A pair of colours that is drawn somewhere, and the least contrast it must have.
struct Pair {
    const char *what;
    QColor foreground;
    QColor background;
    double least;
};

constexpr double forText = 4.5;
constexpr double forShapes = 3;

std::vector<Pair> pairsInUse(const Tokens &tokens)
{
    std::vector<Pair> pairs;
    const auto add = [&](const char *what, const QColor &over, const QColor &under, double least) {
        pairs.push_back({what, over, under, least});
    };
    const std::initializer_list<Token> rowBackgrounds{Token::Surface, Token::Hover,
                                                      Token::Selected};
    for (const Token under :
         {Token::Window, Token::Surface, Token::Raised, Token::Hover, Token::Selected}) {
        add("text", tokens[Token::Text], tokens[under], forText);
        add("secondary text", tokens[Token::Secondary], tokens[under], forText);
        add("accent text", tokens[Token::Accent], tokens[under], forText);
    }
    for (const Token under : rowBackgrounds) {
        for (const Token movement : {Token::Green, Token::Red})
            add("movement label", tokens[movement], tokens[under], forText);
        for (const Token ring : {Token::Green, Token::Yellow, Token::Red})
            add("ring", tokens[ring], tokens[under], forShapes);
        for (const Token badge : {Token::Green, Token::Blue, Token::Orange, Token::Gray})
            add("badge", tokens[badge], composed(tokens.tint(badge), tokens[under]), forShapes);
    }
    for (const Token under : {Token::Surface, Token::Raised}) {
        add("error text", tokens[Token::Red], tokens[under], forText);
        add("star", tokens[Token::Yellow], tokens[under], forShapes);
        add("symbol", tokens[Token::Gray], tokens[under], forShapes);
        for (const Token badge : {Token::Green, Token::Blue, Token::Orange, Token::Gray})
            add("badge in a sheet", tokens[badge], composed(tokens.tint(badge), tokens[under]),
                forShapes);
    }
    for (const Token line : {Token::Accent, Token::Orange, Token::Teal, Token::Pink, Token::Blue,
                             Token::Green, Token::Yellow})
        add("chart line", tokens[line], tokens[Token::Raised], forShapes);
    for (const Token under : rowBackgrounds) {
        for (const Token tag :
             {Token::Accent, Token::Teal, Token::Orange, Token::Pink, Token::Blue, Token::Green}) {
            const QColor background = composed(tokens.tint(tag), tokens[under]);
            add("tag", tokens[Token::Text], background, forText);
            add("dot of a tag", tokens[tag], background, forShapes);
        }
    }
    const QColor banner = composed(tokens.tint(Token::Orange), tokens[Token::Surface]);
    add("banner text", tokens[Token::Text], banner, forText);
    add("banner symbol", tokens[Token::Orange], banner, forShapes);
    for (const Token fill : {Token::Accent, Token::Red}) {
        add("button label", tokens.onAccent(), tokens[fill], forText);
        add("pressed button label", tokens.onAccent(),
            composed(tokens.tint(Token::Text), tokens[fill]), forText);
    }
    return pairs;
}

class TokensOfScheme : public testing::TestWithParam<ColorScheme>
{
};

TEST_P(TokensOfScheme, EveryPairInUseHasItsContrast)
{
    for (const Pair &pair : pairsInUse(Tokens(GetParam())))
        EXPECT_GE(contrastRatio(pair.foreground, pair.background), pair.least)
            << pair.what << ": " << pair.foreground.name().toStdString() << " on "
            << pair.background.name().toStdString();
}

TEST_P(TokensOfScheme, ThePaletteCarriesTheSchemeToWidgets)
{
    EXPECT_EQ(Tokens::of(paletteFor(GetParam())).scheme(), GetParam());
}

INSTANTIATE_TEST_SUITE_P(Schemes, TokensOfScheme,
                         testing::Values(ColorScheme::Light, ColorScheme::Dark),
                         [](const auto &tested) {
                             return tested.param == ColorScheme::Light ? "Light" : "Dark";
                         });

TEST(Contrast, IsWhatTheStandardSays)
{
    EXPECT_NEAR(contrastRatio(Qt::black, Qt::white), 21, 1e-9);
    EXPECT_NEAR(contrastRatio(Qt::white, Qt::black), 21, 1e-9);
    EXPECT_NEAR(contrastRatio(Qt::red, Qt::red), 1, 1e-9);
    EXPECT_NEAR(contrastRatio(QColor(0x77, 0x77, 0x77), Qt::white), 4.48, 0.005);
}

TEST(ComposedColor, IsWhatTheEyeSees)
{
    QColor half(Qt::black);
    half.setAlphaF(0.5F);
    EXPECT_NEAR(composed(half, Qt::white).red(), 127.5, 0.6);
    EXPECT_EQ(composed(Qt::red, Qt::white), QColor(Qt::red));
}

TEST(ThemeController, FollowsTheDesktopWhileRunning)
{
    FakeColorScheme desktop;
    const ThemeController theme(desktop);
    QLabel label;
    label.show();
    EXPECT_EQ(Tokens::of(&label).scheme(), ColorScheme::Light);
    desktop.set(ColorScheme::Dark);
    QCoreApplication::processEvents();
    EXPECT_EQ(Tokens::of(&label).scheme(), ColorScheme::Dark);
    desktop.set(ColorScheme::Light);
    QCoreApplication::processEvents();
    EXPECT_EQ(Tokens::of(&label).scheme(), ColorScheme::Light);
}

} // namespace
} // namespace veltrix
