// SPDX-License-Identifier: GPL-3.0-or-later
// Fonts and distances. Sizes are proportions of the body font, so a larger system font enlarges
// everything.
#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QString>

class QPainter;

namespace veltrix
{

enum class TextStyle {
    /// Headings of screens and sheets: 17/13 of the body size.
    Title,
    Body,
    /// Names in rows and labels of buttons.
    BodyMedium,
    BodySemibold,
    /// Second lines, table headers, notes: 12/13 of the body size.
    Secondary,
    SecondaryMedium,
    SecondarySemibold,
    /// Large figures: 22/13 of the body size.
    Figure,
};

/// `base` is a body font, normally the one that a widget inherits.
QFont fontFor(TextStyle style, const QFont &base);

/// The body font of the program for the desktop's `systemFont`: at least 13 pixels, and a clean
/// sans-serif where the desktop names no family of its own.
QFont bodyFont(const QFont &systemFont);

namespace spacing
{
inline constexpr int xs = 4;
inline constexpr int s = 8;
inline constexpr int m = 12;
inline constexpr int l = 16;
inline constexpr int xl = 20;
inline constexpr int xxl = 24;
} // namespace spacing

namespace radius
{
inline constexpr qreal control = 7;
inline constexpr qreal card = 10;
inline constexpr qreal sheet = 12;
} // namespace radius

/// A length of the standard font's, in pixels, at another body font.
int scaledToFont(int atStandard, const QFont &body);
/// Height of buttons and fields: 30 with the standard font.
int controlHeight(const QFont &body);
/// Height of table rows with two lines (52 with the standard font) and with one (36).
int twoLineRowHeight(const QFont &body);
int oneLineRowHeight(const QFont &body);

/// Text whose digits all take the width of the widest digit, so that figures stand in columns.
/// Returns the width of the text.
qreal tabularWidth(const QFontMetricsF &metrics, const QString &text);
/// Draws such a text with the painter's font and pen, from the left end of its baseline.
void drawTabularText(QPainter &painter, QPointF baseline, const QString &text);

} // namespace veltrix
