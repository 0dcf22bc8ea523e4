// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/theme/typography.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QPainter>
#include <QScreen>

#include <algorithm>
#include <cmath>

namespace veltrix
{

namespace
{

constexpr int standardBodyPixels = 13;

/// The height of a font's em. Asked of the font itself: QFontInfo would find and open its file.
int pixelsOf(const QFont &font)
{
    if (font.pixelSize() > 0)
        return font.pixelSize();
    const QScreen *screen = QGuiApplication::primaryScreen();
    const qreal dotsPerInch = screen ? screen->logicalDotsPerInchY() : 96;
    return qRound(font.pointSizeF() * dotsPerInch / 72);
}

qreal widestDigit(const QFontMetricsF &metrics)
{
    qreal widest = 0;
    for (char16_t digit = u'0'; digit <= u'9'; ++digit)
        widest = std::max(widest, metrics.horizontalAdvance(QChar(digit)));
    return widest;
}

} // namespace

QFont fontFor(TextStyle style, const QFont &base)
{
    QFont font = base;
    const auto make = [&](int atStandard, QFont::Weight weight) {
        font.setPixelSize(scaledToFont(atStandard, base));
        font.setWeight(weight);
        return font;
    };
    switch (style) {
    case TextStyle::Title:
        return make(17, QFont::DemiBold);
    case TextStyle::Body:
        return make(13, QFont::Normal);
    case TextStyle::BodyMedium:
        return make(13, QFont::Medium);
    case TextStyle::BodySemibold:
        return make(13, QFont::DemiBold);
    case TextStyle::Secondary:
        return make(12, QFont::Normal);
    case TextStyle::SecondaryMedium:
        return make(12, QFont::Medium);
    case TextStyle::SecondarySemibold:
        return make(12, QFont::DemiBold);
    case TextStyle::Figure:
        return make(22, QFont::DemiBold);
    }
    Q_UNREACHABLE();
}

QFont bodyFont(const QFont &systemFont)
{
    QFont font = systemFont;
    // Without a desktop's setting Qt falls back to an alias that may be any face; prefer a good one
    // where it is installed.
    const QString family = systemFont.families().value(0).toLower();
    const bool isAlias = family.isEmpty() || family == QLatin1String("sans serif") ||
                         family == QLatin1String("sans-serif") || family == QLatin1String("sans");
    if (isAlias && QFontDatabase::families().contains(QStringLiteral("Inter")))
        font.setFamilies({QStringLiteral("Inter"), systemFont.family()});
    font.setPixelSize(std::max(standardBodyPixels, pixelsOf(systemFont)));
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

int scaledToFont(int atStandard, const QFont &body)
{
    const int pixels = pixelsOf(body);
    return std::max(1, qRound(double(pixels) * atStandard / standardBodyPixels));
}

int controlHeight(const QFont &body)
{
    return scaledToFont(30, body);
}

int twoLineRowHeight(const QFont &body)
{
    return scaledToFont(52, body);
}

int oneLineRowHeight(const QFont &body)
{
    return scaledToFont(36, body);
}

qreal tabularWidth(const QFontMetricsF &metrics, const QString &text)
{
    const qreal digit = widestDigit(metrics);
    qreal width = 0;
    for (const QChar c : text)
        width += c.isDigit() ? digit : metrics.horizontalAdvance(c);
    return width;
}

void drawTabularText(QPainter &painter, QPointF baseline, const QString &text)
{
    const QFontMetricsF metrics(painter.font());
    const qreal digit = widestDigit(metrics);
    qreal x = baseline.x();
    for (const QChar c : text) {
        const qreal advance = metrics.horizontalAdvance(c);
        const qreal cell = c.isDigit() ? digit : advance;
        painter.drawText(QPointF(x + (cell - advance) / 2, baseline.y()), QString(c));
        x += cell;
    }
}

} // namespace veltrix
