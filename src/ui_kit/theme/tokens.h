// SPDX-License-Identifier: GPL-3.0-or-later
// The one table of colours. Nothing else in the program names a colour.
#pragma once

#include <QColor>
#include <QPalette>

#include <array>

class QWidget;

namespace veltrix
{

enum class ColorScheme { Light, Dark };

/// What a colour is for.
enum class Token {
    Window,
    Surface,
    Raised,
    Text,
    Secondary,
    Hairline,
    Hover,
    Selected,
    Accent,
    Green,
    Yellow,
    Orange,
    Red,
    Blue,
    /// Lines of charts and tags.
    Teal,
    Pink,
    Gray,
    /// Laid over a window while a sheet is open.
    Scrim,
    /// The darkest part of the shadow under sheets and popovers.
    Shadow,
};

inline constexpr std::array allTokens{
    Token::Window,   Token::Surface, Token::Raised,   Token::Text,   Token::Secondary,
    Token::Hairline, Token::Hover,   Token::Selected, Token::Accent, Token::Green,
    Token::Yellow,   Token::Orange,  Token::Red,      Token::Blue,   Token::Teal,
    Token::Pink,     Token::Gray,    Token::Scrim,    Token::Shadow};

/// How much of a token's colour lies under a badge or banner, 0 to 1.
inline constexpr double tintStrength = 0.14;

/// The colours of one scheme.
class Tokens
{
public:
    explicit Tokens(ColorScheme scheme) : m_scheme(scheme) {}

    /// The scheme of a widget follows from the palette it inherits, so painting code needs no
    /// global, and two windows may have two schemes.
    static Tokens of(const QPalette &palette);
    static Tokens of(const QWidget *widget);

    [[nodiscard]] ColorScheme scheme() const { return m_scheme; }
    [[nodiscard]] QColor operator[](Token token) const;
    /// The token at tintStrength, to lie over any background.
    [[nodiscard]] QColor tint(Token token) const;
    /// The colour for text and symbols on the accent colour.
    [[nodiscard]] QColor onAccent() const { return (*this)[Token::Surface]; }

private:
    ColorScheme m_scheme;
};

/// The palette that carries a scheme to every widget, standard ones included. Foreground roles:
/// WindowText is Text, PlaceholderText is Secondary, Link is Accent, BrightText is Red.
QPalette paletteFor(ColorScheme scheme);

/// `over` as it looks when it lies on the opaque `under`.
QColor composed(const QColor &over, const QColor &under);

/// Contrast of two opaque colours as WCAG 2 defines it: (L1 + 0.05) ÷ (L2 + 0.05) of the relative
/// luminances, 1 to 21.
double contrastRatio(const QColor &first, const QColor &second);

} // namespace veltrix
