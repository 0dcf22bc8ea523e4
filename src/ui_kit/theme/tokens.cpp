// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/theme/tokens.h"

#include <QWidget>

#include <algorithm>
#include <cmath>

namespace veltrix
{

namespace
{

struct Value {
    QRgb light;
    QRgb dark;
};

// In the order of Token. Every pair in use is held to its contrast by a test.
constexpr std::array<Value, allTokens.size()> table{{
    {0xFFF5F6F8, 0xFF15171A}, // Window
    {0xFFFFFFFF, 0xFF1C1F23}, // Surface
    {0xFFFFFFFF, 0xFF23272C}, // Raised
    {0xFF1A1D21, 0xFFE9EBEE}, // Text
    {0xFF626A75, 0xFF98A1AC}, // Secondary
    {0xFFE4E7EB, 0xFF2C3137}, // Hairline
    {0xFFF0F2F5, 0xFF262A30}, // Hover
    {0xFFEAEBFB, 0xFF2C2D4A}, // Selected
    {0xFF4B49D6, 0xFF908EF7}, // Accent
    {0xFF147A44, 0xFF4CC88A}, // Green
    {0xFFA87D00, 0xFFE3B93B}, // Yellow
    {0xFFC65C0A, 0xFFF0924A}, // Orange
    {0xFFC73232, 0xFFF0706D}, // Red
    {0xFF2D6BE4, 0xFF6FA1FF}, // Blue
    {0xFF0E7C80, 0xFF4CC3C4}, // Teal
    {0xFFB4307E, 0xFFF08AC4}, // Pink
    {0xFF747C87, 0xFF98A1AC}, // Gray
    {0x5C0B0D10, 0x85000000}, // Scrim
    {0x330B0D10, 0x80000000}, // Shadow
}};

double linear(double channel)
{
    return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double relativeLuminance(const QColor &color)
{
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

} // namespace

Tokens Tokens::of(const QPalette &palette)
{
    const QColor window = palette.color(QPalette::Active, QPalette::Window);
    return Tokens(window.lightness() < 128 ? ColorScheme::Dark : ColorScheme::Light);
}

Tokens Tokens::of(const QWidget *widget)
{
    return of(widget->palette());
}

QColor Tokens::operator[](Token token) const
{
    const Value &value = table[static_cast<size_t>(token)];
    return QColor::fromRgba(m_scheme == ColorScheme::Light ? value.light : value.dark);
}

QColor Tokens::tint(Token token) const
{
    QColor color = (*this)[token];
    color.setAlphaF(static_cast<float>(tintStrength));
    return color;
}

QPalette paletteFor(ColorScheme scheme)
{
    const Tokens tokens(scheme);
    QPalette palette;
    const auto set = [&palette](QPalette::ColorRole role, const QColor &color) {
        palette.setColor(QPalette::All, role, color);
    };
    set(QPalette::Window, tokens[Token::Window]);
    set(QPalette::WindowText, tokens[Token::Text]);
    set(QPalette::Base, tokens[Token::Surface]);
    set(QPalette::AlternateBase, tokens[Token::Hover]);
    set(QPalette::Text, tokens[Token::Text]);
    set(QPalette::Button, tokens[Token::Surface]);
    set(QPalette::ButtonText, tokens[Token::Text]);
    set(QPalette::BrightText, tokens[Token::Red]);
    set(QPalette::Highlight, tokens[Token::Accent]);
    set(QPalette::HighlightedText, tokens.onAccent());
    set(QPalette::PlaceholderText, tokens[Token::Secondary]);
    set(QPalette::Link, tokens[Token::Accent]);
    set(QPalette::LinkVisited, tokens[Token::Accent]);
    set(QPalette::ToolTipBase, tokens[Token::Raised]);
    set(QPalette::ToolTipText, tokens[Token::Text]);
    for (const auto role : {QPalette::Light, QPalette::Midlight, QPalette::Mid, QPalette::Dark})
        set(role, tokens[Token::Hairline]);
    set(QPalette::Shadow, tokens[Token::Secondary]);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, tokens[Token::Secondary]);
    return palette;
}

QColor composed(const QColor &over, const QColor &under)
{
    const float alpha = over.alphaF();
    const auto mix = [alpha](float top, float bottom) {
        return top * alpha + bottom * (1 - alpha);
    };
    return QColor::fromRgbF(mix(over.redF(), under.redF()), mix(over.greenF(), under.greenF()),
                            mix(over.blueF(), under.blueF()));
}

double contrastRatio(const QColor &first, const QColor &second)
{
    const double one = relativeLuminance(first);
    const double two = relativeLuminance(second);
    return (std::max(one, two) + 0.05) / (std::min(one, two) + 0.05);
}

} // namespace veltrix
